#include "Models/AdditionalApplication.h"

#include <initializer_list>

namespace ludarium {

QString applicationTypeSymbol(ApplicationType type) {
    switch (type) {
    case ApplicationType::manual:
        return QStringLiteral("book.fill");
    case ApplicationType::extras:
        return QStringLiteral("folder.fill");
    case ApplicationType::setup:
        return QStringLiteral("gearshape.fill");
    case ApplicationType::document:
        return QStringLiteral("doc.text.fill");
    case ApplicationType::application:
        return QStringLiteral("app.fill");
    }
    Q_UNREACHABLE();
}

ApplicationType AdditionalApplication::applicationType() const {
    const QString lowerName = name.toLower();
    const QString lowerPath = applicationPath.toLower();
    const auto nameHasAny = [&](std::initializer_list<QLatin1String> words) {
        for (QLatin1String word : words)
            if (lowerName.contains(word))
                return true;
        return false;
    };

    if (nameHasAny({QLatin1String("manual")}) || lowerPath.contains(QLatin1String("manual")) ||
        lowerPath.endsWith(QLatin1String(".pdf")))
        return ApplicationType::manual;
    if (nameHasAny({QLatin1String("extra")})) // "extras" too
        return ApplicationType::extras;
    if (nameHasAny({QLatin1String("setup"), QLatin1String("install"), QLatin1String("config")}))
        return ApplicationType::setup;
    if (nameHasAny({QLatin1String("doc")}) || lowerPath.endsWith(QLatin1String(".txt")) ||
        lowerPath.endsWith(QLatin1String(".doc")))
        return ApplicationType::document;
    return ApplicationType::application;
}

size_t qHash(const AdditionalApplication &application, size_t seed) {
    const auto &a = application;
    return qHashMulti(seed, a.id, a.gameId, a.name, a.applicationPath, a.commandLine, a.autoRunBefore, a.autoRunAfter,
                      a.waitForExit, a.playCount, a.priority.has_value(), a.priority.value_or(0), a.sideA.has_value(),
                      a.sideA.value_or(false), a.sideB.has_value(), a.sideB.value_or(false));
}

} // namespace ludarium
