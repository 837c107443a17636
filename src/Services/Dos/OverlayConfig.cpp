#include "Services/Dos/OverlayConfig.h"

#include "Host/AppLogger.h"
#include "Services/Dos/ConfigBlocks.h"
#include "Services/Dos/DosConfigText.h"

#include <QHash>

namespace ludarium {

namespace {

QString mt32RomFolder(const DosSettings &settings, const QString &collection, FolderView &view) {
    const QString own = collectionMt32Folder(collection);
    if (view.exists(own))
        return own;
    for (const QString &folder : settings.mt32Folders)
        for (const QLatin1StringView rom :
             {QLatin1StringView("CM32L_CONTROL.ROM"), QLatin1StringView("MT32_CONTROL.ROM")})
            if (!view.find(folder, rom).isNull())
                return folder;
    return {};
}

void addVersionSettings(ConfigBlocks &blocks, const QMap<QString, QString> &changes) {
    QByteArray sbtype, tandy, mididevice;
    for (auto change = changes.cbegin(); change != changes.cend(); ++change) {
        const QString key = change.key().toLower();
        QByteArray *section = key == QStringLiteral("sbtype")       ? &sbtype
                              : key == QStringLiteral("tandy")      ? &tandy
                              : key == QStringLiteral("mididevice") ? &mididevice
                                                                    : nullptr;
        if (!section) {
            Log::info(QStringLiteral("   Unknown config key '%1' - skipping").arg(change.key()));
            continue;
        }
        *section = key.toLatin1() + " = " +
                   checkedText(change.value().toUtf8(), QStringLiteral("The setting %1").arg(change.key()));
    }
    if (!sbtype.isNull())
        blocks.add({"[sblaster]", sbtype});
    if (!tandy.isNull())
        blocks.add({"[speaker]", tandy});
    if (!mididevice.isNull())
        blocks.add({"[midi]", mididevice});
}

} // namespace

QByteArray createIndependentOverlayConfig(const DosSettings &settings, const QString &collection,
                                          const std::optional<GameVersionOption> &version, FolderView &view) {
    ConfigBlocks blocks;
    blocks.add({"# Ludarium Independent Overlay Config", "# Generated at runtime - replaces eXo shared configs"});
    blocks.addDisplay(settings);
    blocks.addRender(settings);
    blocks.addMonochrome(version);
    if (version)
        addVersionSettings(blocks, version->configChanges);
    blocks.addSoundFont(collection, view);
    if (const QString roms = mt32RomFolder(settings, collection, view); !roms.isNull())
        blocks.addMt32Roms(roms);
    else
        Log::info(QStringLiteral("   MT-32 ROMs not found in collection or standard locations"));
    return blocks.text();
}

QString sectionOfKey(const QString &key) {
    static const QHash<QString, QString> sections = [] {
        QHash<QString, QString> map;
        const auto put = [&](const char *section, std::initializer_list<const char *> keys) {
            for (const char *name : keys)
                map.insert(QString::fromLatin1(name), QString::fromLatin1(section));
        };
        put("cpu", {"cycles", "core", "cputype"});
        put("midi", {"mididevice", "mpu401"});
        put("speaker", {"tandy"});
        put("sblaster", {"sbtype"});
        put("render", {"glshader", "scaler", "output"});
        return map;
    }();
    return sections.value(key.toLower(), QStringLiteral("dosbox"));
}

} // namespace ludarium
