#pragma once

#include <QQuickImageProvider>

namespace ludarium {

/// Serves `image://badge/{ground}/{ink}/{good}/{marks}`: the marks on a cover in a row, as tall as was asked for. The
/// first three are colours as QML writes them without the "#"; the check is `{good}`. `{marks}` are names of icons with
/// a `+` between them, each with a `:` and a text behind it where there is one. One picture serves all covers with the
/// same marks.
class BadgeImageProvider : public QQuickImageProvider {
  public:
    BadgeImageProvider() : QQuickImageProvider(Image) {}

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};

} // namespace ludarium
