#include "Views/SettingsCatalog.h"

#include "App/AppState.h"
#include "Host/Host.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"

#include <algorithm>

namespace ludarium {

namespace {

struct Missing {
    const char *tab;
    const char *text;
};

constexpr Missing missing[] = {
    {"Music", QT_TR_NOOP("Background music is not part of this version.")},
    {"Cloud", QT_TR_NOOP("Saves and play data stay on this computer. Sharing them between computers is not part of "
                         "this version.")},
    {"Community", QT_TR_NOOP("Community statistics and shared game fixes are not part of this version. Nothing about "
                             "your games leaves this computer.")},
    {"Services", QT_TR_NOOP("Accounts for artwork and achievements, seeding and the desktop's search are not part of "
                            "this version.")},
};

bool hasAll(const QString &text, const QStringList &words) {
    return std::all_of(words.cbegin(), words.cend(),
                       [&](const QString &word) { return text.contains(word, Qt::CaseInsensitive); });
}

} // namespace

SettingsCatalog::SettingsCatalog(AppState &state, Appearance &appearance, QObject *parent)
    : QObject(parent), m_state(state) {
    addGeneral(appearance);
    addViews();
    addEmulators();
    addDependencies();
    addArtwork();
    for (const Missing &gap : missing)
        add({.key = QStringLiteral("tab:") + QString::fromLatin1(gap.tab),
             .tab = QString::fromLatin1(gap.tab),
             .label = QString::fromLatin1(gap.tab),
             .help = tr(gap.text),
             .kind = Kind::elsewhere});
    addAdvanced();
    addAbout();
    // A setting may change under the window: by a menu, or by the command line program.
    connect(&state.host().settings, &SettingsStore::changed, this, [this](const QString &key) {
        if (SettingItem *changed = item(key))
            Q_EMIT changed->valueChanged();
    });
}

QStringList SettingsCatalog::tabs() const {
    return {QStringLiteral("General"),   QStringLiteral("Emulators"), QStringLiteral("Dependencies"),
            QStringLiteral("Artwork"),   QStringLiteral("Music"),     QStringLiteral("Cloud"),
            QStringLiteral("Community"), QStringLiteral("Services"),  QStringLiteral("Advanced")};
}

QList<QObject *> SettingsCatalog::itemsOf(const QString &tab) const {
    QList<QObject *> result;
    for (SettingItem *item : m_items)
        if (item->tab() == tab && item->kind() != QStringLiteral("elsewhere"))
            result.append(item);
    return result;
}

QList<QObject *> SettingsCatalog::search(const QString &text) const {
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QList<QObject *> byName;
    QList<QObject *> byText;
    if (words.isEmpty())
        return byName;
    for (SettingItem *item : m_items) {
        if (hasAll(item->label(), words))
            byName.append(item);
        else if (hasAll(item->label() + item->help() + item->section() + item->tab() + item->choices().join(u' '),
                        words))
            byText.append(item);
    }
    return byName + byText;
}

QString SettingsCatalog::missingText(const QString &tab) const {
    const SettingItem *gap = item(QStringLiteral("tab:") + tab);
    return gap ? gap->help() : QString();
}

SettingItem *SettingsCatalog::item(const QString &key) const {
    const auto found =
        std::find_if(m_items.cbegin(), m_items.cend(), [&](const SettingItem *item) { return item->key() == key; });
    return found == m_items.cend() ? nullptr : *found;
}

SettingItem *SettingsCatalog::add(SettingItem::Description description) {
    auto *item = new SettingItem(std::move(description), this);
    connect(item, &SettingItem::refused, this, &SettingsCatalog::warned);
    m_items.append(item);
    return item;
}

void SettingsCatalog::addFlag(const Setting<bool> &setting, SettingItem::Description description) {
    SettingsStore &settings = m_state.host().settings;
    description.key = QString::fromUtf8(setting.key);
    description.kind = Kind::flag;
    description.defaultText = setting.fallback ? tr("on") : tr("off");
    description.read = [&settings, setting] { return settings.value(setting); };
    description.write = [&settings, setting](const QVariant &value) { settings.setValue(setting, value.toBool()); };
    add(std::move(description));
}

void SettingsCatalog::addText(const Setting<QString> &setting, SettingItem::Description description) {
    SettingsStore &settings = m_state.host().settings;
    description.key = QString::fromUtf8(setting.key);
    description.kind = Kind::text;
    description.read = [&settings, setting] { return settings.value(setting); };
    description.write = [&settings, setting](const QVariant &value) {
        // An emptied field means the same as one that was never filled.
        if (const QString text = value.toString().trimmed(); text.isEmpty())
            settings.remove(setting);
        else
            settings.setValue(setting, text);
    };
    add(std::move(description));
}

void SettingsCatalog::addAction(const QString &key, SettingItem::Description description,
                                std::function<void()> action) {
    description.key = key;
    description.kind = Kind::action;
    description.write = [action](const QVariant &) { action(); };
    add(std::move(description));
}

} // namespace ludarium
