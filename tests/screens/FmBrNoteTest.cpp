#include "ScreenTestSupport.h"
#include "support/StudFixture.h"

#include "breeding/Diary.h"
#include "breeding/screens/FmBrNote.h"
#include "breeding/screens/FmBulkDiary.h"
#include "store/StudDatabase.h"

#include <QApplication>
#include <QCheckBox>
#include <QFocusEvent>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QListView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QStatusBar>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

class FmBrNoteTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        db = &fx.open();
        doe = fx.add({{u"Name"_s, u"Bramble"_s}, {u"Sex"_s, u"Doe"_s}});
        fx.session.CurrentStockNo = doe;
        fx.session.CurrentStockName = u"Bramble"_s;
        fx.session.clock = &clock;
    }
    static QDate day(int n) { return QDate(2024, 1, 1).addDays(n - 1); }
    void writeNotes(int count, const QString &more = {})
    {
        for (int i = 1; i <= count; ++i)
            addNote(*db, doe, day(i), u"note %1"_s.arg(i) + more);
    }
    static QWidget *row(QWidget &w, const char *kind, int i)
    {
        return child<QWidget>(w, (kind + std::to_string(i)).c_str());
    }
    static QPlainTextEdit *notes(QWidget &w, int i)
    {
        return qobject_cast<QPlainTextEdit *>(row(w, "BrNotes_", i));
    }
    static QString noteText(QWidget &w, int i) { return notes(w, i)->toPlainText(); }
    static QString dateText(QWidget &w, int i)
    {
        return qobject_cast<QLabel *>(row(w, "BrDate_", i))->text();
    }
    static int rowsShown(QWidget &w)
    {
        int shown = 0;
        for (int i = 0; i < Diary::kRows; ++i)
            shown += row(w, "BrPic_", i)->isVisible() ? 1 : 0;
        return shown;
    }
    static bool enabled(QWidget &w, const char *name) { return child<QPushButton>(w, name)->isEnabled(); }
    static void clickRow(QWidget &w, int i)
    {
        QTest::mouseClick(notes(w, i)->viewport(), Qt::LeftButton, {}, QPoint(5, 5));
    }
    static void leave(QWidget &w, const char *name)
    {
        QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
        QApplication::sendEvent(child<QWidget>(w, name), &out);
    }
    int notesOf(qint64 number)
    {
        return db->scalar(u"SELECT count(*) FROM BreedNote WHERE Number = ?"_s, {number}).toInt();
    }

    StudFixture fx;
    Database *db = nullptr;
    qint64 doe = 0;
    struct FixedClock : Clock
    {
        QDateTime now() const override { return QDateTime(QDate(2024, 2, 11), QTime(9, 0)); }
    } clock;
};

