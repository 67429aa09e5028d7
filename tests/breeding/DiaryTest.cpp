#include "support/RecordingProgress.h"
#include "support/StudFixture.h"

#include "breeding/Diary.h"
#include "store/DaySerial.h"
#include "store/StoreError.h"
#include "store/StudDatabase.h"

#include <gtest/gtest.h>

#include <set>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

using Icon = Prompts::Icon;

class DiaryTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        db = &fx.open();
        doe = fx.add({{u"Name"_s, u"Bramble"_s}, {u"Sex"_s, u"Doe"_s}});
    }
    QDate day(int n) const { return QDate(2024, 1, 1).addDays(n - 1); }
    /// Notes on days 1 to count, each reading "note <day>".
    void writeNotes(qint64 number, int count)
    {
        for (int i = 1; i <= count; ++i)
            addNote(*db, number, day(i), u"note %1"_s.arg(i));
    }
    static QStringList texts(const QList<DiaryEntry> &rows)
    {
        QStringList t;
        for (const DiaryEntry &e : rows)
            t << e.notes;
        return t;
    }
    static QStringList notesFrom(int first, int last)
    {
        QStringList t;
        for (int i = first; first <= last ? i <= last : i >= last; i += first <= last ? 1 : -1)
            t << u"note %1"_s.arg(i);
        return t;
    }
    int notesOf(qint64 number)
    {
        return db->scalar(u"SELECT count(*) FROM BreedNote WHERE Number = ?"_s, {number}).toInt();
    }

    test::StudFixture fx;
    Database *db = nullptr;
    qint64 doe = 0;
    QString focus;
    const std::function<int(const DiaryEntry &)> oneLine = [](const DiaryEntry &) { return 10; };
};

TEST_F(DiaryTest, PagesHoldFifteenNotesAndGoBackByThePageTable)
{
    const qint64 before = fx.add({{u"Name"_s, u"Acorn"_s}});
    writeNotes(before, 3);
    writeNotes(doe, 40);
    const qint64 after = fx.add({{u"Name"_s, u"Clover"_s}});
    writeNotes(after, 3);
    addNote(*db, doe + 1000, day(50), u"an animal that has gone"_s);

    Diary diary(*db, doe);
    ASSERT_TRUE(diary.showDiary(false));
    EXPECT_EQ(diary.entryCount(), 40);
    EXPECT_EQ(texts(diary.page(oneLine, 1000)), notesFrom(40, 26)) << "newest first";
    EXPECT_EQ(diary.pageNumber(), 1);
    EXPECT_FALSE(diary.canGoBack());
    EXPECT_TRUE(diary.canGoForward());
    diary.forward();
    EXPECT_EQ(texts(diary.page(oneLine, 1000)), notesFrom(25, 11));
    diary.forward();
    EXPECT_EQ(texts(diary.page(oneLine, 1000)), notesFrom(10, 1)) << "the other animals' notes never show";
    EXPECT_FALSE(diary.canGoForward());
    EXPECT_TRUE(diary.canGoBack());
    diary.forward();
    EXPECT_EQ(diary.pageNumber(), 3) << "there is no page after the last";
    diary.backward();
    EXPECT_EQ(texts(diary.page(oneLine, 1000)), notesFrom(25, 11));
    diary.backward();
    EXPECT_EQ(texts(diary.page(oneLine, 1000)), notesFrom(40, 26));
    diary.backward();
    EXPECT_EQ(diary.pageNumber(), 1);

    ASSERT_TRUE(diary.showDiary(true));
    EXPECT_EQ(texts(diary.page(oneLine, 1000)), notesFrom(1, 15)) << "oldest first after a toggle";
    diary.forward();
    diary.page(oneLine, 1000);
    diary.forward();
    EXPECT_EQ(texts(diary.page(oneLine, 1000)), notesFrom(31, 40));
    EXPECT_FALSE(diary.canGoForward());

    // The first and the last animal of the stud: nothing before or after them to stop at.
    Diary first(*db, before);
    ASSERT_TRUE(first.showDiary(false));
    EXPECT_EQ(texts(first.page(oneLine, 1000)), notesFrom(3, 1));
    Diary last(*db, after);
    ASSERT_TRUE(last.showDiary(true));
    EXPECT_EQ(texts(last.page(oneLine, 1000)), notesFrom(1, 3));
}

