#include "Services/Artwork/ImageType.h"

namespace ludarium {

namespace {

struct Names {
    const char16_t *folder;
    const char16_t *shown;
};

const Names &names(ImageType type) {
    static constexpr Names table[]{
        {u"Box - Front", u"Box Art"},
        {u"Box - Back", u"Box Back"},
        {u"Box - 3D", u"Box 3D"},
        {u"Screenshot - Gameplay", u"Screenshot"},
        {u"Screenshot - Game Title", u"Title Screen"},
        {u"Clear Logo", u"Logo"},
        {u"Fanart - Background", u"Fan Art"},
        {u"Banner", u"Banner"},
        {u"Cart - Front", u"Cartridge"},
        {u"Disc", u"Disc"},
    };
    return table[static_cast<int>(type)];
}

} // namespace

QString rawValue(ImageType type) {
    return QString::fromUtf16(names(type).folder);
}

QString displayName(ImageType type) {
    return QString::fromUtf16(names(type).shown);
}

} // namespace ludarium
