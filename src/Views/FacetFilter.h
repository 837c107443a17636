#pragma once

#include <QObject>
#include <QStringList>
#include <QVariantList>
#include <qqmlregistration.h>

namespace ludarium {

class AppState;

/// The facets that narrow the main view: their values in this library, and those that hold. A facet is named
/// "genre", "developer", "publisher" or "year"; the toggles "favorites", "installed" and "recent" stand beside them
/// where only what holds is listed.
class FacetFilter : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(QVariantList active READ active NOTIFY activeChanged)
    Q_PROPERTY(bool installedOnly READ isInstalledOnly NOTIFY activeChanged)
    Q_PROPERTY(QString kind READ kind WRITE setKind NOTIFY valuesChanged)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY valuesChanged)
    Q_PROPERTY(QStringList values READ values NOTIFY valuesChanged)
  public:
    explicit FacetFilter(AppState &state, QObject *parent = nullptr);

    /// What holds, in a fixed order, as maps of `kind` and `text`.
    QVariantList active() const;
    bool isInstalledOnly() const;
    /// The value that holds; empty when none does.
    Q_INVOKABLE QString value(const QString &kind) const;
    /// The facet whose values are listed, and the text that they must contain in any case.
    QString kind() const { return m_kind; }
    void setKind(const QString &kind);
    QString search() const { return m_search; }
    void setSearch(const QString &search);
    QStringList values() const;
    /// Narrows by a value of the listed facet, or no longer where it holds already.
    Q_INVOKABLE void toggle(const QString &value);
    /// An empty text removes the facet. A toggle holds with any other text.
    Q_INVOKABLE void set(const QString &kind, const QString &value);
    /// Removes what `active` lists; platform, playlist, collection and search stay.
    Q_INVOKABLE void clear();

  Q_SIGNALS:
    void activeChanged();
    void valuesChanged();

  private:
    AppState &m_state;
    QVariantList m_known;
    QString m_kind = QStringLiteral("genre");
    QString m_search;
};

} // namespace ludarium
