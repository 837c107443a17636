#include "Host/SafeJson.h"

#include <QJsonArray>
#include <QJsonObject>
#include <gtest/gtest.h>

using namespace ludarium;

TEST(SafeJson, AcceptsDocumentsUpToItsLimitsAndNoFurther) {
    const auto nested = [](int levels) { return QByteArray(levels, '[') + QByteArray(levels, ']'); };
    const auto sized = [](qsizetype bytes) { return "[\"" + QByteArray(bytes - 4, 'x') + "\"]"; };
    const struct {
        const char *name;
        QByteArray json;
        bool accepted;
    } cases[] = {
        {"64 levels", nested(64), true},
        {"65 levels", nested(65), false},
        {"65 levels of objects and lists", QByteArray("{\"a\":[").repeated(33) + QByteArray("]}").repeated(33), false},
        {"a million levels, never closed", QByteArray(1'000'000, '['), false},
        {"brackets in a text", "[\"" + QByteArray(100, '[') + "\\\"" + QByteArray(100, '{') + "\"]", true},
        {"many lists beside each other", "[" + QByteArray("[],").repeated(1000) + "[]]", true},
        {"16 MiB", sized(16 << 20), true},
        {"16 MiB and a byte", sized((16 << 20) + 1), false},
        {"nothing", "", false},
        {"an HTML page", "<html>[]</html>", false},
        {"an unfinished document", "{\"a\":", false},
    };
    for (const auto &[name, json, accepted] : cases) {
        QString problem;
        EXPECT_EQ(parseJson(json, &problem).has_value(), accepted) << name;
        EXPECT_EQ(problem.isEmpty(), accepted) << name;
    }
    EXPECT_EQ(parseJson("{\"a\":[1]}")->object()[QLatin1String("a")].toArray().at(0).toInt(), 1);
}
