#include "Services/Dos/DosBoxFlavour.h"

#include "Host/SafeFiles.h"
#include "Models/LaunchError.h"
#include "Services/Dos/DosConfigText.h"
#include "Services/Dos/OverlayConfig.h"

#include <QRegularExpression>

namespace ludarium {

namespace {

/// Sections and settings in the order of the overrides, each checked.
void checkOverrides(const QMap<QString, QString> &overrides) {
    for (auto it = overrides.cbegin(); it != overrides.cend(); ++it) {
        if (!isSafeConfigurationKey(it.key()))
            throw LaunchError(LaunchError::Case::launchFailed,
                              QStringLiteral("\"%1\" is no DOSBox setting").arg(singleLine(it.key())));
        checkedText(it.value().toUtf8(), QStringLiteral("The setting %1").arg(it.key()));
    }
}

} // namespace

QString DosBoxFlavour::text() const {
    QString name;
    switch (family) {
    case DosBoxFamily::vanilla:
        name = QStringLiteral("DOSBox");
        break;
    case DosBoxFamily::svn:
        name = QStringLiteral("DOSBox SVN");
        break;
    case DosBoxFamily::staging:
        name = QStringLiteral("DOSBox Staging");
        break;
    case DosBoxFamily::x:
        name = QStringLiteral("DOSBox-X");
        break;
    case DosBoxFamily::unknown:
        return QStringLiteral("unknown build");
    }
    return version.isEmpty() ? name : name + u' ' + version;
}

DosBoxFlavour parseDosBoxVersion(const QByteArray &output, const QString &program) {
    static const QRegularExpression versionNumber(QStringLiteral("version\\s+(\\d[^\\s,]*)"),
                                                  QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression revision(QStringLiteral("\\br(\\d{4,})\\b"));
    const QString text = QString::fromUtf8(output.left(4096));
    const auto says = [&](const char *word) { return text.contains(QLatin1StringView(word), Qt::CaseInsensitive); };
    DosBoxFlavour result;
    if (const auto match = versionNumber.match(text); match.hasMatch())
        result.version = match.captured(1);
    if (says("dosbox-x"))
        result.family = DosBoxFamily::x;
    else if (says("staging"))
        result.family = DosBoxFamily::staging;
    else if (says("version svn") || says("dosbox ece") || says("version ece")) {
        result.family = DosBoxFamily::svn;
        if (const auto match = revision.match(text); match.hasMatch())
            result.version = match.captured(0);
    } else if (says("dosbox version 0."))
        result.family = result.version.startsWith(QStringLiteral("0.74")) ||
                                result.version.startsWith(QStringLiteral("0.73")) ||
                                result.version.startsWith(QStringLiteral("0.72"))
                            ? DosBoxFamily::vanilla
                            : DosBoxFamily::staging; // its first releases, 0.75 and 0.76, kept the old name
    else if (program.contains(QStringLiteral("dosbox-x"), Qt::CaseInsensitive))
        result.family = DosBoxFamily::x;
    else if (program.contains(QStringLiteral("dosbox-staging"), Qt::CaseInsensitive) ||
             program.contains(QStringLiteral("dosbox staging"), Qt::CaseInsensitive))
        result.family = DosBoxFamily::staging;
    return result;
}

DosBoxCapabilities capabilitiesOf(DosBoxFamily family) {
    switch (family) {
    case DosBoxFamily::vanilla:
        // It describes a drive in 256 bytes, and a longer path ends it without a word.
        return {false, true, false, 238, true};
    case DosBoxFamily::svn:
        // Some of its builds take "-set", others pass over it without a word; the file serves both.
        return {true, true, false, 0, false};
    case DosBoxFamily::x:
        return {true, false, true, 0, false};
    case DosBoxFamily::staging:
    case DosBoxFamily::unknown:
        break;
    }
    return {true, false, false, 0, false};
}

QByteArray overridesConfig(const DosBoxCommandLine &line, DosBoxFamily family) {
    if (!capabilitiesOf(family).overridesFile || line.overrides.isEmpty())
        return {};
    checkOverrides(line.overrides);
    QMap<QString, QByteArray> sections;
    for (auto it = line.overrides.cbegin(); it != line.overrides.cend(); ++it)
        sections[sectionOfKey(it.key())] += it.key().toLatin1() + '=' + it.value().toUtf8() + '\n';
    QByteArray text;
    for (auto it = sections.cbegin(); it != sections.cend(); ++it)
        text += '[' + it.key().toLatin1() + "]\n" + it.value() + '\n';
    return text;
}

QStringList dosBoxArguments(const DosBoxCommandLine &line, DosBoxFamily family) {
    checkOverrides(line.overrides);
    const DosBoxCapabilities can = capabilitiesOf(family);
    const QString conf = QStringLiteral("-conf");
    QStringList arguments;
    if (!line.overlay.isNull())
        arguments << conf << line.overlay;
    arguments << conf << line.launchConfig;
    if (can.overridesFile && !line.overrides.isEmpty())
        arguments << conf << line.overridesFile;
    if (can.setArguments)
        for (auto it = line.overrides.cbegin(); it != line.overrides.cend(); ++it)
            arguments << QStringLiteral("-set")
                      << QStringLiteral("%1 %2=%3").arg(sectionOfKey(it.key()), it.key(), it.value());
    if (can.folderPrompt)
        arguments << QStringLiteral("-nopromptfolder") << QStringLiteral("-defaultdir") << line.workingDirectory;
    return arguments;
}

} // namespace ludarium
