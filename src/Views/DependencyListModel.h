#pragma once

#include <QAbstractListModel>
#include <QCoro/QCoroTask>
#include <qqmlregistration.h>

namespace ludarium {

struct Host;
class PrerequisitesManager;

/// The tools that collections need beside the emulators, whether each is there, and what installs it.
class DependencyListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(bool checking READ isChecking NOTIFY changed)
    Q_PROPERTY(bool checked READ isChecked NOTIFY changed)
    Q_PROPERTY(bool complete READ isComplete NOTIFY changed)
    Q_PROPERTY(QString command READ command NOTIFY changed)
    Q_PROPERTY(bool mt32Installed READ isMt32Installed NOTIFY changed)
    Q_PROPERTY(QString mt32Folder READ mt32Folder CONSTANT)
  public:
    enum Role {
        nameRole = Qt::UserRole + 1,
        purposeRole,
        requiredRole,
        installedRole,
        detailRole, ///< a version or the name of what was found; may be empty
    };

    DependencyListModel(Host &host, PrerequisitesManager &prerequisites, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    bool isChecking() const;
    bool isChecked() const;
    /// Whether every tool was found.
    bool isComplete() const;
    /// The line for a terminal that installs everything missing; empty when nothing is, or nothing can install it.
    QString command() const;
    bool isMt32Installed() const;
    QString mt32Folder() const;

    Q_INVOKABLE void check();
    Q_INVOKABLE void openMt32Folder();

  Q_SIGNALS:
    void changed();

  private:
    struct Row {
        QString name;
        QString purpose;
        QString package; ///< empty for the package manager itself
        bool required = false;
        bool installed = false;
        QString detail;
    };
    QList<Row> rows() const;

    Host &m_host;
    PrerequisitesManager &m_prerequisites;
};

} // namespace ludarium
