#include "ScreenTestSupport.h"
#include "support/PdfWords.h"
#include "support/StudFixture.h"

#include "images/screens/FmImages.h"
#include "ui/FileChooser.h"
#include "platform/PictureReader.h"
#include "store/StudDatabase.h"

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QFileInfo>
#include <QFrame>
#include <QImage>
#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

/// The number of pictures on each page of a PDF, by pdfimages; empty when it is not installed.
std::map<int, int> picturesByPage(const QString &file)
{
    std::map<int, int> pages;
    const QString tool = QStandardPaths::findExecutable(u"pdfimages"_s);
    if (tool.isEmpty())
        return pages;
    QProcess lister;
    lister.start(tool, {u"-list"_s, file});
    if (!lister.waitForFinished(60000))
        return pages;
    const QStringList lines = QString::fromUtf8(lister.readAllStandardOutput()).split(u'\n');
    for (const QString &line : lines.mid(2)) {
        const QStringList fields = line.simplified().split(u' ');
        // A picture's transparency is listed apart, as a mask or soft mask of its own.
        if (fields.size() > 2 && fields.at(2) == u"image")
            ++pages[fields.at(0).toInt()];
    }
    return pages;
}

class FmImagesTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fx.open();
        thistle = fx.add({{u"Name"_s, u"Thistle"_s}, {u"Sex"_s, u"Doe"_s}, {u"Archive"_s, u"No"_s}});
        FileChooser::setHook([this](QWidget *, const FileChooser::Request &request) {
            asked << request.title << request.start << request.filters.join(u";;"_s);
            return FileChooser::Answer{chosen, {}};
        });
    }
    void TearDown() override { FileChooser::setHook({}); }

    /// A picture file of that size in the test's folder: a plain colour with a dark band
    /// across its middle.
    QString picture(const QString &name, const QSize &size, const char *format)
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(QColor(0x60, 0x90, 0xc0));
        QPainter(&image).fillRect(0, size.height() / 3, size.width(), size.height() / 3,
                                  QColor(0x30, 0x30, 0x30));
        const QString path = dir.filePath(name);
        EXPECT_TRUE(image.save(path, format)) << name.toStdString();
        return path;
    }

    /// A file that is no picture at all, named as one.
    QString textFile(const QString &name)
    {
        const QString path = dir.filePath(name);
        QFile f(path);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("Thistle: show results 2024\n");
        return path;
    }

    void row(qint64 imageno, const QString &caption, const QString &path, bool isDefault = false)
    {
        fx.session.Stud->handle().execute(
            u"INSERT INTO Images (Number, imageno, Caption, Path, \"Default\") VALUES (?, ?, ?, ?, ?)"_s,
            {thistle, imageno, caption, path, isDefault ? 1 : 0});
    }

    /// The window shown and active, so that the focus moves as a person moves it.
    std::unique_ptr<FmImages> open()
    {
        auto w = std::make_unique<FmImages>(fx.session, fx.prompts, thistle, u"Thistle"_s);
        w->show();
        QApplication::setActiveWindow(w.get());
        return w;
    }

    static bool shows(QWidget &w, const char *name) { return child<QWidget>(w, name)->isVisible(); }
    static bool enabled(QWidget &w, const char *name) { return child<QWidget>(w, name)->isEnabled(); }
    /// What a label shows, whole: a long text shown shortened is whole in its tip.
    static QString whole(QWidget &w, const char *name)
    {
        auto *l = child<QLabel>(w, name);
        return l->toolTip().isEmpty() ? l->text() : l->toolTip();
    }
    static qint64 shownKey(QWidget &w, const char *name)
    {
        return child<QLabel>(w, name)->pixmap().cacheKey();
    }
    /// Whether a picture stands in the middle of its box, to the pixel an odd room leaves over.
    static void expectCentred(const QWidget *picture, const QFrame *box)
    {
        const QPoint off = picture->geometry().center() - box->contentsRect().center();
        EXPECT_LE(std::abs(off.x()), 1) << off.x();
        EXPECT_LE(std::abs(off.y()), 1) << off.y();
    }

    StudFixture fx;
    QTemporaryDir dir;
    qint64 thistle = 0;
    QString chosen;
    QStringList asked;
};

