#pragma once

#include "Host/Imaging/Bitmap.h"

#include <QByteArray>

namespace ludarium::test {

/// A picture of four plain quarters: red and green above, blue and white below.
Bitmap quarters(int width, int height);
QByteArray jpegOf(int width, int height);

/// Blue, green, red and alpha of one pixel, each rounded to 0 or 255, as text such as "red" or "clear".
const char *colorAt(const Bitmap &image, int x, int y);

} // namespace ludarium::test
