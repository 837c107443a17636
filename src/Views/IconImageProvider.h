#pragma once

#include <QQuickImageProvider>

namespace ludarium {

/// Serves `image://icon/{name}/{rrggbb}`: an icon of the program, drawn in the colour that its place asks for.
class IconImageProvider : public QQuickImageProvider {
  public:
    IconImageProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}
    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;

    /// Transparent, and said in the log, when no icon is called `name`.
    static QImage drawn(const QString &name, const QColor &color, QSize size);
};

} // namespace ludarium