TEST_F(FmImagesTest, AnEmptyListOffersOnlyANewEntry)
{
    const auto w = open();
    EXPECT_EQ(w->windowTitle(), u"Image List");
    EXPECT_TRUE(enabled(*w, "cmdNew"));
    EXPECT_FALSE(enabled(*w, "cmdPrintAll"));
    EXPECT_FALSE(enabled(*w, "CmdSelect"));
    EXPECT_FALSE(enabled(*w, "HsView"));
    EXPECT_TRUE(enabled(*w, "CmdFormCancel")) << "the window can still be closed";
    EXPECT_FALSE(shows(*w, "Pcholder_0"));
    EXPECT_FALSE(shows(*w, "Pcholder_1"));
    EXPECT_TRUE(shows(*w, "pbcontrol"));
    EXPECT_FALSE(shows(*w, "frImgDets"));
    EXPECT_FALSE(shows(*w, "pbNotFound"));
}

TEST_F(FmImagesTest, APictureIsChosenAndWhatIsNoPictureIsRefusedKeepingThePath)
{
    const QString front = picture(u"front.png"_s, {120, 80}, "PNG");
    const QString notes = textFile(u"notes.jpg"_s);
    const QString gone = dir.filePath(u"gone.jpg"_s);
    const auto w = open();
    click(*w, "cmdNew");
    EXPECT_TRUE(shows(*w, "pbMaint"));
    EXPECT_FALSE(shows(*w, "HsView"));
    EXPECT_FALSE(enabled(*w, "cmdNew"));

    // The chooser starts in the stud's picture folder, made for it.
    chosen = gone;
    click(*w, "CmdBrowse");
    ASSERT_EQ(asked.size(), 3);
    EXPECT_EQ(asked.at(0), u"Find Image");
    EXPECT_EQ(asked.at(1), fx.session.DataFolder + u"Rabbits Images"_s);
    EXPECT_TRUE(QFileInfo(asked.at(1)).isDir());
    EXPECT_TRUE(asked.at(2).startsWith(u"Images ("_s)) << asked.at(2).toStdString();
    for (const QString &pattern : {u"*.jpg"_s, u"*.jpeg"_s, u"*.png"_s, u"*.bmp"_s, u"*.gif"_s, u"*.JPG"_s})
        EXPECT_TRUE(asked.at(2).contains(pattern)) << pattern.toStdString();
    EXPECT_EQ(child<QLineEdit>(*w, "TxtPath")->text(), QString());

    chosen = notes;
    click(*w, "CmdBrowse");
    EXPECT_EQ(child<QLineEdit>(*w, "TxtPath")->text(), QString());

    chosen = front;
    click(*w, "CmdBrowse");
    EXPECT_EQ(child<QLineEdit>(*w, "TxtPath")->text(), front);
    auto *chosenPicture = child<QLabel>(*w, "imgSel");
    EXPECT_EQ(chosenPicture->pixmap().size(), QSize(120, 80)) << "small pictures are not enlarged";
    EXPECT_TRUE(chosenPicture->isVisible());

    // A refused file leaves the path chosen before.
    chosen = gone;
    click(*w, "CmdBrowse");
    EXPECT_EQ(child<QLineEdit>(*w, "TxtPath")->text(), front);
    // Cancelling the chooser changes nothing.
    chosen.clear();
    click(*w, "CmdBrowse");
    EXPECT_EQ(child<QLineEdit>(*w, "TxtPath")->text(), front);

    for (const auto &m : fx.prompts.messages)
        EXPECT_TRUE(m.title == u"Image List" && m.icon == Prompts::Icon::Exclamation);
    EXPECT_EQ(fx.prompts.texts(),
              (QStringList{u"Image Does not Exist"_s, u"Invalid Image Format"_s, u"Image Does not Exist"_s}));

    // No title: refused, and everything typed stays on the screen.
    type(*w, "TxtComments", u"At eight weeks"_s);
    click(*w, "CmdOk");
    EXPECT_EQ(fx.prompts.texts().last(), u"A Title must be given");
    EXPECT_TRUE(shows(*w, "frImgDets"));
    EXPECT_EQ(child<QLineEdit>(*w, "TxtComments")->text(), u"At eight weeks");
    EXPECT_EQ(child<QLineEdit>(*w, "TxtPath")->text(), front);
    EXPECT_EQ(QApplication::focusWidget(), child<QWidget>(*w, "TxtCaption"));
    EXPECT_EQ(fx.session.Stud->handle().scalar(u"SELECT COUNT(*) FROM Images"_s).toInt(), 0);

    type(*w, "TxtCaption", u"Front view"_s);
    click(*w, "CmdOk");
    EXPECT_FALSE(shows(*w, "frImgDets"));
    EXPECT_TRUE(shows(*w, "Pcholder_0"));
    EXPECT_FALSE(shows(*w, "Pcholder_1"));
    EXPECT_EQ(child<QLabel>(*w, "lblcaption_0")->text(), u"Front view");
    EXPECT_EQ(child<QLabel>(*w, "lblcomments_0")->text(), u"At eight weeks");
    EXPECT_EQ(whole(*w, "lblpath_0"), front);
    EXPECT_FALSE(shows(*w, "LblDefault_0"));
    EXPECT_EQ(child<QLabel>(*w, "imgpic_0")->pixmap().size(), QSize(120, 80));
    EXPECT_TRUE(enabled(*w, "cmdPrintAll"));
    EXPECT_TRUE(enabled(*w, "CmdSelect"));
    EXPECT_EQ(fx.session.Stud->handle().scalar(u"SELECT Path FROM Images WHERE Number = ? AND imageno = 1"_s,
                                               {thistle}),
              front);
}

