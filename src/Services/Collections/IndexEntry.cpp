#include "Services/Collections/IndexEntry.h"

#include <cmath>

namespace ludarium {

using namespace Qt::StringLiterals;

std::span<const CollectionTypeInfo> CollectionTypeInfo::all() {
    static const auto row = [](CollectionType type, const QString &name, const QString &folder) {
        return CollectionTypeInfo{type, name, name + ".torrent"_L1, "GameData/"_L1 + name, "eXo/"_L1 + folder};
    };
    using enum CollectionType;
    static const CollectionTypeInfo table[]{
        row(eXoDOS, u"eXoDOS"_s, u"eXoDOS"_s),
        row(eXoScummVM, u"eXoScummVM"_s, u"eXoScummVM"_s),
        row(eXoWin3x, u"eXoWin3x"_s, u"eXoWin3x"_s),
        row(eXoWin9x, u"eXoWin9x"_s, u"eXoWin9x"_s),
        row(eXoDREAMM, u"eXoDREAMM"_s, u"eXoDREAMM"_s),
        row(eXoIF, u"eXoIF"_s, u"eXoIF"_s),
        row(eXoDemoScene, u"eXoDemoScene"_s, u"eXoDemoScn"_s), // its folder has a short name of its own
    };
    return table;
}

const CollectionTypeInfo &CollectionTypeInfo::of(CollectionType type) {
    return all()[static_cast<size_t>(type)];
}

QString CollectionTypeInfo::indexFilename() const {
    return rawValue + "_index.txt"_L1;
}

QString IndexEntry::sizeFormatted() const {
    return formattedFileSize(sizeBytes);
}

QString formattedFileSize(qint64 bytes) {
    if (bytes <= 0)
        return u"Zero KB"_s;
    struct Unit {
        double size;
        int decimals;
        QLatin1StringView name;
    };
    static constexpr Unit units[]{{1e3, 0, "KB"_L1}, {1e6, 1, "MB"_L1}, {1e9, 2, "GB"_L1}};
    for (const Unit &unit : units) {
        const double scale = std::pow(10, unit.decimals);
        const double value = std::max(std::round(double(bytes) / unit.size * scale) / scale, 1.0);
        if (value >= 1000 && &unit != std::end(units) - 1)
            continue;
        QString text = QString::number(value, 'f', unit.decimals);
        while (unit.decimals > 0 && text.endsWith(u'0'))
            text.chop(1);
        if (text.endsWith(u'.'))
            text.chop(1);
        return text + u' ' + unit.name;
    }
    Q_UNREACHABLE();
}

} // namespace ludarium
