#include "FmStockGenetics.h"

#include "FmGenetics.h"
#include "FmListColours.h"
#include "genetics/GenotypeInference.h"
#include "core/Options.h"
#include "genetics/Genotypes.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/Modal.h"
#include "ui/SymbolList.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

FmStockGenetics::FmStockGenetics(Session &session, Prompts &prompts, qint64 stockNo, QWidget *parent)
    : QDialog(parent), m_session(session), m_prompts(prompts), m_animal(animalInHand(session, stockNo))
{
    setObjectName(u"FmStockGenetics"_s);
    setWindowTitle(u"Genetics For "_s + m_animal.name);
    const GeneticsData &g = *session.Genetics;

    place(make<QLabel>(this, "LblGeneticCode", u"Current Genetic Code"_s), 150, 150, 3000, 300);
    PbGeneticCode = make<QLabel>(this, "PbGeneticCode");
    PbGeneticCode->setFrameShape(QFrame::Panel);
    PbGeneticCode->setFrameShadow(QFrame::Sunken);
    PbGeneticCode->setAutoFillBackground(true);
    PbGeneticCode->setTextFormat(Qt::RichText);
    place(PbGeneticCode, 150, 450, 9300, 450);

    // Ten rows, two columns of five: a gene's name and its two alleles. A closed list shows
    // the allele's symbol, as the genetic code above writes it; its pop-up names each allele.
    for (int i = 0; i < 10; ++i) {
        const QByteArray n = QByteArray::number(i);
        FrmGene[i] = make<QGroupBox>(this, ("FrmGene_" + n).constData());
        place(FrmGene[i], 150 + (i / 5) * 4750, 1050 + (i % 5) * 850, 4550, 780);
        auto *name = make<QLabel>(FrmGene[i], ("LblGeneName_" + n).constData());
        name->setWordWrap(true); // "English spotting" takes two lines
        name->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        place(name, 100, 100, 1280, 620);
        CmbAllele1[i] = make<SymbolList>(FrmGene[i], ("CmbAllele1_" + n).constData());
        place(CmbAllele1[i], 1400, 240, 1500, 360);
        CmbAllele2[i] = make<SymbolList>(FrmGene[i], ("CmbAllele2_" + n).constData());
        place(CmbAllele2[i], 2960, 240, 1500, 360);
        if (i > g.LastGene) {
            FrmGene[i]->hide();
            continue;
        }
        name->setText(g.GeneTable.at(i).Name);
        const QStringList items = alleleItems(g.GeneTable.at(i));
        for (QComboBox *c : {CmbAllele1[i], CmbAllele2[i]})
            c->addItems(items);
    }

    const auto button = [](QWidget *panel, const char *name, const QString &caption, const QString &tip,
                           int left, int width = 1250) {
        auto *b = Design::panelButton(panel, name, caption, left, width, 420);
        b->setToolTip(tip);
        return b;
    };
    pbupdate = make<QWidget>(this, "pbupdate");
    place(pbupdate, 150, 5400, 9300, 420);
    CmdMode =
        button(pbupdate, "CmdMode", u"&Advanced"_s, u"Switch between Basic and Advanced mode"_s, 0, 1100);
    auto *listColours = button(pbupdate, "CmdListColours", u"List &"_s + session.ColourWord + u"s"_s,
                               u"List all colours in database"_s, 1140, 1300);
    auto *testMate = button(pbupdate, "CmdTestMate", u"&Test Mate"_s, u"Test Mate to Sire/Dam"_s, 2480, 1100);
    auto *offspring = button(pbupdate, "CmdOffspring", u"Examine &Offspring"_s,
                             u"Examine offspring to see if genotype can be updated"_s, 3620, 1950);
    auto *parents = button(pbupdate, "CmdParents", u"Examine &Parents"_s,
                           u"Examine Parents to see if Genotype can be updated"_s, 5610, 1830);
    CmdUpdate = button(pbupdate, "CmdUpdate", u"&Update"_s, u"Update Genetics"_s, 7480, 900);
    auto *back = button(pbupdate, "CmdBack", u"&Back"_s, u"Back"_s, 8400, 900);

    PbNewAmend = make<QWidget>(this, "PbNewAmend");
    place(PbNewAmend, 150, 5400, 9300, 420);
    // These two tips speak of the diary; so they always have.
    auto *ok = button(PbNewAmend, "CmdOk", u"&Ok"_s, u"Update diary entry"_s, 6800, 1200);
    auto *cancel = button(PbNewAmend, "CmdNACancel", u"&Cancel"_s, u"Cancel diary update"_s, 8100, 1200);

    onAction(CmdMode, &QPushButton::clicked, this, &FmStockGenetics::CmdMode_Click);
    onAction(CmdUpdate, &QPushButton::clicked, this, [this] {
        lockAlleles(false);
        showButtons(false);
    });
    onAction(ok, &QPushButton::clicked, this, &FmStockGenetics::CmdOk_Click);
    onAction(cancel, &QPushButton::clicked, this, [this] {
        // The abandoned choices stay on show until the genotype is shown again.
        showButtons(true);
        lockAlleles(true);
    });
    onAction(parents, &QPushButton::clicked, this, [this] {
        Examine_Parents(m_session, m_prompts, false);
        showGenotype();
    });
    onAction(offspring, &QPushButton::clicked, this, [this] {
        m_session.CurrentStockNo = m_animal.number;
        Examine_Offspring(m_session, m_prompts, animalInHand(m_session, m_animal.number).sex, false);
        Read_Genes(m_session, m_prompts, m_animal.number);
        showGenotype();
    });
    onAction(testMate, &QPushButton::clicked, this, [this] {
        FmGenetics genetics(m_session, m_prompts, this, animalInHand(m_session, m_animal.number));
        Modal::exec(genetics);
    });
    onAction(listColours, &QPushButton::clicked, this, [this] {
        FmListColours list(m_session, this);
        Modal::exec(list);
    });
    onAction(back, &QPushButton::clicked, this, &QDialog::accept);

    showButtons(true);
    lockAlleles(true);
    m_advanced = !Options(session).flag(Opt::GeneticsAdv);
    CmdMode_Click();
    testMate->setEnabled(m_animal.sexRecorded);
    Open_Stock_Genetics(session, prompts, m_animal);
    showGenotype();

    const QSize design(Design::px(9600), Design::px(6000));
    resize(design);
    FormResizeSetup(this, design);
}