TEST_F(FmImagesTest, APathTypedInIsTriedWhenLeftAndAGoodOneIsKept)
{
    const QString side = picture(u"side.jpg"_s, {90, 60}, "JPEG");
    const auto w = open();
    click(*w, "cmdNew");
    auto *path = child<QLineEdit>(*w, "TxtPath");
    path->setFocus();
    QTest::keyClicks(path, dir.filePath(u"nowhere.jpg"_s));
    child<QLineEdit>(*w, "TxtCaption")->setFocus();
    EXPECT_EQ(fx.prompts.texts(), (QStringList{u"Image Does not Exist"_s}));
    EXPECT_EQ(path->text(), QString());

    path->setFocus();
    QTest::keyClicks(path, u"  "_s + side + u" "_s);
    child<QLineEdit>(*w, "TxtComments")->setFocus();
    EXPECT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_EQ(path->text(), side) << "trimmed";
    EXPECT_EQ(child<QLabel>(*w, "imgSel")->pixmap().size(), QSize(90, 60));

    // Leaving for Cancel tries nothing; Cancel gives the new entry up.
    path->setFocus();
    QTest::keyClicks(path, u"x"_s);
    click(*w, "CmdMaintCancel");
    EXPECT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_TRUE(shows(*w, "pbcontrol"));
    EXPECT_EQ(fx.session.Stud->handle().scalar(u"SELECT COUNT(*) FROM Images"_s).toInt(), 0);
}