TEST_F(DiaryTest, HighNotesFillTheFrameSooner)
{
    writeNotes(doe, 16);
    // Notes 14 and 9 are five lines high (50), the others one line (10); the frame is 100.
    const auto height = [](const DiaryEntry &e) {
        return e.notes == u"note 14" || e.notes == u"note 9" ? 50 : 10;
    };
    Diary diary(*db, doe);
    ASSERT_TRUE(diary.showDiary(false));
    EXPECT_EQ(texts(diary.page(height, 100)), notesFrom(16, 11)) << "16, 15, 14 (50), 13, 12, 11 fill 100";
    diary.forward();
    EXPECT_EQ(texts(diary.page(height, 100)), notesFrom(10, 5));
    diary.forward();
    EXPECT_EQ(texts(diary.page(height, 100)), notesFrom(4, 1));
    EXPECT_FALSE(diary.canGoForward());
    diary.backward();
    EXPECT_EQ(texts(diary.page(height, 100)), notesFrom(10, 5)) << "the page begins where it began";

    // A note higher than the frame still has a page of its own.
    ASSERT_TRUE(diary.showDiary(false));
    EXPECT_EQ(texts(diary.page([](const DiaryEntry &) { return 500; }, 100)), QStringList{u"note 16"_s});
    EXPECT_TRUE(diary.canGoForward());

    // Sixteen notes of one line: fifteen on the first page, the sixteenth on the next.
    ASSERT_TRUE(diary.showDiary(false));
    EXPECT_EQ(diary.page(oneLine, 1000).size(), Diary::kRows);
    diary.forward();
    EXPECT_EQ(texts(diary.page(oneLine, 1000)), QStringList{u"note 1"_s});

    // Reading the page again at new heights keeps the chosen note chosen while it stays.
    ASSERT_TRUE(diary.showDiary(false));
    diary.page(oneLine, 1000);
    diary.select(3);
    EXPECT_EQ(texts(diary.relay(height, 100)), notesFrom(16, 11));
    EXPECT_EQ(diary.selectedRow(), 3);
    EXPECT_EQ(texts(diary.relay(oneLine, 1000)), notesFrom(16, 2));
    EXPECT_EQ(diary.selectedRow(), 3);
    diary.select(14);
    EXPECT_EQ(texts(diary.relay(height, 100)), notesFrom(16, 11));
    EXPECT_EQ(diary.selectedRow(), -1) << "note 2 is no longer on the page";
    EXPECT_TRUE(diary.canGoForward());

    // A box is as many lines high as its text, at least one and at most five (a longer note
    // scrolls in its box).
    EXPECT_EQ(Diary::boxLines(0), 1);
    EXPECT_EQ(Diary::boxLines(3), 3);
    EXPECT_EQ(Diary::boxLines(5), 5);
    EXPECT_EQ(Diary::boxLines(20), 5);

    // Fifteen notes exactly make one page.
    const qint64 buck = fx.add({{u"Name"_s, u"Burdock"_s}});
    writeNotes(buck, 15);
    Diary fifteen(*db, buck);
    ASSERT_TRUE(fifteen.showDiary(false));
    EXPECT_EQ(fifteen.page(oneLine, 1000).size(), 15);
    EXPECT_FALSE(fifteen.canGoForward());

    // An animal without a diary.
    const qint64 none = fx.add({{u"Name"_s, u"Empty"_s}});
    Diary empty(*db, none);
    EXPECT_FALSE(empty.showDiary(false));
    EXPECT_EQ(empty.entryCount(), 0);
    EXPECT_TRUE(empty.page(oneLine, 1000).isEmpty());
    EXPECT_FALSE(empty.canGoForward());
    EXPECT_FALSE(empty.canGoBack());
}

