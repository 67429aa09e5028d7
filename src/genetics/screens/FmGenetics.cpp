#include "FmGenetics.h"

#include "FmListColours.h"
#include "genetics/Genotypes.h"
#include "genetics/TestMating.h"
#include "pedigree/screens/fmPedigree.h"
#include "core/StudLoader.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/ParentListModel.h"
#include "ui/Design.h"
#include "ui/Hourglass.h"
#include "ui/WorkProgress.h"
#include "ui/ListSort.h"
#include "ui/ListToSheet.h"
#include "ui/Modal.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QMouseEvent>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

FmGenetics::FmGenetics(Session &session, Prompts &prompts, QWidget *parent,
                       std::optional<AnimalInHand> fromStock)
    : QDialog(parent), m_session(session), m_prompts(prompts), m_fromStock(std::move(fromStock))
{
    setObjectName(u"FmGenetics"_s);
    setWindowTitle(u"Genetics"_s);
    const QString colour = session.ColourWord;
    const QString listColoursCaption = u"List all &"_s + colour + u"s"_s;

    PbMenu = make<QWidget>(this, "PbMenu");
    place(PbMenu, 3000, 1500, 3600, 3200);
    const auto menuButton = [&](const char *name, const QString &caption, int row) {
        auto *b = make<QPushButton>(PbMenu, name, caption);
        place(b, 0, row * 800, 3600, 600);
        return b;
    };
    auto *testMate = menuButton("CmdTestMate", u"&Test Mate"_s, 0);
    auto *findColour = menuButton("CmdColour", u"&Find "_s + colour, 1);
    auto *listColours = menuButton("CmdListColours_0", listColoursCaption, 2);
    auto *close = menuButton("Command2", u"&Cancel"_s, 3);

    // A list of results with its "Copy to Excel" button below it.
    const auto resultList = [&](QWidget *frame, int index, const QStringList &heads, const QList<int> &widths,
                                const QList<int> &percentColumns) {
        auto *list = make<QTreeWidget>(frame, ("lv_" + QByteArray::number(index)).constData());
        list->setRootIsDecorated(false);
        list->setHeaderLabels(heads);
        for (int c = 0; c < widths.size(); ++c)
            list->setColumnWidth(c, Design::px(widths.at(c)));
        place(list, 200, 1800, 8900, 3800);
        ColumnSortOptions sorting;
        sorting.percentColumns = percentColumns;
        enableColumnSort(list, sorting);
        lv[index] = list;
        cmdexcel[index] = make<QPushButton>(frame, ("cmdexcel_" + QByteArray::number(index)).constData(),
                                            u"Copy to Excel"_s);
        place(cmdexcel[index], 7300, 5650, 1800, 400);
        cmdexcel[index]->hide();
        onAction(cmdexcel[index], &QPushButton::clicked, this,
                 [this, index] { exportList(index, exportTitle(index)); });
    };

    auto *mate = make<QGroupBox>(this, "FrmMate", u"Test Mate"_s);
    FrmMate = mate;
    mate->installEventFilter(this);
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
    m_sires = ParentListModel::install(CmbSire);
    m_sires->setList(sireList(session));
    m_dams = ParentListModel::install(CmbDam);
    m_dams->setList(damList(session));
    ChkColOnly = make<QCheckBox>(mate, "ChkColOnly", u"Colours Only"_s);
    place(ChkColOnly, 200, 1450, 2500, 300);
    resultList(mate, 0, {colour, u"Genetic Code"_s, u"Percent"_s}, {3650, 3500, 750}, {2});
    LblTotal = make<QLabel>(mate, "LblTotal");
    place(LblTotal, 200, 5700, 5000, 300);

    auto *colourFrame = make<QGroupBox>(this, "FrmColour", u"Breed Colour"_s);
    FrmColour = colourFrame;
    place(colourFrame, 150, 100, 9300, 6200);
    place(make<QLabel>(colourFrame, "LblColour", colour), 200, 400, 900, 300);
    CmbColour = make<QComboBox>(colourFrame, "CmbColour");
    place(CmbColour, 1100, 360, 3400, 360);
    place(make<QLabel>(colourFrame, "Label7", u"Breed"_s), 4700, 400, 900, 300);
    CmbBreed = make<QComboBox>(colourFrame, "CmbBreed");
    place(CmbBreed, 5600, 360, 3400, 360);
    PbGeneCode[2] = make<QLabel>(colourFrame, "PbGeneCode_2");
    place(PbGeneCode[2], 1100, 760, 8000, 300);
    ChkColColOnly = make<QCheckBox>(colourFrame, "ChkColColOnly", u"Colours Only"_s);
    place(ChkColColOnly, 200, 1450, 2500, 300);
    // The offspring's coefficient of inbreeding comes last, so that the least inbred pair
    // giving the colour is a click away.
    resultList(colourFrame, 1, {u"Sire"_s, u"Dam"_s, u"Genetic Code"_s, u"Percent"_s, u"COI"_s},
               {2100, 2100, 2600, 1000, 900}, {3, 4});
    const GeneticsData &g = *session.Genetics;
    for (qsizetype row = 0; row < g.ColourTable.size(); ++row)
        CmbColour->addItem(g.ColourTable.at(row).Name, int(row));
    CmbColour->setCurrentIndex(-1);
    const qint64 showing = m_fromStock ? m_fromStock->number : session.CurrentStockNo;
    if (showing > 0 && session.Stud) {
        const int match = CmbColour->findText(animalInHand(session, showing).colour, Qt::MatchExactly);
        if (match >= 0)
            CmbColour->setCurrentIndex(match);
    }
    CmbBreed->addItem(QString());
    CmbBreed->addItems(session.Lists.breeds);
    for (QLabel *l : PbGeneCode)
        l->setTextFormat(Qt::RichText);

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
    auto *listColours2 = button(pbTestMate, "CmdListColours_1", listColoursCaption, 5700);
    auto *tmCancel = button(pbTestMate, "CmdTMCancel", u"&Cancel"_s, 7600);
    pbcolres = panel("pbcolres");
    auto *listColours3 = button(pbcolres, "CmdListColours_2", listColoursCaption, 5700);
    auto *crCancel = button(pbcolres, "CmdTMCancel", u"&Cancel"_s, 7600);

    auto *progress = make<QGroupBox>(this, "FrmProgress");
    FrmProgress = progress;
    place(progress, 1800, 2500, 6000, 2250);
    place(make<QLabel>(progress, "Lblprogress", u"Calculating - Please wait . . . . . ."_s), 150, 150, 5700,
          300);
    Prb = make<QProgressBar>(progress, "Prb");
    Prb->setTextVisible(false);
    place(Prb, 150, 500, 5700, 270);
    place(make<QLabel>(progress, "lblsire1", session.FatherWord), 150, 900, 1200, 300);
    LblPrSire = make<QLabel>(progress, "LblPrSire");
    place(LblPrSire, 1400, 900, 4400, 300);
    place(make<QLabel>(progress, "lbldam1", session.MotherWord), 150, 1250, 1200, 300);
    LblPrDam = make<QLabel>(progress, "LblPrDam");
    CmdStop = make<QPushButton>(progress, "CmdStop", u"&Cancel"_s);
    CmdStop->setToolTip(u"Stop the search, keeping the pairs found so far"_s);
    place(LblPrDam, 1400, 1250, 4400, 300);
    place(CmdStop, 4300, 1680, 1500, 420);

    onAction(testMate, &QPushButton::clicked, this, &FmGenetics::CmdTestMate_Click);
    onAction(findColour, &QPushButton::clicked, this, &FmGenetics::CmdColour_Click);
    for (QPushButton *b : {listColours, listColours2, listColours3})
        onAction(b, &QPushButton::clicked, this, [this] {
            FmListColours list(m_session, this);
            Modal::exec(list);
        });
    onAction(close, &QPushButton::clicked, this, &QDialog::reject);
    onAction(calculate, &QPushButton::clicked, this, &FmGenetics::CmdCalculate_Click);
    for (QPushButton *b : {naCancel, tmCancel, crCancel})
        onAction(b, &QPushButton::clicked, this, &FmGenetics::cancel);
    onAction(ChkColOnly, &QCheckBox::toggled, this, [this] {
        if (lv[0]->isVisible() && m_prediction)
            showResults();
    });
    onAction(ChkColColOnly, &QCheckBox::toggled, this, [this] {
        if (lv[1]->isVisible())
            showFindResults();
    });
    onAction(pedigree, &QPushButton::clicked, this, [this] {
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

void FmGenetics::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (m_activated || !m_fromStock)
        return;
    m_activated = true;
    // Opened for one animal: straight to the test mating, the animal on its side.
    FrmMate->show();
    PbProcess->show();
    FrmColour->hide();
    PbMenu->hide();
    lv[0]->hide();
    ChkColOnly->setChecked(true);
    const bool male = m_fromStock->sex == m_session.MaleWord;
    QComboBox *own = male ? CmbSire : CmbDam;
    ParentListModel *list = male ? m_sires : m_dams;
    const std::shared_ptr<const ParentList> listed = male ? sireList(m_session) : damList(m_session);
    int index = int(listed->indexOf(m_fromStock->number));
    // Archived animals are not in the lists.
    if (m_fromStock->archive == u"Yes"_s || index < 0) {
        list->setAddition(ParentEntry{m_fromStock->name, m_fromStock->number});
        index = own->count() - 1;
    }
    own->setCurrentIndex(index);
    own->setEnabled(false);
    (male ? CmbDam : CmbSire)->setFocus();
}

bool FmGenetics::eventFilter(QObject *watched, QEvent *event)
{
    // A click on the Test Mate frame itself, away from its controls, has always sent the
    // mating's list to a spreadsheet titled "hello", and still does.
    if (watched == FrmMate && event->type() == QEvent::MouseButtonPress) {
        const auto *press = static_cast<QMouseEvent *>(event);
        if (!FrmMate->childAt(press->position().toPoint()))
            runAction(u"Copy to Excel"_s, [this] { exportList(0, u"hello"_s); });
    }
    return QDialog::eventFilter(watched, event);
}

QString FmGenetics::exportTitle(int index) const
{
    QString title =
        index == 0 ? u"Testmate Results : "_s + CmbSire->currentText() + u" and "_s + CmbDam->currentText()
                   : u"Find Colour Results : "_s + CmbColour->currentText();
    if (!CmbBreed->currentText().isEmpty())
        title += u" ("_s + CmbBreed->currentText() + u")"_s;
    return title;
}

void FmGenetics::exportList(int index, const QString &title)
{
    clslvtoExcel &excel = clslvtoExcel::shared();
    excel.Heading(title);
    excel.listviewA(lv[index]);
    excel.CreateExcel(this, m_prompts);
}

void FmGenetics::showMenu()
{
    PbMenu->show();
    for (QWidget *w : {FrmMate, FrmColour, PbProcess, pbTestMate, pbcolres, FrmProgress})
        w->hide();
}

void FmGenetics::CmdTestMate_Click()
{
    lv[0]->hide();
    FrmMate->show();
    PbProcess->show();
    PbMenu->hide();
    ChkColOnly->setChecked(true);
    CmbSire->setFocus();
}

void FmGenetics::CmdColour_Click()
{
    lv[1]->hide();
    FrmColour->show();
    PbProcess->show();
    PbMenu->hide();
    ChkColColOnly->setChecked(true);
    CmbColour->setFocus();
}

void FmGenetics::CmdCalculate_Click()
{
    if (FrmColour->isVisible())
        findColour();
    else
        calculateMating();
}

void FmGenetics::findColour()
{
    if (CmbColour->currentIndex() < 0)
        return;
    lv[1]->hide();
    const ColourFinder::Entries sires = m_sires->entries(), dams = m_dams->entries();
    if (sires.size() == 1 || dams.size() == 1)
        return;
    const GeneticsData &g = *m_session.Genetics;
    const ColourDef &row = g.ColourTable.at(CmbColour->currentData().toInt());
    m_session.DisplayAlleles = row.Alleles;
    m_colourGenotype = Genotype_Text(g, row.Alleles);
    PbGeneCode[2]->setText(Genotype_Html(g, row.Alleles));
    bool found = false;
    {
        FrmProgress->show();
        FrmProgress->raise();
        const auto hide = qScopeGuard([this] { FrmProgress->hide(); });
        WorkProgress progress(this, Prb, {LblPrSire, LblPrDam}, CmdStop);
        ColourFinder finder(m_session, m_prompts);
        found = finder.Find_Matings(sires, dams, CmbColour->currentText(), CmbBreed->currentText(), &m_hits,
                                    progress);
    }
    if (found) {
        const QString loop = Add_Offspring_Coi(m_session, m_hits);
        if (!loop.isEmpty())
            m_prompts.show(loop, u"Inbreeding"_s, Prompts::Icon::Exclamation);
    }
    if (found) {
        showFindResults();
        CmbColour->setEnabled(false);
        CmbBreed->setEnabled(false);
        pbcolres->show();
        PbProcess->hide();
    }
    cmdexcel[1]->setVisible(lv[1]->isVisible());
    cmdexcel[1]->setEnabled(m_session.SpreadsheetAvailable);
}

void FmGenetics::showFindResults()
{
    HourglassScope wait(this);
    lv[1]->hide();
    lv[1]->clear();
    QList<QTreeWidgetItem *> items;
    for (const FindLine &l : Show_Find_Results(m_hits, ChkColColOnly->isChecked(), m_colourGenotype)) {
        auto *item = new QTreeWidgetItem({l.sire, l.dam, l.genotype, l.percent, l.coi});
        item->setTextAlignment(3, Qt::AlignRight | Qt::AlignVCenter);
        item->setTextAlignment(4, Qt::AlignRight | Qt::AlignVCenter);
        items << item;
    }
    lv[1]->addTopLevelItems(items);
    lv[1]->show();
}

void FmGenetics::calculateMating()
{
    if (CmbSire->currentIndex() < 1 || CmbDam->currentIndex() < 1)
        return;
    const MatingParents parents = Load_Parents(m_session, m_prompts, CmbSire->currentData().toLongLong(),
                                               CmbDam->currentData().toLongLong());
    const GeneticsData &g = *m_session.Genetics;
    PbGeneCode[0]->setText(parents.hasSire ? Genotype_Html(g, parents.sire) : QString());
    PbGeneCode[1]->setText(parents.hasDam ? Genotype_Html(g, parents.dam) : QString());
    if (!parents.hasSire || !parents.hasDam) {
        m_prompts.show(parents.hasSire ? u"No Genetic Information for Dam"_s
                                       : u"No Genetic Information for Sire"_s,
                       u"Not Found"_s, Prompts::Icon::Exclamation);
        (parents.hasSire ? CmbDam : CmbSire)->setFocus();
        return;
    }
    {
        CmbSire->setEnabled(false);
        CmbDam->setEnabled(false);
        lv[0]->hide();
        LblPrSire->setText(CmbSire->currentText());
        LblPrDam->setText(CmbDam->currentText());
        // The mating's walk is not stopped part way: it takes well under a second.
        CmdStop->hide();
        FrmProgress->show();
        FrmProgress->raise();
        const auto hide = qScopeGuard([this] {
            FrmProgress->hide();
            CmdStop->show();
        });
        WorkProgress progress(this, Prb);
        m_prediction = std::make_unique<OffspringPrediction>(*m_session.Genetics, m_prompts);
        m_prediction->Prepare_Mating(parents.sire, parents.dam);
        m_prediction->Enumerate_Offspring(progress);
    }
    showResults();
    PbProcess->hide();
    pbTestMate->show();
    cmdexcel[0]->show();
    cmdexcel[0]->setEnabled(m_session.SpreadsheetAvailable);
}

void FmGenetics::showResults()
{
    const bool coloursOnly = ChkColOnly->isChecked();
    const QList<MatingLine> lines = Show_Mating_Results(*m_prediction, coloursOnly, m_prompts);
    if (lines.isEmpty())
        return;
    lv[0]->hide();
    lv[0]->clear();
    QList<QTreeWidgetItem *> items;
    items.reserve(lines.size());
    for (const MatingLine &l : lines) {
        auto *item = new QTreeWidgetItem({l.colour, l.genotype, l.percent});
        item->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
        items << item;
    }
    lv[0]->addTopLevelItems(items);
    lv[0]->show();
    LblTotal->setText(mateTotalText(lines.size(), coloursOnly));
}

void FmGenetics::cancel()
{
    if (m_fromStock) {
        reject();
        return;
    }
    for (QTreeWidget *list : lv) {
        list->clear();
        list->hide();
    }
    for (QLabel *l : PbGeneCode)
        l->clear();
    for (QComboBox *c : {CmbSire, CmbDam, CmbColour, CmbBreed}) {
        c->setEnabled(true);
        c->setCurrentIndex(c == CmbColour ? -1 : 0);
    }
    for (QPushButton *b : cmdexcel)
        b->hide();
    LblTotal->clear();
    m_prediction.reset();
    m_hits.clear();
    showMenu();
}

} // namespace tarvex
