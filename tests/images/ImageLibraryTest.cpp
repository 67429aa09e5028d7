#include "support/RecordingSurface.h"
#include "support/StudFixture.h"

#include "core/Options.h"
#include "images/DefaultImage.h"
#include "images/ImageLibrary.h"
#include "store/StoreError.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

using Msg = ScriptedPrompts::Message;

/// A box of the picture list, word for word.
void expectBox(const Msg &m, const QString &text, Prompts::Icon icon,
               Prompts::Buttons buttons = Prompts::Buttons::Ok)
{
    EXPECT_EQ(m.text, text);
    EXPECT_EQ(m.title, u"Image List");
    EXPECT_EQ(m.icon, icon);
    EXPECT_EQ(m.buttons, buttons);
}

// Thistle's pictures, beside those of Jet, in a stud of the fixture.
class ImageLibraryTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        db = &fx.open();
        thistle = fx.add({{u"Name"_s, u"Thistle"_s}, {u"Sex"_s, u"Doe"_s}, {u"Archive"_s, u"No"_s}});
        jet = fx.add({{u"Name"_s, u"Jet"_s}, {u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"No"_s}});
    }

    void row(qint64 number, qint64 imageno, const QString &caption, int isDefault = 0)
    {
        db->execute(
            u"INSERT INTO Images (Number, imageno, Caption, Path, \"Default\") VALUES (?, ?, ?, ?, ?)"_s,
            {number, imageno, caption, u"/pictures/"_s + caption + u".jpg"_s, isDefault});
    }

    /// Thistle's rows as "imageno caption default", in number order.
    QStringList rows()
    {
        QStringList out;
        db->eachRow(
            u"SELECT imageno, Caption, \"Default\" FROM Images WHERE Number = ? ORDER BY imageno, rowid"_s,
            {thistle}, [&](const Row &r) {
                out << u"%1 %2 %3"_s.arg(r.number(u"imageno"_s))
                           .arg(r.text(u"Caption"_s))
                           .arg(r.number(u"Default"_s));
            });
        return out;
    }

    ImageLibrary loaded()
    {
        ImageLibrary lib(fx.session, fx.prompts, thistle, u"Thistle"_s);
        lib.Form_Load();
        return lib;
    }

    /// Saves a form as a new entry (amending 0) or over an entry; the focus named on refusal.
    bool save(ImageLibrary &lib, ImageForm form, int amending = 0, QString *focus = nullptr)
    {
        QString named;
        const bool ok = lib.CmdOk_Click(form, amending, &named);
        if (focus)
            *focus = named;
        return ok;
    }

    static ImageForm form(const QString &caption, bool isDefault = false)
    {
        return {caption, {}, u"/pictures/"_s + caption + u".jpg"_s, isDefault};
    }

    static QList<qint64> numbers(const ImageLibrary &lib)
    {
        QList<qint64> out;
        for (const ImageEntry &e : lib.entries())
            out << e.imageno;
        return out;
    }

    StudFixture fx;
    Database *db = nullptr;
    qint64 thistle = 0, jet = 0;
};

TEST_F(ImageLibraryTest, ReadsTheAnimalsOwnEntriesInNumberOrder)
{
    row(thistle, 3, u"Third"_s);
    row(jet, 1, u"Jet's"_s);
    row(thistle, 1, u"First"_s);
    row(thistle, 2, u"Second"_s, -1); // a yes as older files hold it
    row(thistle, 0, u"Unnumbered"_s);
    db->execute(u"UPDATE Images SET Comments = 'Show coat' WHERE Caption = 'First'"_s);

    const ImageLibrary lib = loaded();
    ASSERT_EQ(lib.count(), 3);
    EXPECT_EQ(numbers(lib), (QList<qint64>{1, 2, 3}));
    EXPECT_EQ(lib.entry(1).Caption, u"First");
    EXPECT_EQ(lib.entry(1).Comments, u"Show coat");
    EXPECT_EQ(lib.entry(1).Path, u"/pictures/First.jpg");
    EXPECT_FALSE(lib.entry(1).Default);
    EXPECT_TRUE(lib.entry(2).Default);
    EXPECT_EQ(lib.entry(3).state, LoadState::NotTried) << "nothing is read before it is shown";
}

