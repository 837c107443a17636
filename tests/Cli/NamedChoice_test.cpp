#include "Cli/NamedChoice.h"

#include <gtest/gtest.h>

namespace ludarium {
namespace {

using namespace Qt::StringLiterals;

TEST(NamedChoice, PrefersTheIdThenTheNameThenAPartOfIt) {
    const QList<NamedThing> things{
        {u"best"_s, u"All of Them"_s}, {u"2"_s, u"Best"_s}, {u"3"_s, u"The BEST of Zork"_s}, {u"4"_s, u"Größe"_s}};
    const struct {
        QString text;
        QList<qsizetype> expected;
    } rows[] = {
        {u"best"_s, {0}}, // though another is called so
        {u"BEST"_s, {1}}, // though others contain it
        {u"est"_s, {1, 2}}, {u"GRÖSSE"_s, {}}, {u"größe"_s, {3}}, {u"GRÖßE"_s, {3}}, {u"none"_s, {}},
    };
    for (const auto &row : rows)
        EXPECT_EQ(thingsNamed(things, row.text), row.expected) << row.text.toStdString();
}

TEST(NamedChoice, SpellsAValueAsTheListDoes) {
    const QStringList values{u"action"_s, u"Action"_s, u"Role-Playing"_s};
    const struct {
        QString text;
        QString expected;
    } rows[] = {
        {u"Action"_s, u"Action"_s}, {u"ACTION"_s, u"action"_s}, {u"role-playing"_s, u"Role-Playing"_s},
        {u"Role"_s, QString()},     {QString(), QString()},
    };
    for (const auto &row : rows)
        EXPECT_EQ(spelledAs(values, row.text), row.expected) << row.text.toStdString();
}

} // namespace
} // namespace ludarium
