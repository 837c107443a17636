#pragma once

#include <QDate>
#include <QList>
#include <QString>
#include <optional>

namespace ludarium {

/// One system that games belong to. Absent texts are null.
struct Platform {
    QString name;     ///< Name; "Unknown" when missing
    QString category; ///< Category
    QString developer;
    QString manufacturer;
    std::optional<QDate> releaseDate; ///< ReleaseDate: the leading ISO 8601 date
    QString notes;
    QString emulatorPath;
    QString defaultEmulator;

    bool operator==(const Platform &) const = default;

    bool isArcade() const;
    bool isROMPlatform() const;

    static Platform named(const QString &name, const QString &category);
    /// What a collection without any platform shows, in this order: MS-DOS, Windows, Windows 3x, Windows 9x, DREAMM,
    /// DemoScene, Interactive Fiction, ScummVM.
    static const QList<Platform> &defaultPlatforms();
    /// The 71 spellings of console and computer names that are played from ROM files; exact and case-sensitive.
    static bool isRetroArchPlatformName(const QString &name);
    static const QStringList &retroArchPlatformNames();
};

} // namespace ludarium
