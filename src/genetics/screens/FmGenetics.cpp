#include "FmGenetics.h"

#include "FmListColours.h"
#include "genetics/TestMating.h"
#include "pedigree/screens/fmPedigree.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/Hourglass.h"
#include "ui/ListSort.h"
#include "ui/Modal.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

FmGenetics::FmGenetics(Session &session, Prompts &prompts, QWidget *parent)
    : QDialog(parent), m_session(session), m_prompts(prompts)
{
    setObjectName(u"FmGenetics"_s);
    setWindowTitle(u"Genetics"_s);
    const QString colour = session.ColourWord;

    PbMenu = make<QWidget>(this, "PbMenu");
    place(PbMenu, 3000, 1500, 3600, 3200);
    const auto menuButton = [&](const char *name, const QString &caption, int row) {
        auto *b = make<QPushButton>(PbMenu, name, caption);
        place(b, 0, row * 800, 3600, 600);
        return b;
    };
    auto *testMate = menuButton("CmdTestMate", u"&Test Mate"_s, 0);
    // Finding the pairs that can give a colour opens here once it is there.
    menuButton("CmdColour", u"&Find "_s + colour, 1)->setEnabled(false);
    auto *listColours = menuButton("CmdListColours_0", u"List all &"_s + colour + u"s"_s, 2);
    auto *close = menuButton("Command2", u"&Cancel"_s, 3);

    auto *mate = make<QGroupBox>(this, "FrmMate", u"Test Mate"_s);
    FrmMate = mate;
    place(mate, 150, 100, 9300, 6200);
    place(make<QLabel>(mate, "LblSire", session.FatherWord), 200, 400, 900, 300);
    CmbSire = make<QComboBox>(mate, "CmbSire");
    place(CmbSire, 1100, 360, 3400, 360);
    PbGeneCode[0] = make<QLabel>(mate, "PbGeneCode_0");
    place(PbGeneCode[0], 1100, 760, 8000, 300);
    place(make<QLabel>(mate, "LblDam", session.MotherWord), 4700, 400, 900, 300);
    CmbDam = make<QComboBox>(mate, "CmbDam");
    place(CmbDam, 5600, 360, 3400, 360);
    PbGeneCode[1] = make<QLabel>(mate, "PbGeneCode_1");
    place(PbGeneCode[1], 1100, 1100, 8000, 300);
    for (const auto &[name, number] : session.Lists.sires)
        CmbSire->addItem(name, number);
    for (const auto &[name, number] : session.Lists.dams)
        CmbDam->addItem(name, number);
    ChkColOnly = make<QCheckBox>(mate, "ChkColOnly", u"Colours Only"_s);
    place(ChkColOnly, 200, 1450, 2500, 300);
    lv = make<QTreeWidget>(mate, "lv_0");
    lv->setRootIsDecorated(false);
    lv->setHeaderLabels({colour, u"Genetic Code"_s, u"Percent"_s});
    lv->setColumnWidth(0, Design::px(3650));
    lv->setColumnWidth(1, Design::px(3500));
    lv->setColumnWidth(2, Design::px(750));
    place(lv, 200, 1800, 8900, 3800);
    enableColumnSort(lv, 2);
    LblTotal = make<QLabel>(mate, "LblTotal");
    place(LblTotal, 200, 5700, 5000, 300);
    auto *excel = make<QPushButton>(mate, "cmdexcel_0", u"Copy to Excel"_s);
    place(excel, 7300, 5650, 1800, 400);
    // The list goes to a spreadsheet once the list export is there.
    excel->setEnabled(false);

    const auto panel = [&](const char *name) {
        auto *w = make<QWidget>(this, name);
        place(w, 150, 6500, 9300, 450);
        return w;
    };
    const auto button = [](QWidget *p, const char *name, const QString &caption, int left) {
        return Design::panelButton(p, name, caption, left, 1700, 430);
    };
    PbProcess = panel("PbProcess");
    auto *calculate = button(PbProcess, "CmdCalculate", u"&Calculate"_s, 5700);
    auto *naCancel = button(PbProcess, "CmdNACancel", u"&Cancel"_s, 7600);
    pbTestMate = panel("pbTestMate");
    auto *pedigree = button(pbTestMate, "CmdPedigree", u"&Pedigree"_s, 3800);
    auto *listColours2 = button(pbTestMate, "CmdListColours_1", u"List all &"_s + colour + u"s"_s, 5700);
    auto *tmCancel = button(pbTestMate, "CmdTMCancel", u"&Cancel"_s, 7600);

    auto *progress = make<QGroupBox>(this, "FrmProgress");
    FrmProgress = progress;
    place(progress, 1800, 2500, 6000, 1700);
    place(make<QLabel>(progress, "Lblprogress", u"Calculating - Please wait . . . . . ."_s), 150, 150, 5700, 300);
    Prb = make<QProgressBar>(progress, "Prb");
    Prb->setTextVisible(false);
    place(Prb, 150, 500, 5700, 270);
    place(make<QLabel>(progress, "lblsire1", session.FatherWord), 150, 900, 1200, 300);
    LblPrSire = make<QLabel>(progress, "LblPrSire");
    place(LblPrSire, 1400, 900, 4400, 300);
    place(make<QLabel>(progress, "lbldam1", session.MotherWord), 150, 1250, 1200, 300);
    LblPrDam = make<QLabel>(progress, "LblPrDam");
    place(LblPrDam, 1400, 1250, 4400, 300);

    connect(testMate, &QPushButton::clicked, this, &FmGenetics::CmdTestMate_Click);
    for (QPushButton *b : {listColours, listColours2})
        connect(b, &QPushButton::clicked, this, [this] {
            FmListColours list(m_session, this);
            Modal::exec(list);
        });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(calculate, &QPushButton::clicked, this, &FmGenetics::CmdCalculate_Click);
    connect(naCancel, &QPushButton::clicked, this, &FmGenetics::cancel);
    connect(tmCancel, &QPushButton::clicked, this, &FmGenetics::cancel);
    connect(ChkColOnly, &QCheckBox::toggled, this, [this] {
        if (lv->isVisible() && m_prediction)
            showResults();
    });
    connect(pedigree, &QPushButton::clicked, this, [this] {
        m_session.TestMatingSire = CmbSire->currentData().toLongLong();
        m_session.TestMatingDam = CmbDam->currentData().toLongLong();
        m_session.CurrentStockNo = 0;
        m_session.TestMatingFromGenetics = true;
        fmPedigree w(m_session, m_prompts, this);
        if (w.start())
            Modal::exec(w);
    });

    showMenu();
    const QSize design(Design::px(9600), Design::px(7200));
    resize(design);
    FormResizeSetup(this, design);
}