TEST_F(FmImagesTest, OneEntryIsMarkedAsTheDefaultPrintImage)
{
    row(1, u"Front"_s, picture(u"front.png"_s, {60, 40}, "PNG"), true);
    row(2, u"Side"_s, picture(u"side.png"_s, {60, 40}, "PNG"));
    const auto w = open();
    EXPECT_TRUE(shows(*w, "LblDefault_0"));
    EXPECT_FALSE(shows(*w, "LblDefault_1"));
    EXPECT_EQ(child<QFrame>(*w, "Pcholder_0")->backgroundRole(), QPalette::Highlight) << "the first in view";

    // A click on any part of a slot marks it; Select shows that entry alone.
    QTest::mouseClick(child<QLabel>(*w, "lblcomments_1"), Qt::LeftButton);
    EXPECT_EQ(child<QFrame>(*w, "Pcholder_1")->backgroundRole(), QPalette::Highlight);
    EXPECT_EQ(child<QFrame>(*w, "Pcholder_0")->backgroundRole(), QPalette::Window);
    click(*w, "CmdSelect");
    EXPECT_TRUE(shows(*w, "pbupdate"));
    EXPECT_FALSE(shows(*w, "pbMaint"));
    EXPECT_EQ(child<QLineEdit>(*w, "TxtCaption")->text(), u"Side");
    EXPECT_TRUE(child<QLineEdit>(*w, "TxtCaption")->isReadOnly());
    EXPECT_FALSE(enabled(*w, "ChkDefault"));
    EXPECT_FALSE(child<QCheckBox>(*w, "ChkDefault")->isChecked());

    click(*w, "cmdUpdate");
    EXPECT_TRUE(shows(*w, "pbMaint"));
    EXPECT_FALSE(child<QLineEdit>(*w, "TxtCaption")->isReadOnly());
    child<QCheckBox>(*w, "ChkDefault")->setChecked(true);
    fx.prompts.answerYes();
    click(*w, "CmdOk");
    EXPECT_EQ(fx.prompts.texts(),
              (QStringList{u"Another Image is currently Default\r\nMake this one Default instead?"_s}));
    EXPECT_FALSE(shows(*w, "LblDefault_0"));
    EXPECT_TRUE(shows(*w, "LblDefault_1"));
    EXPECT_EQ(child<QFrame>(*w, "Pcholder_1")->backgroundRole(), QPalette::Highlight) << "the entry saved";
    EXPECT_EQ(
        fx.session.Stud->handle()
            .scalar(u"SELECT group_concat(imageno || ':' || \"Default\") FROM Images WHERE Number = ?"_s,
                    {thistle})
            .toString(),
        u"1:0,2:1");

    // A double click on a slot opens its entry; Cancel of a change brings it back as saved.
    QTest::mouseDClick(child<QWidget>(*w, "PicCentre_0"), Qt::LeftButton);
    EXPECT_TRUE(shows(*w, "pbupdate"));
    EXPECT_EQ(child<QLineEdit>(*w, "TxtCaption")->text(), u"Front");
    click(*w, "cmdUpdate");
    type(*w, "TxtCaption", u"Front, changed"_s);
    click(*w, "CmdMaintCancel");
    EXPECT_TRUE(shows(*w, "pbupdate"));
    EXPECT_EQ(child<QLineEdit>(*w, "TxtCaption")->text(), u"Front");
    // Escape does the same from the details, then goes back to the list; the window stays.
    click(*w, "cmdUpdate");
    type(*w, "TxtCaption", u"Front, changed"_s);
    QTest::keyClick(w.get(), Qt::Key_Escape);
    EXPECT_EQ(child<QLineEdit>(*w, "TxtCaption")->text(), u"Front");
    QTest::keyClick(w.get(), Qt::Key_Escape);
    EXPECT_TRUE(shows(*w, "pbcontrol"));
    EXPECT_TRUE(w->isVisible());
    EXPECT_EQ(child<QLabel>(*w, "lblcaption_0")->text(), u"Front");
    EXPECT_TRUE(fx.prompts.allAnswered());
}