TEST_F(ImageLibraryTest, ATitleAndAPathAreRequiredAndTheEntryIsKeptTrimmed)
{
    ImageLibrary lib = loaded();
    QString focus;
    EXPECT_FALSE(save(lib, {u"   "_s, u"note"_s, u"/p/a.jpg"_s, false}, 0, &focus));
    EXPECT_EQ(focus, u"TxtCaption");
    EXPECT_FALSE(save(lib, {u"Head"_s, u"note"_s, u"  "_s, false}, 0, &focus));
    EXPECT_EQ(focus, u"TxtPath");
    ASSERT_EQ(fx.prompts.messages.size(), 2);
    expectBox(fx.prompts.messages.at(0), u"A Title must be given"_s, Prompts::Icon::Information);
    expectBox(fx.prompts.messages.at(1), u"An Image Path must be given"_s, Prompts::Icon::Information);
    EXPECT_TRUE(rows().isEmpty());
    EXPECT_EQ(lib.count(), 0);

    ImageForm typed{u"  Head study "_s, u"At eight weeks"_s, u" /p/head.jpg  "_s, false};
    int saved = 0;
    ASSERT_TRUE(lib.CmdOk_Click(typed, 0, &focus, &saved));
    EXPECT_EQ(saved, 1);
    EXPECT_EQ(typed.caption, u"Head study");
    EXPECT_EQ(typed.path, u"/p/head.jpg");
    EXPECT_EQ(rows(), (QStringList{u"1 Head study 0"_s}));
    EXPECT_EQ(db->scalar(u"SELECT Path FROM Images WHERE Number = ?"_s, {thistle}).toString(),
              u"/p/head.jpg");
    EXPECT_EQ(lib.entry(1).Comments, u"At eight weeks");
    // An empty comment is kept as no comment at all.
    ASSERT_TRUE(save(lib, form(u"Side"_s)));
    EXPECT_TRUE(db->scalar(u"SELECT Comments FROM Images WHERE Caption = 'Side'"_s).isNull());
}

TEST_F(ImageLibraryTest, NumbersGoOnFromTheLastEntryAndADeletedOneIsNotGivenOutAgain)
{
    ImageLibrary lib = loaded();
    ASSERT_TRUE(save(lib, form(u"One"_s)));
    ASSERT_TRUE(save(lib, form(u"Two"_s)));
    ASSERT_TRUE(save(lib, form(u"Three"_s)));
    EXPECT_EQ(numbers(lib), (QList<qint64>{1, 2, 3}));

    fx.prompts.answerNo();
    EXPECT_FALSE(lib.CmdDelete_Click(2));
    expectBox(fx.prompts.messages.last(), u"Delete this Entry?"_s, Prompts::Icon::Question,
              Prompts::Buttons::YesNo);
    EXPECT_EQ(rows().size(), 3);

    fx.prompts.answerYes();
    ASSERT_TRUE(lib.CmdDelete_Click(2));
    EXPECT_EQ(numbers(lib), (QList<qint64>{1, 3}));
    EXPECT_EQ(rows(), (QStringList{u"1 One 0"_s, u"3 Three 0"_s}));

    int saved = 0;
    ImageForm four = form(u"Four"_s);
    QString focus;
    ASSERT_TRUE(lib.CmdOk_Click(four, 0, &focus, &saved));
    EXPECT_EQ(saved, 3);
    EXPECT_EQ(numbers(lib), (QList<qint64>{1, 3, 4}));
    // The list read again holds the same.
    EXPECT_EQ(numbers(loaded()), (QList<qint64>{1, 3, 4}));
    EXPECT_TRUE(fx.prompts.allAnswered());
}

