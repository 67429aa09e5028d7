#include "ScreenTestSupport.h"
#include "support/StudFixture.h"

#include "core/StudLoader.h"
#include "genetics/Genotypes.h"
#include "genetics/screens/FmGenCheck.h"
#include "genetics/screens/FmStockGenetics.h"
#include "store/StudDatabase.h"
#include "ui/SymbolList.h"

#include <QComboBox>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

class FmStockGeneticsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fx.copyShippedGenetics();
        db = &fx.open();
        ASSERT_TRUE(Ensure_Genetics_Loaded(fx.session, fx.prompts));
    }
    QString genotype(qint64 n)
    {
        return db->scalar(u"SELECT GenoType FROM Stock WHERE Number = ?"_s, {n}).toString();
    }
    QComboBox *allele(QWidget &w, int which, int gene)
    {
        return child<QComboBox>(w, QByteArray("CmbAllele%1_%2")
                                       .replace("%1", QByteArray::number(which))
                                       .replace("%2", QByteArray::number(gene))
                                       .constData());
    }

    StudFixture fx;
    Database *db = nullptr;
    ModalScript modals;
};

TEST_F(FmStockGeneticsTest, AlleleListsSetTheGenotypeInAdvancedMode)
{
    // No genotype yet: opening derives one from the colour.
    const qint64 jet =
        addAnimal(*db, {{u"Name"_s, u"Jet"_s}, {u"Sex"_s, u"Buck"_s}, {u"Colour"_s, u"Black"_s}});
    FmStockGenetics w(fx.session, fx.prompts, jet);
    w.show();
    EXPECT_EQ(w.windowTitle(), u"Genetics For Jet");
    EXPECT_EQ(genotype(jet), u"aa B _ C _ D _ E _ _ _ enen Du _ V _ R _");
    EXPECT_TRUE(child<QLabel>(w, "PbGeneticCode")->text().contains(u"e<sup>n</sup>e<sup>n</sup>"_s))
        << "a symbol's later letters are raised";

    // Basic mode unless the stud's options ask for Advanced.
    auto *mode = child<QPushButton>(w, "CmdMode");
    EXPECT_EQ(mode->text(), u"&Advanced");
    EXPECT_FALSE(child<QPushButton>(w, "CmdUpdate")->isEnabled());
    EXPECT_FALSE(child<QGroupBox>(w, "FrmGene_0")->isVisible());
    EXPECT_TRUE(child<QPushButton>(w, "CmdParents")->isEnabled());
    click(w, "CmdMode");
    EXPECT_EQ(mode->text(), u"&Basic");
    EXPECT_TRUE(child<QGroupBox>(w, "FrmGene_0")->isVisible());
    EXPECT_EQ(child<QLabel>(w, "LblGeneName_0")->text(), u"Agouti");
    EXPECT_FALSE(child<QGroupBox>(w, "FrmGene_9")->isHidden()) << "ten rabbit genes: every row shows";
    EXPECT_EQ(allele(w, 1, 0)->itemText(0), u"Unknown");
    EXPECT_EQ(allele(w, 1, 0)->itemText(2), u"at - Tan pattern (otter, marten)");
    EXPECT_EQ(allele(w, 1, 0)->currentIndex(), 3);
    auto *closed = dynamic_cast<SymbolList *>(allele(w, 1, 0));
    ASSERT_NE(closed, nullptr);
    EXPECT_EQ(closed->shownText(), u"a") << "closed, the list shows the symbol of \"a - Self (non-agouti)\"";
    closed->setCurrentIndex(0);
    EXPECT_EQ(closed->shownText(), u"Unknown");
    closed->setCurrentIndex(3);
    EXPECT_FALSE(allele(w, 1, 0)->isEnabled());

    click(w, "CmdUpdate");
    EXPECT_TRUE(child<QWidget>(w, "PbNewAmend")->isVisible());
    EXPECT_EQ(child<QPushButton>(w, "CmdOk")->toolTip(), u"Update diary entry");
    ASSERT_TRUE(allele(w, 1, 0)->isEnabled());
    // Agouti wholly unknown; Brown chosen in the second list only.
    allele(w, 1, 0)->setCurrentIndex(0);
    allele(w, 2, 0)->setCurrentIndex(0);
    allele(w, 1, 1)->setCurrentIndex(0);
    allele(w, 2, 1)->setCurrentIndex(2);
    click(w, "CmdOk");
    EXPECT_EQ(genotype(jet), u"_ _ b _ C _ D _ E _ _ _ enen Du _ V _ R _");
    EXPECT_EQ(db->scalar(u"SELECT count(*) FROM Genes WHERE StockNo = ? AND Id = 1"_s, {jet}).toInt(), 0);
    EXPECT_EQ(allele(w, 1, 1)->currentIndex(), 2) << "the known allele moves to the first list";
    EXPECT_EQ(allele(w, 2, 1)->currentIndex(), 0);
    EXPECT_TRUE(child<QWidget>(w, "pbupdate")->isVisible());
    EXPECT_FALSE(allele(w, 1, 1)->isEnabled());

    // Cancel keeps the stored genotype.
    click(w, "CmdUpdate");
    allele(w, 1, 2)->setCurrentIndex(5);
    click(w, "CmdNACancel");
    EXPECT_EQ(genotype(jet), u"_ _ b _ C _ D _ E _ _ _ enen Du _ V _ R _");
}