TEST_F(FmImagesTest, DeletingAnEntryLeavesItsFileOnDisk)
{
    const QString front = picture(u"front.png"_s, {60, 40}, "PNG");
    row(1, u"Front"_s, front);
    row(2, u"Side"_s, picture(u"side.png"_s, {60, 40}, "PNG"));
    const auto w = open();
    click(*w, "CmdSelect");
    fx.prompts.answerNo();
    click(*w, "cmdDelete");
    EXPECT_EQ(fx.prompts.texts(), (QStringList{u"Delete this Entry?"_s}));
    EXPECT_TRUE(shows(*w, "pbupdate")) << "kept";
    EXPECT_EQ(w->library().count(), 2);

    fx.prompts.answerYes();
    click(*w, "cmdDelete");
    EXPECT_TRUE(shows(*w, "pbcontrol"));
    EXPECT_EQ(w->library().count(), 1);
    EXPECT_EQ(child<QLabel>(*w, "lblcaption_0")->text(), u"Side");
    EXPECT_FALSE(shows(*w, "Pcholder_1"));
    EXPECT_TRUE(QFileInfo::exists(front));
    EXPECT_EQ(fx.session.Stud->handle()
                  .scalar(u"SELECT COUNT(*) FROM Images WHERE Number = ?"_s, {thistle})
                  .toInt(),
              1);
}

TEST_F(FmImagesTest, ScrollingShowsTheNextPairAndReadsEachPictureOnce)
{
    QStringList files;
    for (int i = 1; i <= 5; ++i) {
        files << picture(u"p%1.png"_s.arg(i), {50 + i, 40}, "PNG");
        row(i, u"Picture %1"_s.arg(i), files.last());
    }
    const auto w = open();
    const ImageLibrary &lib = w->library();
    auto *bar = child<QScrollBar>(*w, "HsView");
    EXPECT_TRUE(bar->isEnabled());
    EXPECT_EQ(bar->minimum(), 1);
    EXPECT_EQ(bar->maximum(), 4);
    EXPECT_EQ(bar->value(), 1);
    EXPECT_EQ(child<QLabel>(*w, "lblcaption_0")->text(), u"Picture 1");
    EXPECT_EQ(child<QLabel>(*w, "lblcaption_1")->text(), u"Picture 2");
    const auto states = [&] {
        QList<LoadState> s;
        for (const ImageEntry &e : lib.entries())
            s << e.state;
        return s;
    };
    using enum LoadState;
    EXPECT_EQ(states(), (QList<LoadState>{Loaded, Loaded, NotTried, NotTried, NotTried}));

    bar->setValue(3);
    EXPECT_EQ(child<QLabel>(*w, "lblcaption_0")->text(), u"Picture 3");
    EXPECT_EQ(child<QLabel>(*w, "lblcaption_1")->text(), u"Picture 4");
    EXPECT_EQ(child<QLabel>(*w, "imgpic_1")->pixmap().width(), 54);
    EXPECT_EQ(states(), (QList<LoadState>{Loaded, Loaded, Loaded, Loaded, NotTried}));
    EXPECT_EQ(child<QFrame>(*w, "Pcholder_0")->backgroundRole(), QPalette::Highlight);

    // The first picture's file goes: it was read on this visit and still shows.
    ASSERT_TRUE(QFile::remove(files.first()));
    bar->setValue(1);
    EXPECT_EQ(child<QLabel>(*w, "imgpic_0")->pixmap().width(), 51);
    EXPECT_NE(shownKey(*w, "imgpic_0"), shownKey(*w, "pbNotFound"));

    bar->setValue(bar->maximum());
    EXPECT_EQ(child<QLabel>(*w, "lblcaption_0")->text(), u"Picture 4");
    EXPECT_EQ(child<QLabel>(*w, "lblcaption_1")->text(), u"Picture 5");
    EXPECT_EQ(states().last(), Loaded);
    EXPECT_TRUE(fx.prompts.messages.isEmpty());
}