TEST_F(ImageLibraryTest, OneDefaultAtATimeAndTheBreederChoosesWhich)
{
    const QString question = u"Another Image is currently Default\r\nMake this one Default instead?"_s;
    ImageLibrary lib = loaded();
    ASSERT_TRUE(save(lib, form(u"Front"_s, true)));
    EXPECT_TRUE(fx.prompts.messages.isEmpty()) << "the first default asks nothing";

    // Yes: the new one takes over.
    fx.prompts.answerYes();
    ASSERT_TRUE(save(lib, form(u"Side"_s, true)));
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    expectBox(fx.prompts.messages.at(0), question, Prompts::Icon::Question, Prompts::Buttons::YesNo);
    EXPECT_EQ(rows(), (QStringList{u"1 Front 0"_s, u"2 Side 1"_s}));
    EXPECT_FALSE(lib.entry(1).Default);
    EXPECT_TRUE(lib.entry(2).Default);
    EXPECT_EQ(GetDefaultImagePath(*db, thistle), u"/pictures/Side.jpg");

    // No: the new one is kept, not as the default.
    fx.prompts.answerNo();
    ImageForm back = form(u"Back"_s, true);
    QString focus;
    ASSERT_TRUE(lib.CmdOk_Click(back, 0, &focus));
    EXPECT_FALSE(back.isDefault) << "the panel shows what was stored";
    EXPECT_EQ(rows(), (QStringList{u"1 Front 0"_s, u"2 Side 1"_s, u"3 Back 0"_s}));
    EXPECT_FALSE(lib.entry(3).Default);

    // The default saved again as the default asks nothing.
    ASSERT_TRUE(save(lib, form(u"Side view"_s, true), 2));
    EXPECT_EQ(fx.prompts.messages.size(), 2);
    EXPECT_EQ(rows(), (QStringList{u"1 Front 0"_s, u"2 Side view 1"_s, u"3 Back 0"_s}));

    // An amended entry made the default.
    fx.prompts.answerYes();
    ASSERT_TRUE(save(lib, form(u"Front"_s, true), 1));
    EXPECT_EQ(rows(), (QStringList{u"1 Front 1"_s, u"2 Side view 0"_s, u"3 Back 0"_s}));
    EXPECT_TRUE(lib.entry(1).Default);
    EXPECT_FALSE(lib.entry(2).Default);

    // Deleting the default leaves the animal without one: its sheet prints no picture.
    fx.prompts.answerYes();
    ASSERT_TRUE(lib.CmdDelete_Click(1));
    EXPECT_EQ(GetDefaultImagePath(*db, thistle), QString());
    EXPECT_TRUE(fx.prompts.allAnswered());
}

TEST_F(ImageLibraryTest, AnEntryWhoseRowHasGoneIsNeitherWrittenNorDeleted)
{
    row(thistle, 1, u"Front"_s, 1);
    row(thistle, 2, u"Side"_s);
    ImageLibrary lib = loaded();
    db->execute(u"DELETE FROM Images WHERE Caption = 'Side'"_s);

    // Made the default with Yes, then found gone: the other default is kept too.
    fx.prompts.answerYes();
    QString focus = u"unchanged"_s;
    EXPECT_FALSE(save(lib, form(u"Side again"_s, true), 2, &focus));
    EXPECT_EQ(focus, QString());
    expectBox(fx.prompts.messages.last(), u"Image Details Lost - Arghh"_s, Prompts::Icon::Exclamation);
    EXPECT_EQ(rows(), (QStringList{u"1 Front 1"_s}));
    EXPECT_TRUE(lib.entry(1).Default);
    EXPECT_EQ(lib.entry(2).Caption, u"Side");

    fx.prompts.answerYes();
    EXPECT_FALSE(lib.CmdDelete_Click(2));
    EXPECT_EQ(fx.prompts.messages.last().text, u"Image Details Lost - Arghh");
    EXPECT_EQ(lib.count(), 2);
    EXPECT_TRUE(fx.prompts.allAnswered());
}

TEST_F(ImageLibraryTest, AWriteThatFailsTakesTheWholeSaveBack)
{
    row(thistle, 1, u"Front"_s, 1);
    ImageLibrary lib = loaded();
    db->execute(
        u"CREATE TRIGGER refuse BEFORE INSERT ON Images BEGIN SELECT RAISE(ABORT, 'disk full'); END"_s);
    fx.prompts.answerYes();
    ImageForm side = form(u"Side"_s, true);
    QString focus;
    EXPECT_THROW(lib.CmdOk_Click(side, 0, &focus), StoreError);
    EXPECT_FALSE(db->inTransaction());
    EXPECT_EQ(rows(), (QStringList{u"1 Front 1"_s})) << "the default given up comes back";
    EXPECT_EQ(lib.count(), 1);
    EXPECT_TRUE(lib.entry(1).Default);
}