TEST_F(DiaryTest, NotesOfOneDayAreKeptApartAndANewDayGivesANewUnique)
{
    const qint64 first = addNote(*db, doe, day(5), u"morning"_s);
    const qint64 second = addNote(*db, doe, day(5), u"evening"_s);
    EXPECT_NE(first, second);
    Diary diary(*db, doe);
    ASSERT_TRUE(diary.showDiary(false));
    EXPECT_EQ(texts(diary.page(oneLine, 1000)), (QStringList{u"evening"_s, u"morning"_s}));
    EXPECT_EQ(diary.rows().at(0).date, day(5));

    // The same day: the note is changed where it is.
    EXPECT_EQ(amendNote(*db, doe, first, day(5), u"early morning"_s), first);
    EXPECT_EQ(findNote(*db, doe, first)->notes, u"early morning");
    // Another day: the note moves and has a new Unique.
    const qint64 moved = amendNote(*db, doe, first, day(9), u"a day later"_s);
    EXPECT_NE(moved, first);
    EXPECT_FALSE(findNote(*db, doe, first));
    EXPECT_EQ(findNote(*db, doe, moved)->date, day(9));
    EXPECT_EQ(notesOf(doe), 2);
    ASSERT_TRUE(diary.showDiary(false));
    EXPECT_EQ(texts(diary.page(oneLine, 1000)), (QStringList{u"a day later"_s, u"evening"_s}));

    EXPECT_FALSE(findNote(*db, doe + 1, moved)) << "a note is found only in its own animal's diary";
    removeNote(*db, moved);
    EXPECT_EQ(notesOf(doe), 1);
}

TEST_F(DiaryTest, OkFillsAndChecksTheDateThenTheTextAndWritesTheNote)
{
    Diary diary(*db, doe);
    const DateSettings &dates = fx.session.Dates;
    test::ScriptedPrompts &prompts = fx.prompts;
    diary.CmdNew_Click();
    EXPECT_TRUE(diary.isNew());

    // A date left blank takes today's; anything typed is left to Ok.
    const QDate today(2024, 2, 11);
    EXPECT_EQ(todayIfBlank(dates, dates.BlankDate, today), u"11/02/2024");
    EXPECT_EQ(todayIfBlank(dates, QString(), today), u"11/02/2024");
    EXPECT_EQ(todayIfBlank(dates, u"05/01/2023"_s, today), u"05/01/2023");
    EXPECT_EQ(todayIfBlank(dates, u"05/__/____"_s, today), u"05/__/____")
        << "a part-typed date is left to Ok";

    // A blank date is reported alone; the text is not looked at.
    EXPECT_FALSE(diary.CmdUpdate_Click(dates, prompts, dates.BlankDate, QString(), &focus));
    EXPECT_EQ(prompts.texts(), QStringList{u"A valid date must be entered"_s});
    EXPECT_EQ(prompts.messages.at(0).icon, Icon::Exclamation);
    EXPECT_EQ(focus, u"BRNDate");
    prompts.messages.clear();
    EXPECT_FALSE(diary.CmdUpdate_Click(dates, prompts, u"  "_s, u"text"_s, &focus));
    EXPECT_EQ(prompts.texts(), QStringList{u"A valid date must be entered"_s});
    prompts.messages.clear();

    // An invalid date: the date check's box first.
    EXPECT_FALSE(diary.CmdUpdate_Click(dates, prompts, u"31/02/2024"_s, u"text"_s, &focus));
    EXPECT_EQ(prompts.texts(),
              (QStringList{u"Date: 31/02/2024 is not valid"_s, u"A valid date must be entered"_s}));
    EXPECT_EQ(prompts.messages.at(0).icon, Icon::Exclamation);
    EXPECT_EQ(focus, u"BRNDate");
    prompts.messages.clear();

    // A text of blanks and line breaks is no text.
    EXPECT_FALSE(diary.CmdUpdate_Click(dates, prompts, u"01/03/2024"_s, u" \n\t "_s, &focus));
    EXPECT_EQ(prompts.texts(), QStringList{u"No Text Entered"_s});
    EXPECT_EQ(prompts.messages.at(0).icon, Icon::Exclamation);
    EXPECT_EQ(focus, u"BrNNotes");
    EXPECT_EQ(notesOf(doe), 0) << "nothing is written while refused";
    prompts.messages.clear();

    EXPECT_TRUE(diary.CmdUpdate_Click(dates, prompts, u"01/03/2024"_s, u"Mated to Jet"_s, &focus));
    EXPECT_TRUE(prompts.messages.isEmpty());
    ASSERT_TRUE(diary.showDiary(false));
    const QList<DiaryEntry> rows = diary.page(oneLine, 1000);
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows.at(0).date, QDate(2024, 3, 1));
    EXPECT_EQ(rows.at(0).notes, u"Mated to Jet");

    // Amend needs a note chosen; then Ok changes that note.
    EXPECT_FALSE(diary.CmdAmend_Click(prompts));
    EXPECT_EQ(prompts.texts(), QStringList{u"Nothing Selected"_s});
    EXPECT_EQ(prompts.messages.at(0).icon, Icon::Information);
    prompts.messages.clear();
    diary.select(0);
    const std::optional<DiaryEntry> taken = diary.CmdAmend_Click(prompts);
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->notes, u"Mated to Jet");
    EXPECT_FALSE(diary.isNew());
    EXPECT_TRUE(
        diary.CmdUpdate_Click(dates, prompts, u"01/03/2024"_s, u"Mated to Jet, second try"_s, &focus));
    EXPECT_EQ(notesOf(doe), 1);
    EXPECT_EQ(findNote(*db, doe, taken->unique)->notes, u"Mated to Jet, second try");

    // A note gone meanwhile is passed over without a word.
    ASSERT_TRUE(diary.showDiary(false));
    diary.page(oneLine, 1000);
    diary.select(0);
    removeNote(*db, taken->unique);
    EXPECT_FALSE(diary.CmdAmend_Click(prompts));
    EXPECT_FALSE(diary.CmdDelete_Click(prompts));
    EXPECT_TRUE(prompts.messages.isEmpty());
}