TEST_F(FmImagesTest, AFileThatIsGoneOrNoPictureShowsTheStandByPicture)
{
    row(1, u"Gone"_s, dir.filePath(u"gone.jpg"_s));
    row(2, u"Notes"_s, textFile(u"notes.jpg"_s));
    row(3, u"Real"_s, picture(u"real.png"_s, {60, 40}, "PNG"));
    const auto w = open();
    const qint64 standBy = shownKey(*w, "pbNotFound");
    EXPECT_EQ(shownKey(*w, "imgpic_0"), standBy);
    EXPECT_EQ(shownKey(*w, "imgpic_1"), standBy);
    EXPECT_EQ(w->library().entry(1).state, LoadState::Failed);
    EXPECT_EQ(w->library().entry(2).state, LoadState::Failed);
    EXPECT_EQ(child<QLabel>(*w, "lblcaption_0")->text(), u"Gone") << "the entry stays";
    EXPECT_TRUE(fx.prompts.messages.isEmpty()) << "the list says nothing of it";
    // The stand-by picture is centred in the slot at its own size.
    expectCentred(child<QLabel>(*w, "imgpic_0"), child<QFrame>(*w, "PicCentre_0"));
    EXPECT_EQ(child<QLabel>(*w, "imgpic_0")->size(), QSize(160, 120));

    child<QScrollBar>(*w, "HsView")->setValue(2);
    EXPECT_NE(shownKey(*w, "imgpic_1"), standBy);
    // Selected, it shows the stand-by picture too, and prints as a gap.
    click(*w, "CmdSelect");
    EXPECT_EQ(child<QLineEdit>(*w, "TxtCaption")->text(), u"Notes");
    EXPECT_EQ(shownKey(*w, "imgSel"), standBy);
}

TEST_F(FmImagesTest, PicturesAreFittedToTheirSlotAndNotReadAtFullSize)
{
    row(1, u"Small"_s, picture(u"small.png"_s, {40, 30}, "PNG"));
    row(2, u"Camera"_s, picture(u"camera.jpg"_s, {3000, 2000}, "JPEG"));
    const auto w = open();
    auto *box0 = child<QFrame>(*w, "PicCentre_0");
    auto *small = child<QLabel>(*w, "imgpic_0");
    EXPECT_EQ(small->size(), QSize(40, 30));
    expectCentred(small, box0);

    auto *box1 = child<QFrame>(*w, "PicCentre_1");
    auto *camera = child<QLabel>(*w, "imgpic_1");
    const QRect room = box1->contentsRect();
    EXPECT_EQ(camera->width(), room.width()) << "a wide picture fills the width";
    EXPECT_NEAR(camera->height(), room.width() * 2 / 3, 1);
    EXPECT_LE(camera->height(), room.height());
    expectCentred(camera, box1);
    // Read for the largest the slot can become on this screen, not at its 3000 pixels.
    const QSize screen = QApplication::primaryScreen()->availableGeometry().size();
    EXPECT_LE(camera->pixmap().width(), screen.width());
    EXPECT_EQ(w->library().entry(2).size, QSize(3000, 2000));

    // A larger window places the picture anew.
    w->resize(w->size() * 3 / 2);
    EXPECT_EQ(camera->width(), box1->contentsRect().width());
    EXPECT_GT(box1->contentsRect().width(), room.width());
}