TEST_F(ImageLibraryTest, TheImageFolderIsTheSettingOrTheStudsOwnFolder)
{
    const ImageFolder own = GetImageFolder(fx.session);
    EXPECT_EQ(own.path, fx.session.DataFolder + u"Rabbits Images"_s);
    EXPECT_TRUE(own.defaultUsed);
    EXPECT_FALSE(QFileInfo::exists(own.path));
    EXPECT_EQ(PrepareImageFolder(fx.session).path, own.path);
    EXPECT_TRUE(QFileInfo(own.path).isDir()) << "made for the chooser to start in";

    QTemporaryDir dir;
    const QString chosen = dir.filePath(u"Show photos"_s);
    Options(fx.session).set(Opt::DefaultImageFolder, chosen);
    const ImageFolder set = GetImageFolder(fx.session);
    EXPECT_EQ(set.path, chosen);
    EXPECT_FALSE(set.defaultUsed);
    PrepareImageFolder(fx.session);
    EXPECT_TRUE(QFileInfo(chosen).isDir());
}

TEST_F(ImageLibraryTest, AChosenFileThatIsNoPictureIsToldApart)
{
    ImageLibrary lib = loaded();
    EXPECT_TRUE(lib.TryImage(PictureFound::Picture));
    EXPECT_TRUE(fx.prompts.messages.isEmpty());
    EXPECT_FALSE(lib.TryImage(PictureFound::Missing));
    EXPECT_FALSE(lib.TryImage(PictureFound::NotAPicture));
    ASSERT_EQ(fx.prompts.messages.size(), 2);
    expectBox(fx.prompts.messages.at(0), u"Image Does not Exist"_s, Prompts::Icon::Exclamation);
    expectBox(fx.prompts.messages.at(1), u"Invalid Image Format"_s, Prompts::Icon::Exclamation);
}

TEST(ImageSlots, APictureIsFittedInProportionNeverEnlargedAndCentred)
{
    const QSize slot(280, 200);
    // Smaller both ways: its own size, centred.
    EXPECT_EQ(fitPicture({100, 50}, slot), QRect(90, 75, 100, 50));
    // Wide: the width fills the slot.
    EXPECT_EQ(fitPicture({6000, 2000}, slot), QRect(0, 53, 280, 93));
    // Tall: the height fills the slot.
    EXPECT_EQ(fitPicture({1000, 4000}, slot), QRect(115, 0, 50, 200));
    // Larger one way only: scaled by that way.
    EXPECT_EQ(fitPicture({140, 400}, slot), QRect(105, 0, 70, 200));
    EXPECT_EQ(fitPicture({560, 100}, slot), QRect(0, 75, 280, 50));
    // A camera's picture in proportion.
    EXPECT_EQ(fitPicture({6000, 4000}, slot), QRect(0, 6, 280, 187));
    EXPECT_EQ(fitPicture({280, 200}, slot), QRect(0, 0, 280, 200));
    // A sliver never vanishes, nothing is placed in no room.
    EXPECT_EQ(fitPicture({10000, 3}, slot).height(), 1);
    EXPECT_TRUE(fitPicture({}, slot).isEmpty());
    EXPECT_TRUE(fitPicture({100, 100}, {0, 0}).isEmpty());
}

TEST(ImageSlots, TheScrollBarShowsTheLastTwoAtItsEndAndAnEmptyListOffersOnlyNew)
{
    const auto maximum = [](int entries) { return scrollRange(entries).maximum; };
    EXPECT_EQ(scrollRange(0).minimum, 1);
    EXPECT_EQ(maximum(0), 1);
    EXPECT_EQ(maximum(1), 1);
    EXPECT_EQ(maximum(2), 1);
    EXPECT_EQ(maximum(3), 2);
    EXPECT_EQ(maximum(50), 49);
    EXPECT_EQ(scrollRange(50).minimum, 1);

    EXPECT_EQ(slotEntry(1, 0, 3), 1);
    EXPECT_EQ(slotEntry(1, 1, 3), 2);
    EXPECT_EQ(slotEntry(2, 1, 3), 3);
    EXPECT_EQ(slotEntry(1, 1, 1), 0) << "one entry leaves the second slot empty";
    EXPECT_EQ(slotEntry(1, 0, 0), 0);

    const ListButtons none = listButtons(0);
    EXPECT_TRUE(none.newOn);
    EXPECT_FALSE(none.selectOn || none.printAllOn || none.scrollOn);
    const ListButtons two = listButtons(2);
    EXPECT_TRUE(two.newOn && two.selectOn && two.printAllOn);
    EXPECT_FALSE(two.scrollOn) << "both are in view";
    EXPECT_TRUE(listButtons(3).scrollOn);
}

