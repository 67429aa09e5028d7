// Merging a pedigree into a template through the word processor: each replacement takes the
// next occurrence, fields and generations the template lacks are not tried, empty fields
// leave a blank, and every fault of the word processor is told in its own words.
#include "support/RecordingProgress.h"
#include "support/StudFixture.h"

#include "core/CRegSettings.h"
#include "pedigree/WordMerge.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

/// A word processor whose document is a list of words; a replacement takes the first word
/// that is the placeholder (letter case aside) and writes "=value" in its place.
class ListWordProcessor : public WordProcessor
{
public:
    bool available() override { return true; }
    void open(const QString &path) override
    {
        calls << u"Open "_s + path;
        if (broken)
            throw WordError(WordError::NotADocument, u"The file is not a document."_s);
    }
    bool find(const QString &text) override
    {
        return std::any_of(words.begin(), words.end(),
                           [&](const QString &w) { return !w.startsWith(u'=') && w.contains(text, Qt::CaseInsensitive); });
    }
    bool replace(const QString &text, const QString &value) override
    {
        calls << u"Replace "_s + text;
        for (QString &w : words) {
            if (w.compare(text, Qt::CaseInsensitive) == 0) {
                w = u'=' + value;
                return true;
            }
        }
        return false;
    }
    bool image(const QString &text, const QString &picture) override
    {
        return replace(text, picture.isEmpty() ? u"(blank)"_s : u"picture "_s + picture);
    }
    void save(const QString &, const QString &) override {}
    void print() override
    {
        if (closed)
            throw WordError(0, u"The document has been closed."_s, true);
    }
    void activate() override {}
    void quit() override
    {
        if (closed)
            throw WordError(0, u"The document has been closed."_s, true);
    }
    QStringList fileTypes() override { return {}; }

    QStringList words;
    QStringList calls;
    bool broken = false;
    bool closed = false;
};

class WordMergeTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        Database &db = fx.open();
        fx.session.StudName = u"Warren End"_s;
        CRegSettings s(fx.session.AppName);
        s.SaveSetting(u"Rabbits\\Options"_s, u"Header_0"_s, u"Tel: 0123"_s);
        s.SaveSetting(u"Rabbits\\Options"_s, u"Footer"_s, u"Bred with care"_s);
        const qint64 grandsire = addAnimal(db, {{u"Name"_s, u"Old Grandad"_s}});
        const qint64 sire = addAnimal(db, {{u"Name"_s, u"Jack"_s}, {u"Sire"_s, grandsire}});
        const qint64 dam = addAnimal(db, {{u"Name"_s, u"Jill"_s}});
        subject = addAnimal(db, {{u"Name"_s, u"Bramble"_s}, {u"Sire"_s, sire}, {u"Dam"_s, dam},
                                 {u"RingNo"_s, u"WE201"_s}, {u"Colour"_s, u"Agouti"_s}});
        QString type;
        ASSERT_TRUE(Load_Pedigree_Table(fx.session, table, subject, -1, -1, &type));
    }
    bool merge() { return mergePedigree(fx.session, fx.prompts, word, table, subject, progress); }
    /// What became of each word of the document.
    QStringList document() const { return word.words; }

    StudFixture fx;
    PedigreeTable table;
    ListWordProcessor word;
    RecordingProgress progress;
    qint64 subject = 0;
};

TEST_F(WordMergeTest, EachPlaceholderTakesTheNextAncestorAndTheTemplateDecidesHowMany)
{
    word.words = {u"Header.StudName"_s, u"Header.Line1"_s, u"Header.Line2"_s, u"Footer.Line"_s,
                  u"Gen0.Name"_s,       u"Gen0.Id"_s,      u"Gen0.DOD"_s,     u"Gen1.Name"_s,
                  u"Gen2.Name"_s,       u"Gen2.Name"_s,    u"Gen2.Name"_s,    u"Gen2.Name"_s,
                  u"Gen2.Name"_s,       u"Gen2.Name"_s,    u"Gen0.Image"_s};
    ASSERT_TRUE(merge()) << fx.prompts.texts().join(u'|').toStdString();
    EXPECT_EQ(document(),
              (QStringList{u"=Warren End"_s, u"=Tel: 0123"_s, u"= "_s, u"=Bred with care"_s, u"=Bramble"_s,
                           u"=WE201"_s, u"= "_s, u"=Jack"_s, u"=Old Grandad"_s, u"= "_s, u"= "_s, u"= "_s,
                           u"Gen2.Name"_s, u"Gen2.Name"_s, u"=(blank)"_s}))
        << "the sire only, four grandparents of six places, empty fields as a blank";
    EXPECT_TRUE(fx.prompts.messages.isEmpty());
    // Only the fields and generations in the template are tried: Name, Id, DOD and Image, to
    // the grandparents; the progress counts 2^3 places for each of the four.
    EXPECT_EQ(progress.title, u"Merging Document");
    EXPECT_EQ(progress.total, 8 * 4);
    EXPECT_FALSE(word.calls.contains(u"Replace Gen0.Colour"_s));
    EXPECT_EQ(word.calls.count(u"Replace Gen3.Name"_s), 1) << "a generation not there stops at once";
}

TEST_F(WordMergeTest, ATemplateWithNoPlaceholdersMergesNothingAndIsStillOffered)
{
    word.words = {u"Dear"_s, u"fellow"_s, u"breeder"_s};
    EXPECT_TRUE(merge());
    EXPECT_EQ(document(), (QStringList{u"Dear"_s, u"fellow"_s, u"breeder"_s}));
    EXPECT_EQ(progress.total, 0);
}

TEST(WordFunction, FaultsAreToldInTheWordProcessorsWordsAndABlankStandsForNothing)
{
    ScriptedPrompts prompts;
    ListWordProcessor word;
    word.words = {u"Gen0.Name"_s};
    EXPECT_TRUE(Word_Function(word, prompts, u"Replace"_s, u"Gen0.Name"_s, QString()));
    EXPECT_EQ(word.words.first(), u"= ");
    EXPECT_TRUE(Word_Function(word, prompts, u"UnSet"_s)) << "a name the table does not know falls through";

    word.broken = true;
    bool failed = false;
    EXPECT_FALSE(Word_Function(word, prompts, u"Open"_s, u"/home/breeder/form.docx"_s, {}, &failed));
    EXPECT_TRUE(failed);
    ASSERT_EQ(prompts.messages.size(), 1);
    EXPECT_EQ(prompts.messages[0].text,
              u"An Error occurred contacting Word during: Open\nError : 5792\nThe file is not a document.");
    EXPECT_EQ(prompts.messages[0].title, u"Word Application Error");
    EXPECT_EQ(prompts.messages[0].icon, Prompts::Icon::Stop);

    word.closed = true;
    EXPECT_FALSE(Word_Function(word, prompts, u"Print"_s));
    EXPECT_EQ(prompts.messages[1].text, u"Word has been closed - you cannot Print");
    EXPECT_EQ(prompts.messages[1].title, u"Word Error");
    EXPECT_EQ(prompts.messages[1].icon, Prompts::Icon::Information);
    EXPECT_FALSE(Word_Function(word, prompts, u"Quit"_s));
    EXPECT_EQ(prompts.messages.size(), 2) << "nothing to tell when quitting what has gone";
}

} // namespace
