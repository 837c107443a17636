#pragma once

#include "Views/SettingItem.h"

#include <QCoro/QCoroTask>
#include <QList>

namespace ludarium {

class AppState;
class Appearance;
template<typename T>
struct Setting;

/// Every setting that has an effect, by the tabs of the settings window.
class SettingsCatalog : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(QStringList tabs READ tabs CONSTANT)
  public:
    SettingsCatalog(AppState &state, Appearance &appearance, QObject *parent = nullptr);

    QStringList tabs() const;
    /// The settings of a tab that it shows as rows, in order.
    Q_INVOKABLE QList<QObject *> itemsOf(const QString &tab) const;
    /// Every setting, emulator and tab that has all words of `text` in its name, its help or its tab. Those whose name
    /// has them come first.
    Q_INVOKABLE QList<QObject *> search(const QString &text) const;
    /// Why a tab has nothing to set; empty for one that has.
    Q_INVOKABLE QString missingText(const QString &tab) const;
    /// Null when there is none of this key.
    Q_INVOKABLE ludarium::SettingItem *item(const QString &key) const;

  Q_SIGNALS:
    void toast(const QString &text);
    /// Something was not saved.
    void warned(const QString &text);
    /// The user wants to see the assistant again.
    void assistantWanted();
    /// Copies of all covers are to be made now.
    void thumbnailsWanted();
    /// The open collection is to be loaded again.
    void reloadWanted();

  private:
    using Kind = SettingItem::Kind;
    void addGeneral(Appearance &appearance);
    void addViews();
    void addPlatformOrder(const QString &section);
    void addEmulators();
    void addDependencies();
    void addArtwork();
    void addAdvanced();
    void addAbout();
    SettingItem *add(SettingItem::Description description);
    void addFlag(const Setting<bool> &setting, SettingItem::Description description);
    void addText(const Setting<QString> &setting, SettingItem::Description description);
    void addAction(const QString &key, SettingItem::Description description, std::function<void()> action);
    void clearCache();
    void clearThumbnails();
    void resetWarnings();
    QCoro::Task<> reset();

    AppState &m_state;
    QList<SettingItem *> m_items;
};

} // namespace ludarium