TEST_F(FmBrNoteTest, WritesAmendsAndDeletesNotes)
{
    FmBrNote w(fx.session, fx.prompts);
    w.show();
    EXPECT_EQ(w.windowTitle(), u"Diary For Bramble");
    // An empty diary: only New and Back.
    for (const char *name : {"CmdAmend", "CmdDelete", "CmdToggle", "CmdBwd", "CmdFwd"})
        EXPECT_FALSE(enabled(w, name)) << name;
    EXPECT_TRUE(enabled(w, "CmdNew"));
    EXPECT_TRUE(enabled(w, "CmdSchResCancel"));
    EXPECT_EQ(rowsShown(w), 0);
    auto *bar = child<QStatusBar>(w, "SBar");
    EXPECT_TRUE(bar->currentMessage().isEmpty());
    EXPECT_EQ(child<QPushButton>(w, "CmdBwd")->toolTip(), u"Previous diary page ");
    EXPECT_EQ(child<QPushButton>(w, "CmdSchResCancel")->text(), u"&Back");

    // New: the panel takes the place of the pages.
    click(w, "CmdNew");
    auto *panel = child<QGroupBox>(w, "FrmNewAmend");
    EXPECT_TRUE(panel->isVisible());
    EXPECT_EQ(panel->title(), u"Create New Diary Details:");
    EXPECT_TRUE(child<QWidget>(w, "PbNewAmend")->isVisible());
    EXPECT_FALSE(child<QWidget>(w, "FrmBrNote")->isVisible());
    EXPECT_FALSE(child<QWidget>(w, "pbcontrol")->isVisible());
    auto *date = child<QLineEdit>(w, "BRNDate");
    auto *text = child<QPlainTextEdit>(w, "BrNNotes");
    EXPECT_EQ(date->displayText(), fx.session.Dates.BlankDate);
    click(w, "CmdUpdate");
    EXPECT_EQ(fx.prompts.texts(), QStringList{u"A valid date must be entered"_s});
    EXPECT_TRUE(panel->isVisible()) << "a refused note stays on screen";
    fx.prompts.messages.clear();

    // A date left blank takes today's.
    leave(w, "BRNDate");
    EXPECT_EQ(date->displayText(), u"11/02/2024");
    click(w, "CmdUpdate");
    EXPECT_EQ(fx.prompts.texts(), QStringList{u"No Text Entered"_s});
    fx.prompts.messages.clear();
    type(w, "BRNDate", u"05032024"_s);
    QTest::keyClicks(text, u"Litter due, Doe's \"best\""_s);
    click(w, "CmdUpdate");
    EXPECT_TRUE(fx.prompts.messages.isEmpty());
    EXPECT_FALSE(panel->isVisible());
    EXPECT_TRUE(child<QWidget>(w, "FrmBrNote")->isVisible());
    EXPECT_EQ(rowsShown(w), 1);
    EXPECT_EQ(dateText(w, 0), u"05/03/2024");
    EXPECT_EQ(noteText(w, 0), u"Litter due, Doe's \"best\"");
    EXPECT_EQ(bar->currentMessage(), u"If required, click on entry to amend/delete");
    for (const char *name : {"CmdAmend", "CmdDelete", "CmdToggle"})
        EXPECT_TRUE(enabled(w, name)) << name;
    EXPECT_FALSE(enabled(w, "CmdFwd"));
    EXPECT_FALSE(enabled(w, "CmdBwd"));

    // Amend wants a note clicked first.
    click(w, "CmdAmend");
    EXPECT_EQ(fx.prompts.texts(), QStringList{u"Nothing Selected"_s});
    EXPECT_EQ(fx.prompts.messages.at(0).icon, Prompts::Icon::Information);
    fx.prompts.messages.clear();
    addNote(*db, doe, day(1), u"older"_s);
    click(w, "CmdToggle");
    click(w, "CmdToggle");
    ASSERT_EQ(rowsShown(w), 2);
    EXPECT_EQ(noteText(w, 1), u"older");
    clickRow(w, 1);
    EXPECT_EQ(w.diary().selectedRow(), 1);
    EXPECT_EQ(row(w, "BrPic_", 1)->palette().color(QPalette::Window), w.palette().color(QPalette::Highlight))
        << "the chosen note shows it";
    EXPECT_NE(row(w, "BrPic_", 0)->palette().color(QPalette::Window), w.palette().color(QPalette::Highlight));
    click(w, "CmdAmend");
    EXPECT_EQ(panel->title(), u"Amend Diary Details:");
    EXPECT_EQ(date->displayText(), u"01/01/2024");
    EXPECT_EQ(text->toPlainText(), u"older");
    text->setPlainText(u"older, and wiser"_s);
    click(w, "CmdUpdate");
    EXPECT_EQ(noteText(w, 1), u"older, and wiser");
    EXPECT_EQ(notesOf(doe), 2);

    // Cancel leaves the note as it was.
    clickRow(w, 0);
    click(w, "CmdAmend");
    text->setPlainText(u"never saved"_s);
    click(w, "CmdNACancel");
    EXPECT_FALSE(panel->isVisible());
    EXPECT_EQ(noteText(w, 0), u"Litter due, Doe's \"best\"");

    // Delete asks; No keeps the note, chosen.
    QTest::mouseClick(row(w, "BrDate_", 0), Qt::LeftButton);
    fx.prompts.answerNo();
    click(w, "CmdDelete");
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_EQ(fx.prompts.messages.at(0).text, u"Delete this entry?");
    EXPECT_EQ(fx.prompts.messages.at(0).title, u"Delete");
    EXPECT_EQ(fx.prompts.messages.at(0).icon, Prompts::Icon::Question);
    EXPECT_EQ(fx.prompts.messages.at(0).buttons, Prompts::Buttons::YesNoCancel);
    EXPECT_EQ(notesOf(doe), 2);
    EXPECT_EQ(w.diary().selectedRow(), 0);
    fx.prompts.answerYes();
    click(w, "CmdDelete");
    EXPECT_EQ(notesOf(doe), 1);
    EXPECT_EQ(rowsShown(w), 1);
    EXPECT_EQ(noteText(w, 0), u"older, and wiser");
    clickRow(w, 0);
    fx.prompts.answerYes();
    click(w, "CmdDelete");
    EXPECT_EQ(rowsShown(w), 0);
    EXPECT_FALSE(enabled(w, "CmdAmend"));
    EXPECT_TRUE(bar->currentMessage().isEmpty());
    EXPECT_TRUE(fx.prompts.allAnswered());

    click(w, "CmdSchResCancel");
    EXPECT_FALSE(w.isVisible());
}

