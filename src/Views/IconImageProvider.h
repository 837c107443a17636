#pragma once

#include <QQuickImageProvider>

namespace ludarium {

/// Serves `image://icon/{name}/{rrggbb}`: an icon of the program, drawn in the colour that its place asks for.
class IconImageProvider : public QQuickImageProvider {
  public:
    IconImageProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}
    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};

} // namespace ludarium