TEST_F(DiaryTest, DeleteAsksFirst)
{
    addNote(*db, doe, day(1), u"keep"_s);
    Diary diary(*db, doe);
    test::ScriptedPrompts &prompts = fx.prompts;
    ASSERT_TRUE(diary.showDiary(false));
    diary.page(oneLine, 1000);
    EXPECT_FALSE(diary.CmdDelete_Click(prompts));
    EXPECT_EQ(prompts.texts(), QStringList{u"Nothing Selected"_s});
    EXPECT_EQ(prompts.messages.at(0).icon, Icon::Information);
    prompts.messages.clear();

    diary.select(0);
    prompts.answerNo();
    EXPECT_FALSE(diary.CmdDelete_Click(prompts));
    prompts.answer(Prompts::Answer::Cancel);
    EXPECT_FALSE(diary.CmdDelete_Click(prompts));
    EXPECT_EQ(notesOf(doe), 1);
    prompts.answerYes();
    EXPECT_TRUE(diary.CmdDelete_Click(prompts));
    EXPECT_EQ(notesOf(doe), 0);
    ASSERT_EQ(prompts.messages.size(), 3);
    for (const test::ScriptedPrompts::Message &m : prompts.messages) {
        EXPECT_EQ(m.text, u"Delete this entry?");
        EXPECT_EQ(m.title, u"Delete");
        EXPECT_EQ(m.icon, Icon::Question);
        EXPECT_EQ(m.buttons, Prompts::Buttons::YesNoCancel);
    }
    EXPECT_FALSE(diary.showDiary(false));
}

TEST_F(DiaryTest, BulkEntryChecksInOrderAndWritesToThePickedAnimalsInOneChange)
{
    const qint64 buck = fx.add({{u"Name"_s, u"Jet"_s}, {u"Sex"_s, u"Buck"_s}});
    const qint64 kit = fx.add({{u"Name"_s, u"Kit"_s}});
    const DateSettings &dates = fx.session.Dates;
    test::ScriptedPrompts &prompts = fx.prompts;

    // A bad date before an empty text, an empty text before an empty choice.
    EXPECT_FALSE(Bulk_Diary_Entry(*db, dates, prompts, u"32/01/2024"_s, QString(), {}, &focus));
    EXPECT_EQ(prompts.texts(),
              (QStringList{u"Date: 32/01/2024 is not valid"_s, u"A valid date must be entered"_s}));
    EXPECT_EQ(focus, u"BRNDate");
    prompts.messages.clear();
    EXPECT_FALSE(Bulk_Diary_Entry(*db, dates, prompts, dates.BlankDate, u"Wormed"_s, {doe}, &focus));
    EXPECT_EQ(prompts.texts(), QStringList{u"A valid date must be entered"_s});
    prompts.messages.clear();
    EXPECT_FALSE(Bulk_Diary_Entry(*db, dates, prompts, u"01/02/2024"_s, u"  "_s, {}, &focus));
    EXPECT_EQ(prompts.texts(), QStringList{u"No Diary Entry made"_s});
    EXPECT_EQ(prompts.messages.at(0).icon, Icon::Exclamation);
    EXPECT_EQ(focus, u"BrNNotes");
    prompts.messages.clear();
    EXPECT_FALSE(Bulk_Diary_Entry(*db, dates, prompts, u"01/02/2024"_s, u"Wormed"_s, {}, &focus));
    EXPECT_EQ(prompts.texts(), QStringList{u"No animals selected to update"_s});
    EXPECT_EQ(prompts.messages.at(0).icon, Icon::Exclamation);
    EXPECT_TRUE(focus.isEmpty()) << "back to the list";
    prompts.messages.clear();
    EXPECT_EQ(db->scalar(u"SELECT count(*) FROM BreedNote"_s).toInt(), 0);

    EXPECT_TRUE(Bulk_Diary_Entry(*db, dates, prompts, u"01/02/2024"_s, u"Wormed"_s, {doe, kit}, &focus));
    EXPECT_TRUE(prompts.messages.isEmpty());
    for (const qint64 n : {doe, kit}) {
        Diary diary(*db, n);
        ASSERT_TRUE(diary.showDiary(false));
        const QList<DiaryEntry> rows = diary.page(oneLine, 1000);
        ASSERT_EQ(rows.size(), 1);
        EXPECT_EQ(rows.at(0).date, QDate(2024, 2, 1));
        EXPECT_EQ(rows.at(0).notes, u"Wormed");
    }
    EXPECT_EQ(notesOf(buck), 0);

    // A write refused part way leaves every animal as it was.
    db->execute(u"CREATE TEMP TRIGGER RefuseKit BEFORE INSERT ON BreedNote WHEN NEW.Number = %1 "
                u"BEGIN SELECT RAISE(ABORT, 'refused'); END"_s.arg(kit));
    EXPECT_THROW(
        Bulk_Diary_Entry(*db, dates, prompts, u"02/02/2024"_s, u"Weighed"_s, {doe, buck, kit}, &focus),
        StoreError);
    EXPECT_FALSE(db->inTransaction());
    EXPECT_EQ(notesOf(doe), 1);
    EXPECT_EQ(notesOf(buck), 0);
}

