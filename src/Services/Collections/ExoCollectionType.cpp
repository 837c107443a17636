#include "Services/Collections/ExoCollectionType.h"

#include <algorithm>

namespace ludarium {

using namespace Qt::StringLiterals;

std::span<const ExoCollection> ExoCollection::all() {
    using enum ExoCollectionType;
    static const ExoCollection table[]{
        {dos, u"DOS"_s, u"eXo/eXoDOS/!dos"_s, u"Images/MS-DOS"_s, u"!DOS"_s, u"XODOS"_s, u"eXoDOS"_s},
        {scummvm, u"ScummVM"_s, u"eXo/eXoScummVM/!ScummVM"_s, u"Images/ScummVM"_s, u"!ScummVM"_s, u"XOScummVM"_s,
         u"eXoScummVM"_s},
        {win3x, u"Win3x"_s, u"eXo/eXoWin3x/!win3x"_s, u"Images/Windows 3x"_s, u"!win3x"_s, u"XOWin3x"_s, u"eXoWin3x"_s},
        {win9x, u"Win9x"_s, u"eXo/eXoWin9x/!win9x"_s, u"Images/Windows 9x"_s, u"!win9x"_s, u"XOWin9x"_s, u"eXoWin9x"_s},
        {dreamm, u"DREAMM"_s, u"eXo/eXoDREAMM/!DREAMM"_s, u"Images/DREAMM"_s, u"!DREAMM"_s, u"XODREAMM"_s,
         u"eXoDREAMM"_s},
        {interactiveFiction, u"IF"_s, u"eXo/eXoIF/!if"_s, u"Images/Interactive Fiction"_s, u"!IF"_s, u"XOIF"_s,
         u"eXoIF"_s},
        // Its folder has a short name of its own.
        {demoScene, u"DemoScene"_s, u"eXo/eXoDemoScn/!dos"_s, u"Images/DemoScene"_s, u"!DemoScene"_s, u"XODemoScene"_s,
         u"eXoDemoScene"_s},
        {appleIIGS, u"AppleIIGS"_s, u"eXo/eXoAppleIIGS/!appleiigs"_s, u"Images/Apple IIGS"_s, u"!AppleIIGS"_s,
         u"XOAppleIIGS"_s, u"eXoAppleIIGS"_s},
    };
    return table;
}

const ExoCollection &ExoCollection::of(ExoCollectionType type) {
    return all()[static_cast<size_t>(type)];
}

std::optional<ExoCollectionType> ExoCollection::typeFromRawValue(const QString &text) {
    const auto rows = all();
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const auto &row) { return row.rawValue == text; });
    return found == rows.end() ? std::nullopt : std::optional(found->type);
}

QString ExoCollection::xoMarkerName() const {
    return u'.' + rawValue.toLower() + u"_xometadata_extracted"_s;
}

} // namespace ludarium
