#pragma once

#include "maker/DemoGame.h"

namespace ludarium::demo {

/// A short tune of two square waves and a triangle, made from a seed: WAV, 8 bit, 11,025 Hz, mono.
QByteArray tune(int seed);

/// A manual of two pages: PDF with one of the standard typefaces, so that nothing has to be embedded.
QByteArray manual(const DemoGame &game);

} // namespace ludarium::demo
