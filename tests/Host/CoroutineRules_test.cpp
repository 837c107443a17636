#include "support/BuildFolders.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ludarium {
namespace {

/// Comments and texts as blanks, so that only code is left; line ends stay.
QString withoutTexts(QString source) {
    static const QRegularExpression text(
        QStringLiteral("//[^\\n]*|/\\*.*?\\*/|\"(?:\\\\.|[^\"\\\\\\n])*\"|'(?:\\\\.|[^'\\\\\\n])+'"),
        QRegularExpression::DotMatchesEverythingOption);
    QRegularExpressionMatchIterator matches = text.globalMatch(source);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        for (qsizetype i = match.capturedStart(); i < match.capturedEnd(); ++i)
            if (source[i] != u'\n')
                source[i] = u' ';
    }
    return source;
}

/// The position after the brace that closes the one at `open`.
qsizetype afterBlock(const QString &source, qsizetype open) {
    int depth = 0;
    for (qsizetype i = open; i < source.size(); ++i) {
        depth += source[i] == u'{';
        depth -= source[i] == u'}';
        if (depth == 0)
            return i + 1;
    }
    return source.size();
}

bool capturesByValue(const QString &captures) {
    static const QRegularExpression harmless(QStringLiteral("^(&\\w*|this)$"));
    for (const QString &capture : captures.split(u',', Qt::SkipEmptyParts))
        if (!capture.trimmed().isEmpty() && !harmless.match(capture.trimmed()).hasMatch())
            return true;
    return false;
}

/// Lines with a `co_await` expression that makes a temporary from braces or a lambda with captures by value: g++ 12
/// destroys such a temporary twice. Given a name before, they are safe; empty braces are.
QList<qsizetype> dangerousLines(const QString &text) {
    static const QRegularExpression await(QStringLiteral("\\bco_await\\b"));
    const QString source = withoutTexts(text);
    QList<qsizetype> lines;
    QRegularExpressionMatchIterator matches = await.globalMatch(source);
    while (matches.hasNext()) {
        const qsizetype start = matches.next().capturedEnd();
        int depth = 0;
        bool dangerous = false;
        QChar before; // the last character that is no blank
        for (qsizetype i = start; i < source.size() && depth >= 0 && !dangerous; ++i) {
            const QChar c = source[i];
            if (c == u';' || c == u'}')
                break;
            const qsizetype end = source.indexOf(u']', i);
            if (c == u'[' && (before == u'(' || before == u',') && end > 0) {
                dangerous = capturesByValue(source.mid(i + 1, end - i - 1));
                i = afterBlock(source, source.indexOf(u'{', end)) - 1; // its body is no part of the expression
            } else if (c == u'{') {
                const qsizetype close = afterBlock(source, i);
                dangerous = !source.mid(i + 1, close - i - 2).trimmed().isEmpty();
                i = close - 1;
            } else {
                depth += c == u'(';
                depth -= c == u')';
            }
            if (!c.isSpace())
                before = c;
        }
        if (dangerous)
            lines << source.left(start).count(u'\n') + 1;
    }
    return lines;
}

TEST(CoroutineRules, AreKnownToTheChecker) {
    const struct {
        const char *code;
        bool dangerous;
    } cases[] = {
        {"co_await runOnPool([x] { use(x); });", true},
        {"auto r = co_await f(1,\n  [x = std::move(y)](int i) mutable { return i; });", true},
        {"co_await f([=] {});", true},
        {"co_await f([this, &y] { g({1, 2}); });", false},
        {"co_await f([&] { a; }, Spec{p, 1});", true},
        {"co_await f({p, 1});", true},
        {"co_await dialogs.ask(Alert{title, text});", true},
        {"co_await f({}, Spec{});", false},
        {"co_await f(list[0], table[i]);", false},
        {"Spec s{p, 1}; co_await f(s);", false},
        {"if (co_await f(x)) { g({1, 2}); }", false},
        {"co_await future; h({1});", false},
        {"co_await f(QStringLiteral(\"{x}\"), '{');", false},
        {"// co_await f({1})", false},
    };
    for (const auto &[code, dangerous] : cases)
        EXPECT_EQ(!dangerousLines(QString::fromLatin1(code)).isEmpty(), dangerous) << code;
}

TEST(CoroutineRules, HoldInEverySourceFile) {
    int awaits = 0;
    QDirIterator files(inSources("src"), {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
        const QString text = QString::fromUtf8(file.readAll());
        awaits += text.contains(QLatin1StringView("co_await"));
        for (const qsizetype line : dangerousLines(text))
            ADD_FAILURE() << file.fileName().toStdString() << ':' << line
                          << ": name the lambda or the braced value before co_await";
    }
    EXPECT_GT(awaits, 2) << "the sources were not found";
}

} // namespace
} // namespace ludarium