TEST(ImagePrint, EachPictureHasAPageUnderTheHeadingAndAMissingOneLeavesAGap)
{
    RecordingSurface page;
    page.pictures.insert(u"/p/front.jpg"_s, QSizeF(6000 * 15.0, 4000 * 15.0));
    page.pictures.insert(u"/p/tall.png"_s, QSizeF(500 * 15.0, 4000 * 15.0));
    QList<ImageEntry> entries(3);
    entries[0].Caption = u"Front view"_s;
    entries[0].Path = u"/p/front.jpg"_s;
    entries[1].Caption = u"Gone astray"_s;
    entries[1].Path = u"/p/missing.jpg"_s;
    entries[2].Caption = u"Standing"_s;
    entries[2].Path = u"/p/tall.png"_s;
    ASSERT_TRUE(printImages(page, u"Warren End"_s, u"Thistle"_s, entries));
    EXPECT_EQ(page.fontName, u"Arial");

    // The pages, each begun by the stud's title.
    QList<QList<RecordingSurface::Op>> pages;
    for (const RecordingSurface::Op &op : page.ops) {
        if (op.kind == RecordingSurface::Op::Text && op.text == u"Warren End")
            pages.emplaceBack();
        if (!pages.isEmpty() && op.kind != RecordingSurface::Op::End)
            pages.last().append(op);
    }
    ASSERT_EQ(pages.size(), 3);
    EXPECT_EQ(page.ops.last().kind, RecordingSurface::Op::End);
    EXPECT_EQ(page.find(u"Continued"_s), nullptr) << "each picture is a page of its own";

    page.setFontSize(14);
    const double belowHeading = 18 + page.textHeight(u"X"_s);
    page.setFontSize(12);
    const double captionHeight = page.textHeight(u"X"_s);
    const QString captions[] = {u"Front view"_s, u"Gone astray"_s, u"Standing"_s};
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE(i);
        const QList<RecordingSurface::Op> &ops = pages.at(i);
        QStringList texts;
        for (const auto &op : ops)
            if (op.kind == RecordingSurface::Op::Text)
                texts << op.text;
        EXPECT_EQ(texts, (QStringList{u"Warren End"_s, u"Name"_s, u"Thistle"_s, captions[i]}));
        const RecordingSurface::Op &caption = ops.at(ops.size() - 1 - (i == 1 ? 0 : 2));
        ASSERT_EQ(caption.text, captions[i]);
        EXPECT_DOUBLE_EQ(caption.x, 2);
        EXPECT_DOUBLE_EQ(caption.y, belowHeading + 1);
        EXPECT_TRUE(caption.bold);
        EXPECT_FALSE(caption.italic);
        EXPECT_DOUBLE_EQ(caption.size, 12);
        EXPECT_EQ(caption.scaleWidth, 200);
    }
    // The camera's picture across the page less 25, centred, under its caption, and a rule.
    const RecordingSurface::Op &front = pages.at(0).at(pages.at(0).size() - 2);
    ASSERT_EQ(front.kind, RecordingSurface::Op::Picture);
    EXPECT_EQ(front.text, u"/p/front.jpg");
    EXPECT_DOUBLE_EQ(front.x, 12.5);
    EXPECT_DOUBLE_EQ(front.x2, 175);
    EXPECT_DOUBLE_EQ(front.y, belowHeading + 1 + captionHeight + 1);
    EXPECT_EQ(pages.at(0).last().kind, RecordingSurface::Op::Line);
    // The missing picture: its caption and nothing under it.
    for (const auto &op : pages.at(1))
        EXPECT_NE(op.kind, RecordingSurface::Op::Picture);
    // The tall one is held to the page and centred.
    const RecordingSurface::Op &tall = pages.at(2).at(pages.at(2).size() - 2);
    ASSERT_EQ(tall.kind, RecordingSurface::Op::Picture);
    EXPECT_LE(tall.y + tall.y2, 278.0001);
    EXPECT_NEAR(tall.x + tall.x2 / 2, 100, 1e-9);

    RecordingSurface empty;
    EXPECT_FALSE(printImages(empty, u"Warren End"_s, u"Thistle"_s, {}));
    ASSERT_EQ(empty.ops.size(), 1);
    EXPECT_EQ(empty.ops.at(0).kind, RecordingSurface::Op::Kill);
}

} // namespace
