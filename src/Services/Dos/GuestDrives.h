#pragma once

#include "Services/Dos/DiskImage.h"
#include "Services/Dos/DosBoxFlavour.h"
#include "Services/Dos/FolderView.h"

#include <QByteArray>
#include <QHash>
#include <map>

namespace ludarium {

/// The drives of a guest, with its rules for names: folders of the host under short names, images with their file
/// systems, and images that cannot be read, of which nothing is known.
class GuestDrives {
  public:
    /// Relative paths of the host begin at `workingDirectory`, as DOSBox has it.
    GuestDrives(FolderView &view, DosBoxFamily family, QString workingDirectory);

    /// Carries a "MOUNT" or "IMGMOUNT" out; `arguments` is what stands behind the command. What DOSBox refuses
    /// changes nothing.
    void mount(const QByteArray &arguments);
    void mountImage(const QByteArray &arguments);
    bool setDrive(char letter);
    bool changeFolder(const QByteArray &path);

    struct Found {
        GuestEntry entry = GuestEntry::missing;
        bool isKnown = true;  ///< false on a drive whose content cannot be read
        QByteArray guestPath; ///< "C:\GAME\GAME.EXE"
        QString hostPath;     ///< null on an image
    };
    Found find(const QByteArray &path);
    /// Where the guest is, as its prompt shows it.
    QByteArray currentFolder() const;
    /// Whether a drive has a disk to start a machine from.
    bool isMounted(char letter) const { return m_drives.contains(letter); }
    /// The file of the host that a text in a command of DOSBox names: by the host's path, else by the guest's.
    QString hostFile(const QByteArray &text);

  private:
    struct Drive {
        QString folder; ///< null for an image
        std::unique_ptr<DiskImage> image;
        QByteArrayList current;
    };
    struct Path {
        char drive;
        QByteArrayList pieces;
    };
    std::optional<Path> parse(const QByteArray &path) const;
    Found find(const Path &path);
    const QHash<QByteArray, QString> &names(const QString &folder);
    /// The path of the host that an argument names, null for none. Builds that know other systems' paths accept
    /// backslashes and other letters.
    QString hostPath(const QByteArray &text);

    FolderView &m_view;
    DosBoxFamily m_family;
    QString m_workingDirectory;
    std::map<char, Drive> m_drives;
    char m_current = 'Z';
    QHash<QString, QHash<QByteArray, QString>> m_names;
};

/// The words of a line as DOSBox's own commands see them: parted by blanks, quoted ones whole.
QByteArrayList guestArguments(const QByteArray &line);

} // namespace ludarium
