#pragma once

#include "Views/PictureProvider.h"

#include <memory>

namespace ludarium {

class CoverStore;
class ImageLoader;

/// Serves `image://cover/…` and `image://coverflow/…`: the picture that stands for a game there, fitted into the
/// requested box, with round corners.
class CoverImageProvider : public PictureProvider {
  public:
    enum class Place { grid, coverflow };

    /// `images` must outlive it.
    CoverImageProvider(ImageLoader &images, std::shared_ptr<CoverStore> store, Place place = Place::grid);
    ~CoverImageProvider() override;

    /// Of the corners of a cover so many pixels wide.
    static double cornerRadius(int width);
    /// The picture scaled to fit `box`, with round corners of `radius` pixels.
    static QImage framed(QImage picture, QSize box, double radius);

  protected:
    QImage produce(const QString &id, QSize size, const std::stop_token &stop) override;

  private:
    ImageLoader &m_images;
    std::shared_ptr<CoverStore> m_store;
    Place m_place;
};

} // namespace ludarium