void FmGenetics::showMenu()
{
    PbMenu->show();
    for (QWidget *w : {FrmMate, PbProcess, pbTestMate, FrmProgress})
        w->hide();
}

void FmGenetics::CmdTestMate_Click()
{
    lv->hide();
    FrmMate->show();
    PbProcess->show();
    PbMenu->hide();
    ChkColOnly->setChecked(true);
    CmbSire->setFocus();
}

void FmGenetics::CmdCalculate_Click()
{
    if (CmbSire->currentIndex() < 1 || CmbDam->currentIndex() < 1)
        return;
    const MatingParents parents = Load_Parents(m_session, m_prompts, CmbSire->currentData().toLongLong(),
                                               CmbDam->currentData().toLongLong());
    PbGeneCode[0]->setText(parents.sireText);
    PbGeneCode[1]->setText(parents.damText);
    if (!parents.hasSire || !parents.hasDam) {
        m_prompts.show(parents.hasSire ? u"No Genetic Information for Dam"_s : u"No Genetic Information for Sire"_s,
                       u"Not Found"_s, Prompts::Icon::Exclamation);
        (parents.hasSire ? CmbDam : CmbSire)->setFocus();
        return;
    }
    {
        HourglassScope wait(this);
        CmbSire->setEnabled(false);
        CmbDam->setEnabled(false);
        lv->hide();
        LblPrSire->setText(CmbSire->currentText());
        LblPrDam->setText(CmbDam->currentText());
        FrmProgress->show();
        FrmProgress->raise();
        m_prediction = std::make_unique<OffspringPrediction>(*m_session.Genetics, m_prompts);
        m_prediction->Prepare_Mating(parents.sire, parents.dam);
        Prb->setRange(0, int(std::min<qint64>(m_prediction->IterationCount + 1, INT_MAX)));
        Prb->setValue(1);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        qint64 passes = 0;
        const qint64 step = std::max<qint64>(1, m_prediction->IterationCount / 100);
        m_prediction->Enumerate_Offspring([&] {
            if (++passes % step == 0)
                Prb->setValue(int(passes));
        });
        FrmProgress->hide();
    }
    showResults();
    PbProcess->hide();
    pbTestMate->show();
}

void FmGenetics::showResults()
{
    const bool coloursOnly = ChkColOnly->isChecked();
    const QList<MatingLine> lines = Show_Mating_Results(*m_prediction, coloursOnly, m_prompts);
    if (lines.isEmpty())
        return;
    lv->hide();
    lv->clear();
    QList<QTreeWidgetItem *> items;
    items.reserve(lines.size());
    for (const MatingLine &l : lines) {
        auto *item = new QTreeWidgetItem({l.colour, l.genotype, l.percent});
        item->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
        items << item;
    }
    lv->addTopLevelItems(items);
    lv->show();
    LblTotal->setText(mateTotalText(lines.size(), coloursOnly));
}

void FmGenetics::cancel()
{
    lv->clear();
    lv->hide();
    for (QLabel *l : PbGeneCode)
        l->clear();
    CmbSire->setEnabled(true);
    CmbDam->setEnabled(true);
    CmbSire->setCurrentIndex(0);
    CmbDam->setCurrentIndex(0);
    LblTotal->clear();
    m_prediction.reset();
    showMenu();
}

} // namespace tarvex