TEST_F(FmBrNoteTest, PagesForwardBackwardAndInEitherOrder)
{
    writeNotes(40);
    FmBrNote w(fx.session, fx.prompts);
    w.show();
    ASSERT_EQ(rowsShown(w), 15) << "fifteen notes of one line fit the frame";
    EXPECT_EQ(noteText(w, 0), u"note 40");
    EXPECT_EQ(dateText(w, 0), u"09/02/2024");
    EXPECT_EQ(noteText(w, 14), u"note 26");
    EXPECT_TRUE(enabled(w, "CmdFwd"));
    EXPECT_FALSE(enabled(w, "CmdBwd"));
    click(w, "CmdFwd");
    EXPECT_EQ(noteText(w, 0), u"note 25");
    EXPECT_TRUE(enabled(w, "CmdBwd"));
    click(w, "CmdFwd");
    EXPECT_EQ(rowsShown(w), 10);
    EXPECT_EQ(noteText(w, 9), u"note 1");
    EXPECT_FALSE(enabled(w, "CmdFwd"));
    click(w, "CmdBwd");
    EXPECT_EQ(noteText(w, 0), u"note 25");
    EXPECT_EQ(rowsShown(w), 15);

    click(w, "CmdToggle");
    EXPECT_EQ(noteText(w, 0), u"note 1") << "oldest first, from the first page";
    EXPECT_FALSE(enabled(w, "CmdBwd"));
    click(w, "CmdFwd");
    EXPECT_EQ(noteText(w, 0), u"note 16");

    // Each time the diary comes up it is newest first again.
    w.hide();
    w.show();
    EXPECT_EQ(noteText(w, 0), u"note 40");
    EXPECT_FALSE(enabled(w, "CmdBwd"));
}

TEST_F(FmBrNoteTest, BoxesAreAsHighAsTheirTextUpToFiveLines)
{
    QStringList twenty;
    for (int i = 1; i <= 20; ++i)
        twenty << u"line %1"_s.arg(i);
    addNote(*db, doe, day(1), twenty.join(u'\n'));
    addNote(*db, doe, day(2), u"one\ntwo\nthree\nfour\nfive"_s);
    addNote(*db, doe, day(3), u"one\r\ntwo\r\nthree"_s);
    addNote(*db, doe, day(4), u"a single line"_s);
    addNote(*db, doe, day(5), u"lorem "_s.repeated(40).trimmed());
    FmBrNote w(fx.session, fx.prompts);
    w.show();
    ASSERT_EQ(rowsShown(w), 5);
    const int line = QFontMetrics(notes(w, 1)->font()).lineSpacing();
    const auto height = [&](int i) { return notes(w, i)->height(); };
    // A box shows or hides its scroll bar once the events of its new range are handled.
    const auto scrolls = [&](int i) {
        QApplication::processEvents();
        return notes(w, i)->verticalScrollBar()->isVisible();
    };
    EXPECT_EQ(noteText(w, 2), u"one\ntwo\nthree") << "every kind of line break starts a line";
    EXPECT_NEAR(height(2) - height(1), 2 * line, 2);
    EXPECT_NEAR(height(3) - height(1), 4 * line, 2);
    EXPECT_EQ(height(4), height(3)) << "twenty lines show five and scroll";
    EXPECT_FALSE(scrolls(1));
    EXPECT_FALSE(scrolls(2));
    EXPECT_FALSE(scrolls(3));
    EXPECT_TRUE(scrolls(4));
    for (int i = 1; i < 5; ++i)
        EXPECT_EQ(row(w, "BrPic_", i)->y(), row(w, "BrPic_", i - 1)->geometry().bottom() + 3)
            << "stacked, row " << i;

    // A long paragraph wraps at the box's width; a wider window gives it fewer lines.
    const int wrapped = height(0);
    EXPECT_GT(wrapped, height(1));
    EXPECT_FALSE(scrolls(0));
    w.resize(w.width() * 3, w.height());
    EXPECT_LT(height(0), wrapped);
    EXPECT_EQ(height(4), height(3));
    EXPECT_FALSE(scrolls(0));

    // Notes of five lines fill the frame before fifteen are shown.
    for (int i = 10; i < 25; ++i)
        addNote(*db, doe, day(i), u"1\n2\n3\n4\n5"_s);
    w.hide();
    w.show();
    EXPECT_LT(rowsShown(w), 15);
    EXPECT_GT(rowsShown(w), 1);
    EXPECT_TRUE(enabled(w, "CmdFwd"));
}

