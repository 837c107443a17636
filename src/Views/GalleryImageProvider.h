#pragma once

#include "Views/PictureProvider.h"

namespace ludarium {

class ImageLoader;

/// Serves `image://gallery/…`: one file, at most as large as requested, or whole without a size.
class GalleryImageProvider : public PictureProvider {
  public:
    /// `images` must outlive it.
    explicit GalleryImageProvider(ImageLoader &images) : m_images(images) {}
    ~GalleryImageProvider() override;

    /// The address of a file. Its path is written in hexadecimal digits, as QML decodes half of what is escaped.
    static QString url(const QString &path);

  protected:
    QImage produce(const QString &id, QSize size, const std::stop_token &stop) override;

  private:
    ImageLoader &m_images;
};

} // namespace ludarium
