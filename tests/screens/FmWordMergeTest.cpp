// The pedigree merged into a breeder's template from the pedigree window: the template asked
// for, the merged copy offered, saved under a new name but never over the template.
#include "ScreenTestSupport.h"
#include "support/StudFixture.h"

#include "pedigree/screens/fmPedigree.h"
#include "platform/TemplateDocument.h"
#include "ui/FileChooser.h"

#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

class FmWordMergeTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        Database &db = fx.open();
        const qint64 sire = addAnimal(db, {{u"Name"_s, u"Warren Jack"_s}});
        subject = addAnimal(db, {{u"Name"_s, u"Bramble"_s}, {u"Sire"_s, sire}, {u"Colour"_s, u"Agouti"_s}});
        fx.session.CurrentStockNo = subject;
        fx.session.CurrentStockName = u"Bramble"_s;
        fx.session.StudName = u"Warren End"_s;
        fx.session.WordAvailable = true;
        templ = QStringLiteral(TARVEX_SOURCE_DIR) + u"/tests/fixtures/templates/pedigree.docx"_s;
        FileChooser::setHook([this](QWidget *, const FileChooser::Request &request) {
            asked << request.title;
            return answers.isEmpty() ? FileChooser::Answer{} : answers.takeFirst();
        });
    }
    void TearDown() override { FileChooser::setHook({}); }

    StudFixture fx;
    ModalScript modals;
    QTemporaryDir dir;
    QString templ;
    QList<FileChooser::Answer> answers;
    QStringList asked;
    qint64 subject = 0;
};

TEST_F(FmWordMergeTest, TheMergedPedigreeIsSavedUnderANewNameButNeverOverTheTemplate)
{
    fmPedigree w(fx.session, fx.prompts);
    ASSERT_TRUE(w.start());
    w.show();
    auto *merge = child<QPushButton>(w, "CmdMerge");
    EXPECT_TRUE(merge->isVisible());
    EXPECT_EQ(merge->text(), u"&Merge");

    // Cancelling the template's chooser ends the merge.
    click(w, "CmdMerge");
    EXPECT_EQ(asked, QStringList{u"Open Word Template"_s});
    EXPECT_EQ(modals.shown[u"FmWordMerge"_s], 0);

    const QString saved = dir.filePath(u"Bramble pedigree.docx"_s);
    answers = {{templ, {}}, {templ, u"Word Document (*.docx)"_s}, {dir.filePath(u"Bramble pedigree"_s), u"Word Document (*.docx)"_s}};
    modals.on(u"FmWordMerge"_s, [&](QDialog &d) {
        EXPECT_EQ(child<QPushButton>(d, "CmdWord")->text(), u"View/Edit &Document");
        EXPECT_EQ(child<QPushButton>(d, "CmdPrint")->text(), u"&Print Merged File");
        click(d, "CmdSave");
        click(d, "CmdSave");
        click(d, "CmdCancel");
        return d.result();
    });
    click(w, "CmdMerge");
    EXPECT_EQ(modals.shown[u"FmWordMerge"_s], 1);
    ASSERT_EQ(fx.prompts.messages.size(), 1) << fx.prompts.texts().join(u'|').toStdString();
    EXPECT_EQ(fx.prompts.messages[0].text, u"You cannot overwrite the template file");
    EXPECT_EQ(fx.prompts.messages[0].title, u"File not saved");
    EXPECT_EQ(fx.prompts.messages[0].icon, Prompts::Icon::Stop);
    EXPECT_EQ(asked.mid(1), (QStringList{u"Open Word Template"_s, u"Save Merged Template"_s, u"Save Merged Template"_s}));

    ASSERT_TRUE(QFile::exists(saved)) << "the extension of the type chosen is added";
    auto doc = TemplateDocument::open(saved);
    EXPECT_FALSE(doc->contains(u"Gen0.Name"_s));
    EXPECT_FALSE(doc->contains(u"Header.StudName"_s));
    EXPECT_TRUE(doc->contains(u"Pedigree of Bramble bred by us"_s));
    EXPECT_TRUE(doc->contains(u"Warren Jack"_s));
    EXPECT_TRUE(doc->contains(u"Colour: Agouti"_s));
    EXPECT_EQ(fx.session.MergeTemplate, templ) << "kept for the run";
}

} // namespace
