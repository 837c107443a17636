#pragma once

#include <QQuickImageProvider>

namespace ludarium {

/// Serves `image://placeholder/{number}`: the ground that the title of a game without a picture stands on, like a box
/// seen from the front. The number is one of `tints`, so that a screen full of them shares a few pictures.
class PlaceholderImageProvider : public QQuickImageProvider {
  public:
    static constexpr int tints = 36; ///< round the circle of hues

    PlaceholderImageProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}
    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};

} // namespace ludarium