TEST_F(FmBrNoteTest, BulkEntryWritesToThePickedAnimals)
{
    const qint64 buck = fx.add({{u"Name"_s, u"Jet"_s}, {u"Sex"_s, u"Buck"_s}});
    const qint64 kit = fx.add({{u"Name"_s, u"Kit"_s}, {u"Sex"_s, u"Doe"_s}});
    FmBulkDiary w(fx.session, fx.prompts);
    w.show();
    EXPECT_EQ(w.windowTitle(), u"Diary Entry");
    auto *list = child<QListView>(w, "LstStock");
    QAbstractItemModel *model = list->model();
    ASSERT_EQ(model->rowCount(), 3);
    EXPECT_EQ(model->index(0, 0).data().toString(), u"Jet") << "bucks first, then does, by name";
    EXPECT_EQ(model->index(1, 0).data().toString(), u"Bramble");
    EXPECT_EQ(model->index(2, 0).data().toString(), u"Kit");
    const auto pick = [&](int row) {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualRect(model->index(row, 0)).center());
    };

    // A bad date, then an empty text, then no animal; nothing written and the screen stays.
    click(w, "CmdUpdate");
    leave(w, "BRNDate");
    EXPECT_EQ(child<QLineEdit>(w, "BRNDate")->displayText(), u"11/02/2024");
    click(w, "CmdUpdate");
    child<QPlainTextEdit>(w, "BrNNotes")->setPlainText(u"Wormed"_s);
    click(w, "CmdUpdate");
    EXPECT_EQ(fx.prompts.texts(), (QStringList{u"A valid date must be entered"_s, u"No Diary Entry made"_s,
                                               u"No animals selected to update"_s}));
    EXPECT_TRUE(w.isVisible());
    EXPECT_EQ(db->scalar(u"SELECT count(*) FROM BreedNote"_s).toInt(), 0);
    fx.prompts.messages.clear();

    pick(0);
    pick(2);
    click(w, "CmdUpdate");
    EXPECT_TRUE(fx.prompts.messages.isEmpty());
    EXPECT_FALSE(w.isVisible());
    EXPECT_EQ(w.result(), QDialog::Accepted);
    EXPECT_EQ(notesOf(buck), 1);
    EXPECT_EQ(notesOf(doe), 0);
    EXPECT_EQ(notesOf(kit), 1);
    EXPECT_EQ(db->scalar(u"SELECT Notes FROM BreedNote WHERE Number = ?"_s, {kit}).toString(), u"Wormed");

    // Include All picks every animal, and clears them again.
    FmBulkDiary all(fx.session, fx.prompts);
    all.show();
    auto *allList = child<QListView>(all, "LstStock");
    auto *includeAll = child<QCheckBox>(all, "ChkAllStock");
    EXPECT_EQ(includeAll->text(), u"Include All");
    const auto tick = [&] {
        QTest::mouseClick(includeAll, Qt::LeftButton, {}, QPoint(6, includeAll->height() / 2));
    };
    tick();
    EXPECT_EQ(allList->selectionModel()->selectedRows().size(), 3);
    tick();
    EXPECT_FALSE(allList->selectionModel()->hasSelection());
    tick();
    type(all, "BRNDate", u"12022024"_s);
    child<QPlainTextEdit>(all, "BrNNotes")->setPlainText(u"Weighed"_s);
    click(all, "CmdUpdate");
    EXPECT_FALSE(all.isVisible());
    for (const qint64 n : {buck, doe, kit})
        EXPECT_EQ(db->scalar(u"SELECT count(*) FROM BreedNote WHERE Number = ? AND Notes = 'Weighed'"_s, {n})
                      .toInt(),
                  1);

    // Cancel writes nothing.
    FmBulkDiary cancelled(fx.session, fx.prompts);
    cancelled.show();
    cancelled.findChild<QCheckBox *>(u"ChkAllStock"_s)->click();
    child<QPlainTextEdit>(cancelled, "BrNNotes")->setPlainText(u"Never"_s);
    click(cancelled, "CmdCancel");
    EXPECT_FALSE(cancelled.isVisible());
    EXPECT_EQ(db->scalar(u"SELECT count(*) FROM BreedNote WHERE Notes = 'Never'"_s).toInt(), 0);
    EXPECT_TRUE(fx.prompts.messages.isEmpty());
}

} // namespace