TEST_F(FmStockGeneticsTest, ExaminationsReportAndTestMateNeedsASex)
{
    const qint64 sire =
        addAnimal(*db, {{u"Name"_s, u"Sire"_s}, {u"Sex"_s, u"Buck"_s}, {u"Colour"_s, u"Black"_s}});
    const qint64 kit = addAnimal(*db, {{u"Name"_s, u"Kit"_s}, {u"Sire"_s, sire}, {u"Colour"_s, u"Black"_s}});
    Update_Genes(fx.session, fx.prompts, u"Black"_s, QString(), sire, u"Buck"_s);
    FmStockGenetics w(fx.session, fx.prompts, kit);
    w.show();
    EXPECT_FALSE(child<QPushButton>(w, "CmdTestMate")->isEnabled()) << "an animal of no recorded sex";
    click(w, "CmdParents");
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_EQ(fx.prompts.messages[0].text, u"No Changes Detected\n");
    EXPECT_EQ(fx.prompts.messages[0].title, u"Parents Genetics Examined");
    click(w, "CmdOffspring");
    EXPECT_EQ(fx.prompts.messages.size(), 1) << "no sex: the offspring are not examined";

    modals.on(u"FmListColours"_s, [](QDialog &) { return int(QDialog::Rejected); });
    click(w, "CmdListColours");
    EXPECT_EQ(modals.shown[u"FmListColours"_s], 1);
    EXPECT_EQ(child<QPushButton>(w, "CmdListColours")->text(), u"List &Colours");
}

TEST_F(FmStockGeneticsTest, AutoCheckWalksTheStud)
{
    const qint64 sire =
        addAnimal(*db, {{u"Name"_s, u"Sire"_s}, {u"Sex"_s, u"Buck"_s}, {u"Colour"_s, u"Black"_s}});
    const qint64 kit = addAnimal(*db, {{u"Name"_s, u"Kit"_s}, {u"Sire"_s, sire}, {u"Colour"_s, u"Black"_s}});
    FmGenCheck w(fx.session, fx.prompts);
    w.show();
    EXPECT_EQ(w.windowTitle(), u"Automatic Genetic Check");
    click(w, "CmdCheck");
    EXPECT_EQ(child<QLabel>(w, "LblStockName")->text(), u"Sire") << "the last animal by name";
    EXPECT_EQ(child<QLabel>(w, "LblSire")->text(), u"Sire") << "Sire has no sire: Kit's stays on show";
    EXPECT_FALSE(genotype(kit).isEmpty());
    EXPECT_FALSE(genotype(sire).isEmpty());
    click(w, "CmdCancel");
    EXPECT_FALSE(w.isVisible());
}

// Cancel pressed while the walk runs stops it at the next animal, keeping those finished,
// and the screen stays open; other presses during the walk are not acted on.
TEST_F(FmStockGeneticsTest, AutoCheckStopsWhenCancelledAndStaysOpen)
{
    for (const QString &name : {u"Amber"_s, u"Bramble"_s, u"Clover"_s})
        addAnimal(*db, {{u"Name"_s, name}, {u"Sex"_s, u"Doe"_s}, {u"Colour"_s, u"Black"_s}});
    FmGenCheck w(fx.session, fx.prompts);
    w.show();
    const auto press = [](QWidget *target) {
        const QPointF at = QRectF(target->rect()).center();
        QCoreApplication::postEvent(target, new QMouseEvent(QEvent::MouseButtonPress, at, target->mapToGlobal(at),
                                                            Qt::LeftButton, Qt::LeftButton, Qt::NoModifier));
        QCoreApplication::postEvent(target, new QMouseEvent(QEvent::MouseButtonRelease, at, target->mapToGlobal(at),
                                                            Qt::LeftButton, Qt::NoButton, Qt::NoModifier));
    };
    // The presses wait in the queue and reach the screen as the walk gives it its turn.
    press(child<QPushButton>(w, "CmdCheck"));
    press(child<QPushButton>(w, "CmdCancel"));
    click(w, "CmdCheck");
    EXPECT_TRUE(w.isVisible()) << "Cancel stopped the walk, not the screen";
    EXPECT_EQ(db->scalar(u"SELECT count(*) FROM Stock WHERE GenoType <> ''"_s).toInt(), 0)
        << "stopped before the first animal";
    EXPECT_TRUE(child<QPushButton>(w, "CmdCheck")->isEnabled());
    QCoreApplication::processEvents();
    EXPECT_EQ(db->scalar(u"SELECT count(*) FROM Stock WHERE GenoType <> ''"_s).toInt(), 0)
        << "the press of Run during the walk was not kept for later";
    click(w, "CmdCheck");
    EXPECT_EQ(db->scalar(u"SELECT count(*) FROM Stock WHERE GenoType <> ''"_s).toInt(), 3);
}

} // namespace
