#pragma once

#include <QString>

namespace ludarium::test {

/// A small collection of invented games that differ in what is known of them: from nothing but a title to all that
/// the detail pane can show.
class DetailCollection {
  public:
    static inline const QString everything = QStringLiteral("Winter Lantern");
    static inline const QString plain = QStringLiteral("Paper Quarry");
    static inline const QString critical = QStringLiteral("The Print Shop of Amber Harbor");
    static inline const QString grouped = QStringLiteral("Copper Meridian (CD Version)");
    static inline const QString groupedOther = QStringLiteral("Copper Meridian (Floppy Version)");
    static inline const QString longTitle =
        QStringLiteral("The Most Extraordinary and Entirely Unabridged Chronicle of the Hollow Orchard: Volume the "
                       "Seventh, Containing the Siege of the Distant Circuit");
    static inline const QString rightToLeft = QStringLiteral("הפנס של החורף: שובו של השומר");

    /// Writes the collection below `folder`, which is made.
    static void write(const QString &folder);
};

} // namespace ludarium::test
