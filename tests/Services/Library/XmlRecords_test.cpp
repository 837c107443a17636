#include "Services/Library/XmlRecords.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace ludarium {
namespace {

/// Writes down what it receives: "Game{Title=…;Notes!}" with "!" for an unreadable field. Knows the records Game and
/// App and the fields Title and Notes.
class NotingSink : public XmlRecordSink {
  public:
    std::string notes;
    bool beginRecord(std::string_view name) override {
        if (name != "Game" && name != "App")
            return false;
        notes += std::string(name) + "{";
        return true;
    }
    int field(std::string_view name) override { return name == "Title" ? 0 : name == "Notes" ? 1 : -1; }
    void fieldText(int field, std::string_view text) override {
        notes += (field == 0 ? "Title=" : "Notes=") + std::string(text) + ";";
    }
    void fieldUnreadable(int field) override { notes += field == 0 ? "Title!" : "Notes!"; }
    void endRecord() override { notes += "}"; }
};

/// Gives the document a few bytes at a time.
class TricklingSource : public XmlSource {
  public:
    TricklingSource(std::string_view document, qint64 step) : m_rest(document), m_step(step) {}
    qint64 read(char *buffer, qint64 size) override {
        const size_t count = std::min({m_rest.size(), size_t(size), size_t(m_step)});
        std::copy_n(m_rest.data(), count, buffer);
        m_rest.remove_prefix(count);
        return qint64(count);
    }