void FmStockGenetics::showButtons(bool main)
{
    pbupdate->setVisible(main);
    PbNewAmend->setVisible(!main);
}

void FmStockGenetics::lockAlleles(bool locked)
{
    // Locked lists take the colour of a button face, open ones that of a window.
    for (int i = 0; i < 10; ++i) {
        for (QComboBox *c : {CmbAllele1[i], CmbAllele2[i]}) {
            c->setEnabled(!locked);
            QPalette p = c->palette();
            p.setColor(QPalette::Base, palette().color(locked ? QPalette::Button : QPalette::Base));
            c->setPalette(p);
        }
    }
}

void FmStockGenetics::showGenotype()
{
    const Genotype shown = Show_Genotype(m_session);
    for (int i = 0; i <= m_session.Genetics->LastGene; ++i) {
        CmbAllele1[i]->setCurrentIndex(shown[i].allele1);
        CmbAllele2[i]->setCurrentIndex(shown[i].allele2);
    }
    PbGeneticCode->setText(Genotype_Html(*m_session.Genetics, m_session.DisplayAlleles));
}

void FmStockGenetics::CmdMode_Click()
{
    m_advanced = !m_advanced;
    // The caption names the mode a click would go to.
    CmdMode->setText(m_advanced ? u"&Basic"_s : u"&Advanced"_s);
    CmdUpdate->setEnabled(m_advanced);
    for (int i = 0; i <= m_session.Genetics->LastGene; ++i)
        FrmGene[i]->setVisible(m_advanced);
}

void FmStockGenetics::CmdOk_Click()
{
    showButtons(true);
    QList<AllelePair> chosen;
    for (int i = 0; i <= m_session.Genetics->LastGene; ++i)
        chosen << AllelePair{quint8(std::max(0, CmbAllele1[i]->currentIndex())),
                             quint8(std::max(0, CmbAllele2[i]->currentIndex()))};
    m_session.CurrentStockNo = m_animal.number;
    // Whether or not the pairs could be stored, the screen shows what the stud holds.
    const auto showStored = [this] {
        lockAlleles(true);
        Read_Genes(m_session, m_prompts, m_animal.number);
        showGenotype();
    };
    try {
        Store_Chosen_Alleles(m_session, m_prompts, chosen);
    } catch (...) {
        showStored();
        throw;
    }
    showStored();
}

} // namespace tarvex