TEST_F(FmImagesTest, PrintsEachPictureOnAPageOfItsOwnAndAMissingOneAsAGap)
{
    if (pdfReaderMissing() || QStandardPaths::findExecutable(u"pdfimages"_s).isEmpty())
        GTEST_SKIP() << "pdftotext and pdfimages are needed to read the PDF";
    row(1, u"Front view"_s, picture(u"front.png"_s, {300, 200}, "PNG"));
    row(2, u"Gone astray"_s, dir.filePath(u"gone.jpg"_s));
    row(3, u"Standing tall"_s, picture(u"tall.jpg"_s, {200, 600}, "JPEG"));
    const auto w = open();

    const QString file = dir.filePath(u"all.pdf"_s);
    {
        QPdfWriter pdf(file);
        pdf.setPageSize(QPageSize(QPageSize::A4));
        // The whole sheet, edge to edge, so the words' places read straight off the page.
        pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
        ASSERT_TRUE(w->printAll(&pdf));
    }
    const QList<PdfWord> words = pdfWords(file, 200, 280);
    const std::pair<int, const char *> captions[] = {{1, "Front"}, {2, "Gone"}, {3, "Standing"}};
    for (const auto &[page, caption] : captions) {
        SCOPED_TRACE(page);
        const PdfWord *title = findWord(words, u"Warren"_s, page);
        const PdfWord *name = findWord(words, u"Thistle"_s, page);
        const PdfWord *first = findWord(words, QString::fromLatin1(caption), page);
        ASSERT_TRUE(title && name && first);
        EXPECT_LT(title->yMin, 16);
        EXPECT_NEAR(first->xMin, 2, 1.5);
        EXPECT_GT(first->yMin, name->yMax) << "under the heading";
        EXPECT_LT(first->yMin, name->yMax + 5);
    }
    EXPECT_EQ(findWord(words, u"Front"_s, 2), nullptr);
    EXPECT_EQ(findWord(words, u"Continued"_s), nullptr);
    const std::map<int, int> pictures = picturesByPage(file);
    EXPECT_EQ(pictures, (std::map<int, int>{{1, 1}, {3, 1}})) << "page 2 has its caption and a gap";

    // Print of one entry: the one on show.
    QTest::mouseClick(child<QWidget>(*w, "Pcholder_1"), Qt::LeftButton);
    click(*w, "CmdSelect");
    const QString one = dir.filePath(u"one.pdf"_s);
    {
        QPdfWriter pdf(one);
        ASSERT_TRUE(w->printSelected(&pdf));
    }
    const QList<PdfWord> selected = pdfWords(one, 200, 280);
    ASSERT_NE(findWord(selected, u"Gone"_s, 1), nullptr);
    EXPECT_EQ(findWord(selected, u"Front"_s), nullptr);
    EXPECT_EQ(findWord(selected, u"Warren"_s, 2), nullptr);

    // The buttons go through the print preview.
    ModalScript modals;
    modals.on(u"fmPrintPreview"_s, [](QDialog &d) {
        EXPECT_EQ(d.windowTitle(), u"Thistle Images");
        return int(QDialog::Rejected);
    });
    click(*w, "CmdPrint");
    EXPECT_EQ(modals.shown[u"fmPrintPreview"_s], 1);
}

} // namespace

namespace {

TEST_F(FmImagesTest, EveryFormatThisMachineReadsIsOfferedAndShown)
{
    // The program's own installer brings the image plug-ins; WebP is among them.
    if (!QImageReader::supportedImageFormats().contains("webp"))
        GTEST_SKIP() << "the Qt image plug-ins are not installed";
    const QStringList offered = PictureReader::patterns();
    for (const QString &pattern : {u"*.jpg"_s, u"*.JPG"_s, u"*.png"_s, u"*.bmp"_s, u"*.gif"_s, u"*.webp"_s})
        EXPECT_TRUE(offered.contains(pattern)) << pattern.toStdString();
    EXPECT_TRUE(PictureReader::fileFilter().startsWith(u"Images (*.jpg *.jpeg"_s));

    row(1, u"Phone"_s, picture(u"phone.webp"_s, {600, 400}, "WEBP"));
    const auto w = open();
    EXPECT_EQ(w->library().entry(1).state, LoadState::Loaded);
    EXPECT_EQ(w->library().entry(1).size, QSize(600, 400));
}

} // namespace