  private:
    std::string_view m_rest;
    qint64 m_step;
};

XmlResult read(std::string_view document, std::string *notes = nullptr) {
    XmlTextSource source(document);
    NotingSink sink;
    const XmlResult result = readXmlRecords(source, sink);
    if (notes)
        *notes = sink.notes;
    return result;
}

struct RecordCase {
    const char *document, *notes;
};
class WellFormedDocuments : public testing::TestWithParam<RecordCase> {};

TEST_P(WellFormedDocuments, GiveTheirRecordsHoweverTheyArrive) {
    for (const qint64 step : {1, 3, 7, 100'000}) {
        TricklingSource source(GetParam().document, step);
        NotingSink sink;
        const XmlResult result = readXmlRecords(source, sink);
        EXPECT_TRUE(result.wellFormed) << result.error.toStdString();
        EXPECT_EQ(sink.notes, GetParam().notes) << "step " << step;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, WellFormedDocuments,
    testing::Values(
        RecordCase{"<r/>", ""}, RecordCase{"<Game><Title>a</Title></Game>", ""},
        RecordCase{"<r><Game/><Other><Title>b</Title></Other></r>", "Game{}"},
        RecordCase{"<r><Game><Title> \n a b\t</Title><X>q</X><Notes/></Game></r>", "Game{Title=a b;Notes=;}"},
        RecordCase{"<r><Game><Title>a &amp; b &lt;c&gt; &#x41;&#66;</Title></Game></r>", "Game{Title=a & b <c> AB;}"},
        RecordCase{"<r><Game><Title>x<![CDATA[<Game>&amp;</Game>]]>y</Title></Game></r>",
                   "Game{Title=x<Game>&amp;</Game>y;}"},
        RecordCase{"<r><!-- <Game><Title>no</Title></Game> --><Game><Title>a<!-- b -->c<?pi d?>e</Title></Game></r>",
                   "Game{Title=ace;}"},
        RecordCase{"<r><Game><Title>a<b>c</b></Title><Notes>n</Notes><X><Title>no</Title></X></Game></r>",
                   "Game{Title!Notes=n;}"},
        RecordCase{"<r>text<Game>text<Title>a</Title>text</Game>text</r>", "Game{Title=a;}"},
        RecordCase{"<r xmlns:p='u'><p:Game><Title>n</Title></p:Game><Game><p:Title>n</p:Title></Game></r>", "Game{}"},
        RecordCase{"<r xmlns='urn:x'><Game id='1'><Title lang='en'>a</Title></Game></r>", "Game{Title=a;}"},
        RecordCase{"\xEF\xBB\xBF<?xml version=\"1.0\" "
                   "encoding=\"utf-8\"?><r><Game><Title>\xC2\xA0ñ\xE3\x80\x80</Title></Game></r>",
                   "Game{Title=ñ;}"},
        RecordCase{"<?xml version=\"1.0\" encoding=\"iso-8859-1\"?><r><Game><Title>\xF1</Title></Game></r>",
                   "Game{Title=ñ;}"},
        RecordCase{"<r><Game><Title>a\r\nb\rc</Title></Game></r>", "Game{Title=a\nb\nc;}"}));

/// A document of `head`, then `filler` again and again for 64 MB; counts what was read.
class LongSource : public XmlSource {
  public:
    LongSource(std::string_view head, std::string_view filler) : m_head(head), m_filler(filler) {}
    qint64 total = 0;
    qint64 read(char *buffer, qint64 size) override {
        if (total > 64 << 20)
            return 0;
        const size_t fromHead = m_head.copy(buffer, size_t(size));
        m_head.remove_prefix(fromHead);
        for (size_t i = fromHead; i < size_t(size); ++i)
            buffer[i] = m_filler[m_next++ % m_filler.size()];
        total += size;
        return size;
    }

  private:
    std::string_view m_head;
    std::string_view m_filler;
    size_t m_next = 0;
};

struct LongDocument {
    const char *name;
    std::string head;
    std::string filler;
};
class EndlessDocuments : public testing::TestWithParam<LongDocument> {};

TEST_P(EndlessDocuments, AreReadNoFurtherThanTheirFault) {
    LongSource source(GetParam().head, GetParam().filler);
    NotingSink sink;
    const XmlResult result = readXmlRecords(source, sink);
    EXPECT_FALSE(result.wellFormed);
    EXPECT_FALSE(result.error.isEmpty());
    EXPECT_LT(source.total, 1 << 20);
}

INSTANTIATE_TEST_SUITE_P(Kinds, EndlessDocuments,
                         testing::Values(LongDocument{"nothing", "", std::string(1, '\0')},
                                         LongDocument{"nothing_behind_games", "<r><Game><Title>a</Title></Game>",
                                                      std::string(1, '\0')},
                                         LongDocument{"control_characters", "<r><Game><Title>", "\x01"},
                                         LongDocument{"attributes_of_one_name", "<r><Game ", "a='' "},
                                         LongDocument{"depth", "<r><Game>", "<a>"}),
                         [](const auto &info) { return info.param.name; });

TEST(DocumentLimits, TakeAsManyAttributesAndLevelsAsAreAllowedAndNotOneMore) {
    const auto attributes = [](int count) {
        std::string text = "<r><Game";
        for (int i = 0; i < count; ++i)
            text += " a" + std::to_string(i) + "='v'";
        return text + "><Title>t</Title></Game></r>";
    };
    const auto levels = [](int count) {
        std::string text = "<r>";
        for (int i = 1; i < count; ++i)
            text += "<a>";
        for (int i = 1; i < count; ++i)
            text += "</a>";
        return text + "</r>";
    };
    EXPECT_TRUE(read(attributes(256)).wellFormed);
    EXPECT_FALSE(read(attributes(257)).wellFormed);
    EXPECT_TRUE(read(levels(256)).wellFormed);
    EXPECT_FALSE(read(levels(257)).wellFormed);
    // A comment may say "=" as often as it likes.
    std::string comment = "<r><!--";
    for (int i = 0; i < 100'000; ++i)
        comment += " a='b'";
    EXPECT_TRUE(read(comment + "--></r>").wellFormed);
}

TEST(DocumentLimits, CutALongTextBetweenCharacters) {
    std::string text = "<r><Game><Title>x";
    for (int i = 0; i < 6 << 20; ++i)
        text += "ñ";
    std::string notes;
    EXPECT_TRUE(read(text + "</Title><Notes>n</Notes></Game></r>", &notes).wellFormed);
    const std::string_view title = std::string_view(notes).substr(11, notes.find(';') - 11);
    EXPECT_EQ(title.size(), (10u << 20) - 1);
    EXPECT_TRUE(title.ends_with("ñ"));
    EXPECT_TRUE(notes.ends_with("Notes=n;}"));
}

class HostileDocuments : public testing::TestWithParam<const char *> {};

TEST_P(HostileDocuments, AreNotWellFormedAndSayWhy) {
    const XmlResult result = read(GetParam());
    EXPECT_FALSE(result.wellFormed) << GetParam();
    EXPECT_FALSE(result.error.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, HostileDocuments,
    testing::Values("", "   ", "no xml", "<r>", "<r></s>", "<r/><r/>", "<r><Game></r></Game>", "<r>&nbsp;</r>",
                    "<r>&#0;</r>", "<r>a\x01</r>", "<r>\xFF</r>", "<r>\xC3</r>", "<r>\xED\xA0\x80</r>",
                    "<r a='1' a='2'/>", "<r><![CDATA[</r>", "<r><!-- </r>", "<r>a & b</r>", "<r></r>trailing",
                    "<!DOCTYPE r><r/>", "<!DOCTYPE r SYSTEM 'file:///etc/passwd'><r/>",
                    "<!DOCTYPE r [<!ENTITY e 'x'>]><r><Game><Title>&e;</Title></Game></r>",
                    "<!DOCTYPE r [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><r><Game><Title>&e;</Title></Game></r>",
                    "<!DOCTYPE r [<!ENTITY % p SYSTEM 'http://127.0.0.1:1/x'>%p;]><r/>"));

TEST(XmlRecords, ExpandNoEntityOfADocumentType) {
    std::string bomb = "<!DOCTYPE r [<!ENTITY a 'aaaaaaaaaa'>";
    for (char c = 'b'; c <= 'j'; ++c) {
        bomb += std::string("<!ENTITY ") + c + " '";
        for (int i = 0; i < 10; ++i)
            bomb += std::string("&") + char(c - 1) + ";";
        bomb += "'>";
    }
    bomb += "]><r><Game><Title>&j;</Title></Game></r>";
    std::string notes;
    const XmlResult result = read(bomb, &notes);
    EXPECT_FALSE(result.wellFormed);
    EXPECT_EQ(result.error, QStringLiteral("a document type declaration is not allowed"));
    EXPECT_EQ(notes, "");
}

TEST(XmlRecords, RefuseDeepNesting) {
    std::string document;
    for (int i = 0; i < 100'000; ++i)
        document += "<a>";
    EXPECT_FALSE(read(document).wellFormed);
}

TEST(XmlRecords, AreNotWellFormedWhereverTheyAreCutOff) {
    const std::string document = "<?xml version=\"1.0\"?><r><Game a='b'><Title>a &amp; ñ</Title><X/></Game><!-- c -->"
                                 "<Game><Title><![CDATA[x]]></Title></Game><?pi?></r>";
    ASSERT_TRUE(read(document).wellFormed);
    for (size_t length = 0; length < document.size(); ++length)
        EXPECT_FALSE(read(document.substr(0, length)).wellFormed) << document.substr(0, length);
}

TEST(XmlRecords, NameTheLineOfAnError) {
    EXPECT_TRUE(read("<r>\n<Game>\n</r>").error.startsWith(QStringLiteral("line 3: ")));
}

TEST(XmlRecords, PassExceptionsOfTheSourceAndTheSinkThrough) {
    struct FailingSource : XmlSource {
        int reads = 0;
        qint64 read(char *buffer, qint64) override {
            if (++reads > 1)
                throw std::runtime_error("unplugged");
            *buffer = '<';
            return 1;
        }
    } source;
    NotingSink sink;
    EXPECT_THROW(readXmlRecords(source, sink), std::runtime_error);

    struct FailingSink : NotingSink {
        void endRecord() override { throw std::logic_error("full"); }
    } failing;
    XmlTextSource text("<r><Game/><Game/></r>");
    EXPECT_THROW(readXmlRecords(text, failing), std::logic_error);
    EXPECT_EQ(failing.notes, "Game{");
}

TEST(TrimmedUtf8, TakesUnicodeWhiteSpaceOffBothEndsOnly) {
    const std::pair<const char *, const char *> cases[]{
        {"", ""},
        {" \t\r\n ", ""},
        {"  a b  ", "a b"},
        {"\xC2\xA0", ""},
        {"\xE2\x80\xA8x\xE1\x9A\x80", "x"},
        {"\xE2\x80\x8Bx", "\xE2\x80\x8Bx"},
        {"é", "é"},
        {"à", "à"},
        {"x\xC2\x85", "x"},
    };
    for (const auto &[text, trimmed] : cases)
        EXPECT_EQ(trimmedUtf8(text), trimmed);
}

} // namespace
} // namespace ludarium
