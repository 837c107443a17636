#include "Models/TextPool.h"
#include "Services/Library/CollectionFile.h"
#include "Services/Library/GameRecovery.h"
#include "Services/Library/GamesFileReader.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <algorithm>
#include <ctime>
#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>
#include <system_error>

namespace ludarium {
namespace {

QByteArray titles(const std::vector<GamePtr> &games) {
    QByteArray text;
    for (const GamePtr &game : games)
        text += game->title.toUtf8() + ' ';
    return text.trimmed();
}

QByteArray recovered(const QByteArray &bytes) {
    TextPool pool;
    const std::string_view text(bytes.constData(), size_t(bytes.size()));
    XmlTextSource source(text);
    const QByteArray found = titles(recoverGames(source, pool));
    // In small pieces, so that tags and characters come in two.
    class : public XmlSource {
      public:
        std::string_view rest;
        qint64 read(char *buffer, qint64) override {
            const size_t count = rest.copy(buffer, 3);
            rest.remove_prefix(count);
            return qint64(count);
        }
    } pieces;
    if (text.size() < 10'000) {
        pieces.rest = text;
        EXPECT_EQ(titles(recoverGames(pieces, pool)), found);
    }
    return found;
}

class GamesFiles : public testing::Test {
  protected:
    QTemporaryDir m_folder;
    QString put(const QByteArray &content) {
        const QString path = m_folder.filePath(QStringLiteral("games.xml"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        return path;
    }
    /// Titles and additional applications as read with a part size; "-" when nothing was cut.
    QByteArray read(const QByteArray &content, qint64 partSize) {
        GamesFileReader reader({put(content)}, partSize);
        const GamesFileContent found = reader.next();
        return titles(found.games) + '|' + QByteArray::number(qsizetype(found.additionalApplications.size()));
    }
    size_t partCount(const QByteArray &content, qint64 partSize) {
        return xmlParts(CollectionFile(put(content)), partSize).size();
    }
};

QByteArray game(int number) {
    const QByteArray title = QByteArray::number(number);
    return "<Game><ID>" + title + "</ID><Title>" + title + "</Title></Game>\n";
}

TEST_F(GamesFiles, ReadTheSameInPartsAsInOne) {
    QByteArray body;
    for (int i = 0; i < 60; ++i)
        body += game(i) + (i % 7 == 0 ? "<AdditionalApplication><Id>x</Id></AdditionalApplication>" : "");
    const QByteArray nested = "<Other>" + game(100) + game(101) + game(102) + "</Other>";
    const QByteArray comment = "<!-- " + game(200) + game(201) + game(202) + " -->";
    const QByteArray cdata =
        "<Game><Title>c</Title><Notes><![CDATA[" + game(300) + game(301) + game(302) + "]]></Notes></Game>";
    const QByteArray text =
        "<Game><Title>t</Title><Notes>&lt;Game&gt;" + QByteArray(300, 'x') + "&lt;/Game&gt;</Notes></Game>";
    struct {
        const char *name;
        QByteArray content;
        bool cut; ///< whether it is read in parts at all
    } const cases[]{
        {"plain", "<?xml version=\"1.0\" standalone=\"yes\"?>\r\n<LaunchBox>" + body + "</LaunchBox>", true},
        {"byte order mark and encoding", "\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?><L>" + body + "</L>\n",
         true},
        {"attributes and a comment", "<!-- <x> --><LaunchBox xmlns='urn:a' b='c'>" + body + "</LaunchBox>", true},
        {"attribute that ends a tag", "<LaunchBox a='>'>" + body + "</LaunchBox>", false},
        {"nested games", "<LaunchBox>" + body + nested + body + "</LaunchBox>", true},
        {"games in a comment", "<LaunchBox>" + body + comment + body + "</LaunchBox>", true},
        {"games in CDATA", "<LaunchBox>" + cdata + body + cdata + "</LaunchBox>", true},
        {"games in text", "<LaunchBox>" + text + body + text + "</LaunchBox>", true},
        {"nested root", "<LaunchBox><LaunchBox>" + body + "</LaunchBox>" + body + "</LaunchBox>", true},
        {"comment behind the root", "<LaunchBox>" + body + "</LaunchBox><!-- " + body + " -->", true},
        {"two roots", "<LaunchBox>" + body + "</LaunchBox><LaunchBox>" + body + "</LaunchBox>", true},
        {"unclosed root", "<LaunchBox>" + body, true},
        {"unclosed comment", "<LaunchBox>" + body + "<!-- " + body + "</LaunchBox>", true},
        {"broken in the middle", "<LaunchBox>" + body + "<Game><b></Game>" + body + "</LaunchBox>", true},
        {"undecodable in the middle", "<LaunchBox>" + body + "<Game><Title><b/></Title></Game>" + body + "</LaunchBox>",
         true},
        {"document type", "<!DOCTYPE LaunchBox><LaunchBox>" + body + "</LaunchBox>", false},
        {"other encoding", "<?xml version='1.0' encoding='iso-8859-1'?><LaunchBox>" + body + "</LaunchBox>", false},
        {"no games", "<LaunchBox>" + QByteArray(4000, ' ') + "</LaunchBox>", false},
    };
    for (const auto &[name, content, cut] : cases) {
        const QByteArray whole = read(content, 1 << 30);
        for (const qint64 partSize : {50, 100, 333, 1000, 2000})
            EXPECT_EQ(read(content, partSize), whole) << name << " in parts of " << partSize;
        EXPECT_EQ(partCount(content, 333) > 1, cut) << name;
    }
    EXPECT_TRUE(read(cases[0].content, 100).endsWith("58 59|9"));
}

TEST_F(GamesFiles, ShareTextsAmongThreadsAndKeepTheOrderOfFiles) {
    QByteArray body;
    for (int i = 0; i < 2000; ++i)
        body += "<Game><ID>" + QByteArray::number(i) + "</ID><Genre>Action</Genre></Game>";
    const QString path = put("<L>" + body + "</L>");
    GamesFileReader reader({path, m_folder.filePath(QStringLiteral("absent")), path}, 1000);
    const GamesFileContent first = reader.next();
    EXPECT_THROW(reader.next(), std::system_error);
    const GamesFileContent second = reader.next();
    ASSERT_EQ(first.games.size(), 2000u);
    ASSERT_EQ(second.games.size(), 2000u);
    for (size_t i = 0; i < first.games.size(); ++i) {
        EXPECT_EQ(first.games[i]->id.toInt(), int(i));
        EXPECT_EQ(first.games[i]->genre.constData(), second.games.back()->genre.constData());
    }
}

TEST_F(GamesFiles, ThatAreNoRegularFilesAreRefusedAtOnce) {
    const QByteArray pipe = QFile::encodeName(m_folder.filePath(QStringLiteral("pipe.xml")));
    ASSERT_EQ(::mkfifo(pipe.constData(), 0600), 0);
    EXPECT_THROW(CollectionFile(QFile::decodeName(pipe)), std::system_error);
    EXPECT_THROW(CollectionFile(m_folder.path()), std::system_error);
}

TEST(GameRecovery, FindsWhatTheRegularExpressionFinds) {
    const std::pair<QByteArray, QByteArray> cases[]{
        {"", ""},
        {game(1) + "<broken" + game(2), "1 2"},
        {"<Game>\n<Title>a\nb</Title>\n</Game>", "a\nb"},
        {"<Game/>" + game(1) + "<Game >" + game(2), "1 2"},
        {"<Game><Title>lost</Title>" + game(1) + game(2), "2"},
        {"<Game><Title>a & b</Title></Game>" + game(1), "1"},
        {"<Game><Title><b/></Title></Game>" + game(1), "1"},
        {"<Game></Game ><Game ><Title>x</Title></Game>" + game(1), "1"},
        {"<Game></LaunchBox><LaunchBox></Game>" + game(1), "1"},
        {game(1) + "<Game><Title>never closed</Title>", "1"},
        {"</Game>" + game(1), "1"},
        {"<AdditionalApplication><Id>1</Id></AdditionalApplication>", ""},
        {game(1) + "\xFF", ""},
        {"\xEF\xBB\xBF" + game(1) + "ñ", "1"},
    };
    for (const auto &[bytes, expected] : cases)
        EXPECT_EQ(recovered(bytes), expected) << bytes.toStdString();

    // Any sequence of pieces, against the expression itself.
    std::mt19937 random(20240601);
    static const char *const pieces[]{"<Game>", "</Game>",  "<Game>", "</Game>", "<Title>a</Title>",
                                      "\n",     "<Title>b", "<Game",  ">"};
    const QRegularExpression expression(QStringLiteral("<Game>(.*?)</Game>"),
                                        QRegularExpression::DotMatchesEverythingOption);
    for (int round = 0; round < 500; ++round) {
        QByteArray bytes;
        for (int i = 0; i < 30; ++i)
            bytes += pieces[random() % std::size(pieces)];
        QByteArray each;
        for (auto it = expression.globalMatch(QString::fromUtf8(bytes)); it.hasNext();)
            each += recovered("<Game>" + it.next().captured(1).toUtf8() + "</Game>") + ' ';
        EXPECT_EQ(recovered(bytes).simplified(), each.simplified()) << bytes.toStdString();
    }
}

double secondsToRecover(const QByteArray &bytes) {
    double best = 1e9;
    for (int i = 0; i < 5; ++i) {
        timespec begin, end;
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &begin);
        EXPECT_EQ(recovered(bytes), "");
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &end);
        best = std::min(best, double(end.tv_sec - begin.tv_sec) + double(end.tv_nsec - begin.tv_nsec) / 1e9);
    }
    return best;
}

TEST(GameRecovery, TakesTimeInProportionToAFileOfUnclosedElements) {
    const double small = secondsToRecover(QByteArray("<Game><Title>x</Title>\n").repeated(500));
    const double big = secondsToRecover(QByteArray("<Game><Title>x</Title>\n").repeated(8'000));
    // Sixteen times the bytes: a search that starts anew at each element would need 256 times the time.
    EXPECT_LT(big, small * 64);
}

TEST_F(GamesFiles, OfUnclosedElementsAreGivenUpInLinearTimeToo) {
    const QByteArray content = "<LaunchBox>" + QByteArray("<Game><Title>x</Title>\n").repeated(2'600'000);
    ASSERT_GT(content.size(), 59'000'000);
    EXPECT_EQ(read(content, GamesFileReader::defaultPartSize), "|0");
}

} // namespace
} // namespace ludarium
