#pragma once

#include "Models/GameVersionOption.h"
#include "Services/Dos/DosSettings.h"
#include "Services/Dos/FolderView.h"

#include <QByteArray>
#include <QByteArrayList>
#include <optional>

namespace ludarium {

/// A configuration made block by block, each followed by an empty line.
class ConfigBlocks {
  public:
    void add(const QByteArrayList &lines) {
        m_text += lines.join('\n');
        m_text += "\n\n";
    }
    QByteArray text() const { return m_text; }

    void addDisplay(const DosSettings &settings);
    void addRender(const DosSettings &settings);
    /// Hercules pictures are monochrome; other versions have no such block.
    void addMonochrome(const std::optional<GameVersionOption> &version);
    /// The collection's sound font, when it has one.
    void addSoundFont(const QString &collection, FolderView &view);
    void addMt32Roms(const QString &folder);

  private:
    QByteArray m_text;
};

/// Where a collection keeps its MT-32 ROMs and sound font.
QString collectionMt32Folder(const QString &collection);

} // namespace ludarium
