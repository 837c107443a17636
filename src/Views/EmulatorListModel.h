#pragma once

#include "Services/Emulators/EmulatorManager.h"

#include <QAbstractListModel>
#include <QCoro/QCoroTask>
#include <QMap>
#include <QUrl>
#include <qqmlregistration.h>

namespace ludarium {

/// The emulators with the place where each was found, its version and the user's own choice of a path.
class EmulatorListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(bool checking READ isChecking NOTIFY checkingChanged)
    Q_PROPERTY(int foundCount READ foundCount NOTIFY checkingChanged)
  public:
    enum Role {
        nameRole = Qt::UserRole + 1,
        stateRole,      ///< "unknown", "notInstalled" or "installed"
        pathRole,       ///< where it was found
        versionRole,    ///< empty when the program does not tell
        settableRole,   ///< whether the user can name a path
        customPathRole, ///< the path that the user named
        commandRole,    ///< what installs it, for a terminal
    };

    EmulatorListModel(Host &host, EmulatorManager &emulators, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    bool isChecking() const { return m_checking; }
    int foundCount() const;

    /// Looks for every program, then asks those found for their version.
    Q_INVOKABLE void check();
    /// Takes the file for the program of this row, and looks again.
    Q_INVOKABLE void setPath(int row, const QUrl &file);
    /// Forgets the user's own path, and looks again.
    Q_INVOKABLE void searchUsualPlaces(int row);

  Q_SIGNALS:
    void checkingChanged();
    void warned(const QString &text);

  private:
    QCoro::Task<> run();
    QCoro::Task<> askVersions();
    void storePath(int row, const QString &path);
    void rowsChanged();
    QString customPath(EmulatorProgram program) const;

    Host &m_host;
    EmulatorManager &m_emulators;
    QMap<QString, QString> m_versions; ///< by the program's path
    bool m_checking = false;
    bool m_again = false;
};

} // namespace ludarium
