#pragma once

#include <QObject>
#include <QStringList>
#include <QVariant>
#include <functional>
#include <qqmlregistration.h>

namespace ludarium {

/// One setting as the settings window shows and finds it.
class SettingItem : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(SettingItem)
    QML_UNCREATABLE("Settings come from the catalogue")
    Q_PROPERTY(QString key READ key CONSTANT)
    Q_PROPERTY(QString tab READ tab CONSTANT)
    Q_PROPERTY(QString section READ section CONSTANT)
    Q_PROPERTY(QString label READ label CONSTANT)
    Q_PROPERTY(QString help READ help CONSTANT)
    Q_PROPERTY(QString kind READ kind CONSTANT)
    Q_PROPERTY(QStringList choices READ choices CONSTANT)
    Q_PROPERTY(QString defaultText READ defaultText CONSTANT)
    Q_PROPERTY(QVariant value READ value WRITE setValue NOTIFY valueChanged)
  public:
    /// What the window draws for it.
    enum class Kind {
        flag,
        choice,   ///< one of `choices`
        text,     ///< a line to type
        folder,   ///< a path with a button that chooses another one
        action,   ///< a button that says `choices.first()`
        info,     ///< something to read and copy
        elsewhere ///< drawn by the tab itself; stands here to be found
    };
    struct Description {
        QString key = {}; ///< of the settings store, or a name of its own for what is no stored setting
        QString tab = {};
        QString section = {};
        QString label = {};
        QString help = {};
        Kind kind = Kind::info;
        QStringList choices = {};
        QString defaultText = {};
        std::function<QVariant()> read = {};
        std::function<void(const QVariant &)> write = {};
    };
    explicit SettingItem(Description description, QObject *parent = nullptr);

    QString key() const { return m_description.key; }
    QString tab() const { return m_description.tab; }
    QString section() const { return m_description.section; }
    QString label() const { return m_description.label; }
    QString help() const { return m_description.help; }
    QString kind() const;
    QStringList choices() const { return m_description.choices; }
    /// What holds when nothing was chosen, for people; empty when there is no such thing.
    QString defaultText() const { return m_description.defaultText; }
    QVariant value() const;
    /// For a setting that holds something else than its key's own default while nothing was chosen.
    void setRead(std::function<QVariant()> read, const QString &defaultText);
    /// Takes effect at once. A value that the store cannot keep changes nothing, which `refused` tells.
    void setValue(const QVariant &value);
    /// Does what an action is for.
    Q_INVOKABLE void activate();

  Q_SIGNALS:
    void valueChanged();
    void refused(const QString &reason);

  private:
    Description m_description;
};

} // namespace ludarium
