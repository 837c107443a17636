#pragma once

#include <QHash>
#include <QObject>
#include <qqmlregistration.h>

namespace ludarium {

class Workspace;

/// The web pages of this program. Their addresses are set when it is built; one that is not set is not available.
class SupportPages : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
  public:
    explicit SupportPages(Workspace &workspace, QObject *parent = nullptr);

    /// Of "help", "bug", "support" and "quiz".
    Q_INVOKABLE bool isAvailable(const QString &page) const;
    Q_INVOKABLE void open(const QString &page);

    /// For a test, which cannot build the program anew.
    void setAddress(const QString &page, const QString &address) { m_addresses.insert(page, address); }

  private:
    Workspace &m_workspace;
    QHash<QString, QString> m_addresses;
};

} // namespace ludarium