TEST_F(DiaryTest, ANoteForManyThousandsTellsItsProgressAndAStopWritesNothing)
{
    QList<qint64> many;
    for (int i = 0; i < 25000; ++i)
        many << doe;
    test::RecordingProgress stopped;
    stopped.cancelAfter = 2; // Cancel pressed once two blocks are written
    EXPECT_THROW(writeBulkDiary(*db, QDate(2024, 2, 1), u"Wormed"_s, many, stopped), StoreError);
    EXPECT_EQ(stopped.total, 25000);
    EXPECT_FALSE(db->inTransaction());
    EXPECT_EQ(notesOf(doe), 0);

    test::RecordingProgress watched;
    writeBulkDiary(*db, QDate(2024, 2, 1), u"Wormed"_s, many, watched);
    EXPECT_EQ(notesOf(doe), 25000);
    ASSERT_FALSE(watched.steps.isEmpty());
    EXPECT_EQ(watched.steps.last().done, 25000);
}

TEST_F(DiaryTest, LongNotesWithQuotesAndForeignLettersSurviveSaveAndReload)
{
    QString text;
    const QString piece = u"Doe's \"best\" litter; Ærø, Zürich, 日本, ½ — "_s;
    while (text.size() < 100000)
        text += piece;
    text.truncate(100000);
    text += u"\nlast line"_s;
    const qint64 unique = addNote(*db, doe, QDate(1999, 12, 31), text);
    const qint64 kit = fx.add({{u"Name"_s, u"Kit"_s}});
    QString focus;
    ASSERT_TRUE(Bulk_Diary_Entry(*db, fx.session.Dates, fx.prompts, u"01/01/2000"_s, text, {kit}, &focus));
    const QString path = db->path();
    fx.session.Stud.reset();

    const std::unique_ptr<Database> again = Database::open(path);
    const std::optional<DiaryEntry> read = findNote(*again, doe, unique);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->notes.size(), text.size());
    EXPECT_TRUE(read->notes == text);
    EXPECT_EQ(read->date, QDate(1999, 12, 31));
    Diary diary(*again, kit);
    ASSERT_TRUE(diary.showDiary(false));
    const QList<DiaryEntry> rows = diary.page(oneLine, 1000);
    ASSERT_EQ(rows.size(), 1);
    EXPECT_TRUE(rows.at(0).notes == text);

    const QString amended = u"'"_s + text + u"\""_s;
    const qint64 same = amendNote(*again, doe, unique, QDate(1999, 12, 31), amended);
    EXPECT_TRUE(findNote(*again, doe, same)->notes == amended);
}

} // namespace
