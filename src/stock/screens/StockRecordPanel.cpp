#include "StockRecordPanel.h"

#include "fmStockenq.h"

#include "breeding/screens/FmAwards.h"
#include "breeding/screens/FmBrNote.h"
#include "breeding/screens/FmMatings.h"
#include "genetics/Genotypes.h"
#include "pedigree/StudInbreeding.h"
#include "genetics/screens/FmStockGenetics.h"
#include "images/screens/FmImages.h"

#include "pedigree/screens/fmPedigree.h"

#include "reporting/screens/FmPrint.h"
#include "reporting/screens/FmQuickSrch.h"
#include "reporting/screens/FmStats.h"
#include "ui/FocusMoves.h"
#include "stock/AgeText.h"
#include "stock/FieldLimits.h"
#include "store/StudDatabase.h"
#include "ui/Action.h"
#include "ui/DateField.h"
#include "ui/Design.h"
#include "ui/Hourglass.h"
#include "ui/ListSort.h"
#include "ui/ParentListModel.h"
#include "ui/Modal.h"
#include "ui/StatusHints.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QTimer>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

namespace {
constexpr int kRow = 450;

// The lines of the short pedigree, as the pedigree window draws them: from each parent
// down its left side to the level of its own sire and dam, and across to each of them.
class ShortPedigreeLines : public QWidget
{
public:
    ShortPedigreeLines(const std::array<QPushButton *, 6> &cells, QWidget *parent) : QWidget(parent), m_cells(cells)
    {
        setObjectName(u"LinShortPedigree"_s);
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

    /// The segments in this widget's own coordinates.
    QList<QLine> lines() const
    {
        QList<QLine> out;
        for (const int parent : {0, 1}) {
            const QRect p = mapped(m_cells[parent]);
            const QRect sire = mapped(m_cells[2 + 2 * parent]);
            const QRect dam = mapped(m_cells[3 + 2 * parent]);
            const int x = p.left() + (sire.left() - p.left()) / 2;
            out << QLine(x, p.bottom(), x, dam.center().y());
            out << QLine(x, sire.center().y(), sire.left(), sire.center().y());
            out << QLine(x, dam.center().y(), dam.left(), dam.center().y());
        }
        return out;
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setPen(QPen(palette().color(QPalette::WindowText), 1));
        painter.drawLines(lines());
    }

private:
    QRect mapped(const QWidget *w) const { return QRect(mapFrom(parentWidget(), w->pos()), w->size()); }

    const std::array<QPushButton *, 6> &m_cells; // the panel's, filled after this is made
};

QComboBox *list(QWidget *parent, const char *name, bool editable)
{
    auto *c = make<QComboBox>(parent, name);
    c->setEditable(editable);
    c->setInsertPolicy(QComboBox::NoInsert);
    c->setMaxVisibleItems(20);
    // A locked record is read, not greyed out. The rule is the list's own: a style sheet on
    // the whole panel would keep the fonts of its other controls from following the form's.
    c->setStyleSheet(u"QComboBox:disabled { color: palette(text); }"_s);
    return c;
}
} // namespace

StockRecordPanel::StockRecordPanel(Session &session, Prompts &prompts, StatusHints &hints, QWidget *parent)
    : QWidget(parent), m_session(session), m_prompts(prompts), m_hints(hints), m_records(session, prompts)
{
    setObjectName(u"StockRecordPanel"_s);
    frmStock = make<QWidget>(this, "frmStock");
    place(frmStock, 120, 60, 9360, 5200);
    tbsstock = make<QTabWidget>(frmStock, "tbsstock");
    place(tbsstock, 0, 0, 9360, 5200);

    auto *details = make<QWidget>(nullptr, "TabDetails");
    buildDetails(details);
    tbsstock->addTab(details, u"&Details"_s);
    RNotes = make<QPlainTextEdit>(nullptr, "RNotes");
    tbsstock->addTab(RNotes, u"&Notes"_s);
    RHealth = make<QPlainTextEdit>(nullptr, "RHealth");
    m_hints.add(RHealth, u"Enter Health Notes"_s);
    tbsstock->addTab(RHealth, u"&Health"_s);
    auto *breeding = make<QWidget>(nullptr, "TabBreeding");
    buildBreeding(breeding);
    tbsstock->addTab(breeding, u"&Breeding"_s);
    buildPanels();
    setState(State::Closed);
}

void StockRecordPanel::buildDetails(QWidget *page)
{
    const auto label = [&](const char *name, const QString &caption, int column, int row) {
        auto *l = make<QLabel>(page, name, caption);
        place(l, column == 0 ? 150 : 4700, 190 + row * kRow, column == 0 ? 1300 : 1400, 300);
        return l;
    };
    const auto at = [&](QWidget *w, int column, int row, int width = 0) {
        place(w, column == 0 ? 1500 : 6150, 150 + row * kRow, width ? width : (column == 0 ? 2950 : 2750), 360);
    };
    label("LabName", u"Name"_s, 0, 0);
    TxtName = make<QLineEdit>(page, "TxtName");
    at(TxtName, 0, 0);
    LabId = label("LabId", QString(), 0, 1);
    TxtId1 = make<QLineEdit>(page, "TxtId1");
    at(TxtId1, 0, 1);
    LabId2 = label("LabId2", QString(), 0, 2);
    TxtId2 = make<QLineEdit>(page, "TxtId2");
    at(TxtId2, 0, 2);
    labid3 = label("labid3", QString(), 0, 3);
    TxtId3 = make<QLineEdit>(page, "TxtId3");
    at(TxtId3, 0, 3);
    label("LabBreed", u"Breed"_s, 0, 4);
    Rtype = list(page, "Rtype", true);
    at(Rtype, 0, 4);
    LabColour = label("LabColour", u"Colour"_s, 0, 5);
    RColour = list(page, "RColour", true);
    at(RColour, 0, 5);
    label("LabBreeder", u"Breeder"_s, 0, 6);
    RBreeder = list(page, "RBreeder", true);
    at(RBreeder, 0, 6);
    label("LabStatus", u"Status"_s, 0, 7);
    RStatus = list(page, "RStatus", true);
    at(RStatus, 0, 7);
    label("LabGenotype", u"Genotype"_s, 0, 8);
    RGenotype = make<QLineEdit>(page, "RGenotype");
    at(RGenotype, 0, 8);

    label("LabSex", u"Sex"_s, 1, 0);
    RSex = list(page, "RSex", false);
    at(RSex, 1, 0, 1600);
    label("LabArchive", u"Archive"_s, 1, 1);
    RArchive = list(page, "RArchive", false);
    RArchive->addItems({u"Yes"_s, u"No"_s});
    at(RArchive, 1, 1, 1000);
    label("LabDOB", u"Date of Birth"_s, 1, 2);
    RDOB = make<QLineEdit>(page, "RDOB");
    at(RDOB, 1, 2, 1500);
    label("LabDOD", u"Date of Death"_s, 1, 3);
    RDOD = make<QLineEdit>(page, "RDOD");
    at(RDOD, 1, 3, 1500);
    label("LabAge", u"Age"_s, 1, 4);
    TxtAge = make<QLineEdit>(page, "TxtAge");
    TxtAge->setReadOnly(true);
    TxtAge->setFocusPolicy(Qt::NoFocus);
    at(TxtAge, 1, 4, 1500);
    LabRSire = label("LabRSire", u"Sire"_s, 1, 5);
    RSire = list(page, "RSire", false);
    m_sires = ParentListModel::install(RSire);
    at(RSire, 1, 5, 2300);
    pbSire = make<QPushButton>(page, "pbSire", u"?"_s);
    place(pbSire, 8500, 150 + 5 * kRow, 400, 360);
    LabRDam = label("LabRDam", u"Dam"_s, 1, 6);
    RDam = list(page, "RDam", false);
    m_dams = ParentListModel::install(RDam);
    at(RDam, 1, 6, 2300);
    pbdam = make<QPushButton>(page, "pbdam", u"?"_s);
    place(pbdam, 8500, 150 + 6 * kRow, 400, 360);
    // The coefficient of inbreeding with its evidence, under the weight.
    LblCoi = make<QLabel>(page, "LblCoi");
    place(LblCoi, 4700, 190 + 8 * kRow, 4500, 300);
    label("LabWeight", u"Weight"_s, 1, 7);
    RWeight = make<QLineEdit>(page, "RWeight");
    at(RWeight, 1, 7, 1200);
    LblWeightUnits = make<QLabel>(page, "LblWeightUnits", u"lbs"_s);
    place(LblWeightUnits, 7450, 190 + 7 * kRow, 1200, 300);

    m_hints.add(TxtName, u"Enter Name (If not entered an Automatic Number will be generated)"_s);
    m_hints.add(Rtype, u"Select Breed or enter if not present"_s);
    m_hints.add(RColour, u"Select Colour or enter if not present"_s);
    m_hints.add(RBreeder, u"Select Breeder or enter if not present"_s);
    m_hints.add(RStatus, u"Select Status or enter if not present"_s);
    m_hints.add(RArchive, u"If this animal is part of your current stock select NO, otherwise YES"_s);
    m_hints.add(RDOB, u"Enter Date Of Birth"_s);
    m_hints.add(RDOD, u"Enter Date Of Death"_s);
    m_hints.add(RSire, u"Select Sire"_s);
    m_hints.add(RDam, u"Select Dam"_s);
    m_hints.add(RWeight, u"Enter the Weight or leave blank"_s);

    TxtName->installEventFilter(this);
    TxtId1->installEventFilter(this);
    RDOB->installEventFilter(this);
    RDOD->installEventFilter(this);
    Design::limitTyping(Rtype, FieldLimits::Breed, m_prompts);
    Design::limitTyping(RColour, FieldLimits::Colour, m_prompts);
    Design::limitTyping(RStatus, FieldLimits::Status, m_prompts);
    Design::limitTyping(RBreeder, FieldLimits::Breeder, m_prompts);
    onAction(pbSire, &QPushButton::clicked, this, [this] { pickParent(true); });
    onAction(pbdam, &QPushButton::clicked, this, [this] { pickParent(false); });
    const auto parentChosen = [this](QComboBox *combo, QPushButton *button) {
        const QString text = combo->currentText();
        button->setEnabled(m_state != State::Browsing || (!text.isEmpty() && text != u"Not Found"));
    };
    onAction(RSire, &QComboBox::activated, this, [=, this] { parentChosen(RSire, pbSire); });
    onAction(RDam, &QComboBox::activated, this, [=, this] { parentChosen(RDam, pbdam); });
}

void StockRecordPanel::buildBreeding(QWidget *page)
{
    auto *rels = make<QGroupBox>(page, "FrRels", u"Relatives"_s);
    place(rels, 100, 80, 5300, 4550);
    chkbrarchive = make<QCheckBox>(rels, "chkbrarchive", u"Show Archived"_s);
    place(chkbrarchive, 150, 300, 1700, 300);
    const QString sexes[] = {u"Male"_s, u"Female"_s, u"Both"_s};
    for (int i = 0; i < 3; ++i) {
        optbrsex[i] = make<QRadioButton>(rels, ("optbrsex_" + std::to_string(i)).c_str(), sexes[i]);
        place(optbrsex[i], 1900 + i * 1100, 300, 1100, 300);
        onAction(optbrsex[i], &QRadioButton::toggled, this, [this](bool on) {
            if (on)
                showRelatives();
        });
    }
    cmbbrshow = list(rels, "cmbbrshow", false);
    place(cmbbrshow, 150, 650, 2600, 360);
    onAction(chkbrarchive, &QCheckBox::toggled, this, &StockRecordPanel::showRelatives);
    onAction(cmbbrshow, &QComboBox::currentIndexChanged, this, [this] {
        showRelatives();
        showShortPedigree();
    });
    const QString captions[] = {u"Offspring"_s, u"Half Siblings"_s, u"Full Siblings"_s};
    const int tops[] = {1060, 2200, 3340};
    for (int i = 0; i < 3; ++i) {
        auto *l = make<QLabel>(rels, ("lblrel_" + std::to_string(i)).c_str(), captions[i]);
        place(l, 150, tops[i], 3000, 270);
        m_hints.add(l, u"Click for summary information"_s);
        lvrels[i] = make<QTreeWidget>(rels, ("lvrels_" + std::to_string(i)).c_str());
        lvrels[i]->setRootIsDecorated(false);
        lvrels[i]->setColumnCount(2);
        enableColumnSort(lvrels[i]);
        place(lvrels[i], 150, tops[i] + 270, 5000, 850);
        m_hints.add(lvrels[i], u"Click for summary information"_s);
        onAction(lvrels[i], &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem *item) {
            // The key is "N", the number and a tail that keeps keys apart.
            enquire(item->data(0, Qt::UserRole).toString().mid(1).section(u'_', 0, 0).toLongLong());
        });
    }

    auto *ped = make<QGroupBox>(page, "FRPedigree", u"Short Pedigree"_s);
    place(ped, 5500, 80, 3700, 4550);
    labbrsire = make<QLabel>(ped, "labbrsire", u"Sire"_s);
    place(labbrsire, 150, 300, 3400, 270);
    labbrdam = make<QLabel>(ped, "labbrdam", u"Dam"_s);
    place(labbrdam, 150, 2250, 3400, 270);
    const int lefts[] = {150, 150, 700, 700, 700, 700};
    const int tops2[] = {600, 2550, 1150, 1650, 3100, 3600};
    auto *lines = new ShortPedigreeLines(lblbrrel, ped);
    place(lines, 0, 0, 3700, 4550);
    for (int i = 0; i < 6; ++i) {
        lblbrrel[i] = make<QPushButton>(ped, ("lblbrrel_" + std::to_string(i)).c_str());
        lblbrrel[i]->setFlat(true);
        // Each animal in a box of its own, as on the pedigree window.
        lblbrrel[i]->setStyleSheet(u"text-align: left; padding-left: 4px; border: 1px solid palette(mid);"_s);
        place(lblbrrel[i], lefts[i], tops2[i], 3550 - lefts[i], 380);
        m_hints.add(lblbrrel[i], u"Click for summary information"_s);
        onAction(lblbrrel[i], &QPushButton::clicked, this, [this, i] {
            if (m_pedigree[i].number > 0)
                enquire(m_pedigree[i].number);
        });
    }
}

void StockRecordPanel::buildPanels()
{
    // Eleven buttons in two rows of six places, each wide enough for its caption.
    PbBrowse = make<QWidget>(this, "PbBrowse");
    place(PbBrowse, 120, 5260, 9360, 880);
    const struct
    {
        const char *name;
        QString caption, tip;
    } buttons[] = {
        {"CmdImages", u"&Images"_s, u"Display/Update Matings for Livestock"_s},
        {"CmdMatings", u"&Matings"_s, u"Display/Update Matings for Livestock"_s},
        {"CmdPrint", u"&Print"_s, u"Print Livestock Details"_s},
        {"CmdLitter", u"&Litter"_s, u"Show Offspring Statistics"_s},
        {"CmdAwards", u"&Award"_s, u"Display/Update Awards for Livestock"_s},
        {"CmdBreed", u"&Diary"_s, u"Display/Update diary for Livestock"_s},
        {"CmdPedigree", u"P&edigree"_s, u"Display pedigree for Livestock "_s},
        {"CmdBrowseRemove", u"D&elete"_s, u"Delete Livestock details"_s},
        {"CmdBrowseModify", u"&Update"_s, u"Update Livestock details"_s},
        {"CmdBrowseCancel", u"&Back"_s, u"Cancel browse function"_s},
        {"CmdGenes", u"&Genetics"_s, u"Display/Update Livestock Genetics"_s},
    };
    int at = 0;
    for (const auto &b : buttons) {
        auto *button = make<QPushButton>(PbBrowse, b.name, b.caption);
        button->setToolTip(b.tip);
        place(button, (at % 6) * 1570, (at / 6) * 460, 1510, 420);
        ++at;
        // Each of these opens its screen once that part of the program is there.
        button->setEnabled(false);
    }
    CmdPedigree = PbBrowse->findChild<QPushButton *>(u"CmdPedigree"_s);
    CmdBrowseRemove = PbBrowse->findChild<QPushButton *>(u"CmdBrowseRemove"_s);
    CmdBrowseModify = PbBrowse->findChild<QPushButton *>(u"CmdBrowseModify"_s);
    CmdBrowseCancel = PbBrowse->findChild<QPushButton *>(u"CmdBrowseCancel"_s);
    CmdMatings = PbBrowse->findChild<QPushButton *>(u"CmdMatings"_s);
    auto *awards = PbBrowse->findChild<QPushButton *>(u"CmdAwards"_s);
    auto *diary = PbBrowse->findChild<QPushButton *>(u"CmdBreed"_s);
    for (QPushButton *b : {CmdPedigree, CmdBrowseRemove, CmdBrowseModify, CmdBrowseCancel, awards, diary})
        b->setEnabled(true);
    // The screens of the animal in hand: each works on CurrentStockNo, and what they wrote
    // to the animal (its best award) shows when they close.
    const auto openScreen = [this](auto open) {
        const RecordView v = m_records.Stock_Reposition();
        m_session.CurrentStockNo = v.number;
        m_session.CurrentStockName = v.name;
        open();
        m_records.refreshCurrent();
        display();
    };
    onAction(CmdMatings, &QPushButton::clicked, this, [this, openScreen] {
        openScreen([this] {
            FmMatings matings(m_session, m_prompts, window());
            if (matings.start())
                Modal::exec(matings);
        });
    });
    onAction(awards, &QPushButton::clicked, this, [this, openScreen] {
        openScreen([this] {
            FmAwards screen(m_session, m_prompts, window());
            Modal::exec(screen);
        });
    });
    onAction(diary, &QPushButton::clicked, this, [this, openScreen] {
        openScreen([this] {
            FmBrNote screen(m_session, m_prompts, window());
            Modal::exec(screen);
        });
    });
    auto *images = PbBrowse->findChild<QPushButton *>(u"CmdImages"_s);
    images->setEnabled(true);
    onAction(images, &QPushButton::clicked, this, [this, openScreen] {
        openScreen([this] {
            FmImages screen(m_session, m_prompts, m_session.CurrentStockNo, m_session.CurrentStockName, window());
            Modal::exec(screen);
        });
    });
    auto *print = PbBrowse->findChild<QPushButton *>(u"CmdPrint"_s);
    print->setEnabled(true);
    onAction(print, &QPushButton::clicked, this, [this, openScreen] {
        openScreen([this] {
            FmPrint screen(m_session, m_session.CurrentStockNo, window());
            Modal::exec(screen);
        });
    });
    CmdLitter = PbBrowse->findChild<QPushButton *>(u"CmdLitter"_s);
    onAction(CmdLitter, &QPushButton::clicked, this, [this] {
        const RecordView v = m_records.Stock_Reposition();
        m_session.CurrentStockNo = v.number;
        m_session.CurrentStockName = v.name;
        // A buck's young have him as their sire; any other animal's have it as their dam.
        const bool male = v.sex == m_session.MaleWord;
        {
            FmStats stats(m_session, m_prompts, male ? v.number : -1, male ? -1 : v.number, v.name, window());
            if (stats.start())
                Modal::exec(stats);
        }
        display();
    });
    onAction(CmdPedigree, &QPushButton::clicked, this, [this] {
        const RecordView v = m_records.Stock_Reposition();
        m_session.CurrentStockNo = v.number;
        m_session.CurrentStockName = v.name;
        fmPedigree pedigree(m_session, m_prompts, window());
        if (pedigree.start())
            Modal::exec(pedigree);
        display();
    });
    CmdGenes = PbBrowse->findChild<QPushButton *>(u"CmdGenes"_s);
    onAction(CmdGenes, &QPushButton::clicked, this, [this] {
        if (!Ensure_Genetics_Loaded(m_session, m_prompts))
            return;
        const RecordView v = m_records.Stock_Reposition();
        {
            FmStockGenetics genetics(m_session, m_prompts, v.number, window());
            Modal::exec(genetics);
        }
        // The genotype text was written beside the record's cursor.
        m_records.refreshCurrent();
        display();
    });
    onAction(CmdBrowseRemove, &QPushButton::clicked, this, &StockRecordPanel::CmdBrowseRemove_Click);
    onAction(CmdBrowseModify, &QPushButton::clicked, this, &StockRecordPanel::CmdBrowseModify_Click);
    onAction(CmdBrowseCancel, &QPushButton::clicked, this, &StockRecordPanel::close);

    Stock = make<QWidget>(this, "Stock");
    place(Stock, 120, 6200, 9360, 360);
    CmdPrevious = make<QPushButton>(Stock, "CmdPrevious", u"<"_s);
    CmdPrevious->setToolTip(u"Display Next/Previous stock records"_s);
    place(CmdPrevious, 0, 0, 700, 360);
    LblStock = make<QLabel>(Stock, "LblStock");
    LblStock->setAlignment(Qt::AlignCenter);
    LblStock->setFrameShape(QFrame::Panel);
    LblStock->setFrameShadow(QFrame::Sunken);
    place(LblStock, 750, 0, 7860, 360);
    CmdNext = make<QPushButton>(Stock, "CmdNext", u">"_s);
    CmdNext->setToolTip(u"Display Next/Previous stock records"_s);
    place(CmdNext, 8660, 0, 700, 360);
    onAction(CmdNext, &QPushButton::clicked, this, [this] {
        if (m_records.moveNext())
            display();
    });
    onAction(CmdPrevious, &QPushButton::clicked, this, [this] {
        if (m_records.movePrevious())
            display();
    });
    // In place of the stud's order: the search's list of results, record by record.
    pbDataSearch = make<QWidget>(this, "pbDataSearch");
    place(pbDataSearch, 120, 6200, 9360, 360);
    for (int i = 0; i < 2; ++i) {
        auto *b = make<QPushButton>(pbDataSearch, i == 0 ? "CmdDataSearch_0" : "CmdDataSearch_1",
                                    i == 0 ? u"<"_s : u">"_s);
        b->setToolTip(u"Display Next/Previous search results"_s);
        place(b, i == 0 ? 0 : 8660, 0, 700, 360);
        onAction(b, &QPushButton::clicked, this, [this, i] {
            if (onDataSearch)
                onDataSearch(i == 1);
        });
    }
    pbDataSearch->hide();

    PbModify = make<QWidget>(this, "PbModify");
    place(PbModify, 120, 5260, 9360, 420);
    auto *modifyOk = make<QPushButton>(PbModify, "CmdModifyOK", u"&Ok"_s);
    modifyOk->setToolTip(u"Accept changes "_s);
    place(modifyOk, 5900, 0, 1600, 420);
    auto *modifyCancel = make<QPushButton>(PbModify, "cmdModifyCancel", u"&Cancel"_s);
    place(modifyCancel, 7700, 0, 1600, 420);
    onAction(modifyOk, &QPushButton::clicked, this, &StockRecordPanel::CmdModifyOK_Click);
    onAction(modifyCancel, &QPushButton::clicked, this, &StockRecordPanel::cmdModifyCancel_Click);

    pbNew = make<QWidget>(this, "pbNew");
    place(pbNew, 120, 5260, 9360, 420);
    auto *newOk = make<QPushButton>(pbNew, "CmdNewUpdate", u"&Ok"_s);
    newOk->setToolTip(u"Accept new record"_s);
    place(newOk, 5900, 0, 1600, 420);
    auto *newCancel = make<QPushButton>(pbNew, "CmdNewCancel", u"&Cancel"_s);
    place(newCancel, 7700, 0, 1600, 420);
    onAction(newOk, &QPushButton::clicked, this, &StockRecordPanel::CmdNewUpdate_Click);
    onAction(newCancel, &QPushButton::clicked, this, &StockRecordPanel::CmdNewCancel_Click);
}

void StockRecordPanel::applyStud()
{
    const Session &s = m_session;
    LabId->setText(s.IdWord);
    LabId2->setText(s.Id2Word);
    labid3->setText(s.Id3Word);
    LabId2->setVisible(!s.Id2Word.isEmpty());
    TxtId2->setVisible(!s.Id2Word.isEmpty());
    labid3->setVisible(!s.Id3Word.isEmpty());
    TxtId3->setVisible(!s.Id3Word.isEmpty());
    LabColour->setText(s.ColourWord);
    LabRSire->setText(s.FatherWord);
    LabRDam->setText(s.MotherWord);
    labbrsire->setText(s.FatherWord);
    labbrdam->setText(s.MotherWord);
    optbrsex[0]->setText(s.MaleWord);
    optbrsex[1]->setText(s.FemaleWord);
    LblWeightUnits->setText(s.WeightUnit);
    CmdGenes->setEnabled(s.GeneticsOn && !s.GeneticsFile.isEmpty());
    CmdPedigree->setToolTip(u"Display "_s + s.PedigreeWord + u" for livestock"_s);
    m_hints.add(TxtId1, u"Enter "_s + s.IdWord + u" (if applicable)"_s);
    m_hints.add(TxtId2, u"Enter "_s + s.Id2Word + u" (if applicable)"_s);
    m_hints.add(TxtId3, u"Enter "_s + s.Id3Word + u" (if applicable)"_s);
    m_hints.add(RSex, u"Select Sex ("_s + s.MaleWord + u" or "_s + s.FemaleWord + u")"_s);
    Apply_Date_Mask(RDOB, s.Dates);
    Apply_Date_Mask(RDOD, s.Dates);
    {
        const QSignalBlocker block(cmbbrshow);
        cmbbrshow->clear();
        cmbbrshow->addItems(detailChoices(s.IdWord, s.Id2Word, s.Id3Word));
        cmbbrshow->setCurrentText(u"Sex"_s);
    }
    fillLists();
}

void StockRecordPanel::fillLists()
{
    // Lists of a large stud hold tens of thousands of names: a list is refilled only when
    // the stud's list is no longer the one it shows.
    const StudLists &l = m_session.Lists;
    const auto refill = [](QComboBox *c, const QStringList &items, QStringList &shown) {
        if (items == shown && c->count() == items.size())
            return;
        shown = items;
        const QSignalBlocker block(c);
        const QString text = c->currentText();
        c->clear();
        c->addItems(items);
        if (c->isEditable())
            c->setEditText(text);
    };
    refill(Rtype, l.breeds, m_shown.breeds);
    refill(RColour, l.colours, m_shown.colours);
    refill(RBreeder, l.breeders, m_shown.breeders);
    refill(RStatus, l.statuses, m_shown.statuses);
    refill(RSex, l.sexes, m_shown.sexes);
    // The sire and dam lists are read only when a record is open.
    if (m_state != State::Closed)
        fillParentLists();
}

void StockRecordPanel::fillParentLists()
{
    const QSignalBlocker a(RSire), b(RDam);
    m_sires->setList(m_records.parentList(true));
    m_sires->setAddition(m_records.parentAddition(true));
    m_dams->setList(m_records.parentList(false));
    m_dams->setAddition(m_records.parentAddition(false));
}

void StockRecordPanel::setState(State state)
{
    if (state == State::Adding)
        m_fromSearch = false;
    m_state = state;
    const bool open = state != State::Closed;
    setVisible(open);
    PbBrowse->setVisible(state == State::Browsing);
    Stock->setVisible(state == State::Browsing && !m_fromSearch);
    pbDataSearch->setVisible(state == State::Browsing && m_fromSearch);
    PbModify->setVisible(state == State::Updating);
    pbNew->setVisible(state == State::Adding);
    lockFields(state == State::Browsing || state == State::Closed);
    for (QWidget *panel : {pbNew, PbModify})
        if (auto *ok = panel->findChild<QPushButton *>())
            ok->setDefault(panel->isVisible());
    if (onOpened)
        onOpened(open);
}

void StockRecordPanel::lockFields(bool locked)
{
    for (QLineEdit *e : {TxtName, TxtId1, TxtId2, TxtId3, RWeight, RGenotype, RDOB, RDOD})
        e->setReadOnly(locked);
    // Genotypes change through the genetics screens once genetics is on.
    RGenotype->setReadOnly(locked || m_session.GeneticsOn);
    for (QPlainTextEdit *e : {RNotes, RHealth})
        e->setReadOnly(locked);
    for (QComboBox *c : {Rtype, RColour, RBreeder, RStatus, RArchive, RSex, RSire, RDam}) {
        c->setEnabled(!locked);
        if (c->isEditable())
            c->lineEdit()->setReadOnly(locked);
    }
    const QString style = locked ? u"background: palette(window);"_s : u"background: white;"_s;
    for (QWidget *w : std::initializer_list<QWidget *>{TxtName, TxtId1, TxtId2, TxtId3, RWeight, RDOB, RDOD,
                                                       RGenotype, RNotes, RHealth})
        w->setStyleSheet(style);
    pbSire->setToolTip(locked ? u"Show Sire Information"_s : u"Search for Sire"_s);
    pbdam->setToolTip(locked ? u"Show Dam Information"_s : u"Search for Dam"_s);
    pbSire->setText(locked ? u"?"_s : u"..."_s);
    pbdam->setText(locked ? u"?"_s : u"..."_s);
}

void StockRecordPanel::display()
{
    const RecordView v = m_records.Stock_Reposition();
    fillLists();
    TxtName->setText(v.name);
    TxtId1->setText(v.id1);
    TxtId2->setText(v.id2);
    TxtId3->setText(v.id3);
    Rtype->setEditText(v.breed);
    RColour->setEditText(v.colour);
    RBreeder->setEditText(v.breeder);
    RStatus->setEditText(v.status);
    RArchive->setCurrentIndex(RArchive->findText(v.archive));
    RSex->setCurrentIndex(RSex->findText(v.sex));
    RDOB->setText(v.dob);
    RDOD->setText(v.dod);
    TxtAge->setText(v.age);
    RWeight->setText(v.weight);
    RGenotype->setText(v.genotype);
    RGenotype->setCursorPosition(0); // a long genotype shows from its first gene
    RHealth->setPlainText(v.health);
    RNotes->setPlainText(v.notes);
    RSire->setCurrentIndex(v.sireIndex);
    RDam->setCurrentIndex(v.damIndex);
    pbSire->setEnabled(v.sireButton);
    pbdam->setEnabled(v.damButton);
    CmdMatings->setEnabled(v.matingsEnabled);
    CmdLitter->setEnabled(v.litterEnabled);
    LblStock->setText(v.name);
    LblCoi->setText(animalCoiLine(m_session, v.number));
    LblCoi->setToolTip(LblCoi->text());
    m_relatives = m_records.relatives();
    {
        const QSignalBlocker a(chkbrarchive), b(optbrsex[2]), c(cmbbrshow);
        chkbrarchive->setChecked(false);
        optbrsex[2]->setChecked(true);
        cmbbrshow->setCurrentText(u"Sex"_s);
    }
    m_pedigree = shortPedigree(
        m_session.Stud->handle(), v.sire, v.dam, [this](const QDate &d) { return m_session.Dates.format(d); },
        m_session.WeightUnit);
    showRelatives();
    showShortPedigree();
}

void StockRecordPanel::showRelatives()
{
    const Session &s = m_session;
    const int sexOption = optbrsex[0]->isChecked() ? 0 : optbrsex[1]->isChecked() ? 1 : 2;
    const QString choice = cmbbrshow->currentText();
    for (int i = 0; i < 3; ++i) {
        QTreeWidget *tree = lvrels[i];
        tree->clear();
        tree->setHeaderLabels({u"Name"_s, choice});
        tree->setProperty("sortColumn", QVariant());
        QList<QTreeWidgetItem *> items;
        int tail = 0;
        for (const RelativeRow &r : m_relatives.lists[i]) {
            if (!relativeShown(r, chkbrarchive->isChecked(), sexOption, s.MaleWord, s.FemaleWord))
                continue;
            auto *item = new QTreeWidgetItem(
                {r.name, relativeDetail(r, choice, s.IdWord, s.Id2Word, s.Id3Word)});
            item->setData(0, Qt::UserRole, u"N%1_%2"_s.arg(r.number).arg(++tail));
            items << item;
        }
        tree->addTopLevelItems(items);
        // The name column is as wide as the widest name, and never less than half the list.
        tree->resizeColumnToContents(0);
        tree->setColumnWidth(0, std::max(tree->columnWidth(0), tree->width() / 2));
    }
}

void StockRecordPanel::showShortPedigree()
{
    const Session &s = m_session;
    const QString choice = cmbbrshow->currentText();
    for (int i = 0; i < 6; ++i) {
        const RelativeRow &r = m_pedigree[i];
        QString text = r.name;
        const QString detail = relativeDetail(r, choice, s.IdWord, s.Id2Word, s.Id3Word);
        if (!detail.isEmpty())
            text += u" ("_s + detail + u')';
        lblbrrel[i]->setText(text);
    }
}

StockForm StockRecordPanel::readForm() const
{
    StockForm f;
    f.name = TxtName->text();
    f.id1 = TxtId1->text();
    f.id2 = TxtId2->text();
    f.id3 = TxtId3->text();
    f.breed = Rtype->currentText();
    f.colour = RColour->currentText();
    f.breeder = RBreeder->currentText();
    f.status = RStatus->currentText();
    f.archive = RArchive->currentText();
    f.sex = RSex->currentText();
    f.dob = RDOB->displayText();
    f.dod = RDOD->displayText();
    f.weight = RWeight->text();
    f.health = RHealth->toPlainText();
    f.notes = RNotes->toPlainText();
    f.sire = ParentPick{RSire->currentIndex(), m_sires->numberAt(RSire->currentIndex())};
    f.dam = ParentPick{RDam->currentIndex(), m_dams->numberAt(RDam->currentIndex())};
    return f;
}

void StockRecordPanel::writeBack(const StockForm &f)
{
    // The refused or accepted record shows what validation made of it.
    if (f.name)
        TxtName->setText(*f.name);
    const auto combo = [](QComboBox *c, const std::optional<QString> &v) {
        if (v)
            c->setEditText(*v);
    };
    const int sire = RSire->currentIndex();
    const int dam = RDam->currentIndex();
    fillLists();
    RSire->setCurrentIndex(sire);
    RDam->setCurrentIndex(dam);
    combo(Rtype, f.breed);
    combo(RColour, f.colour);
    combo(RBreeder, f.breeder);
    combo(RStatus, f.status);
    if (f.weight)
        RWeight->setText(*f.weight);
}

void StockRecordPanel::focusControl(const QString &name)
{
    if (auto *w = findChild<QWidget *>(name)) {
        tbsstock->setCurrentIndex(0);
        w->setFocus();
    }
}

bool StockRecordPanel::CmdBrowse_Click()
{
    HourglassScope wait(window());
    m_session.RepositionEnabled = false;
    m_fromSearch = false;
    if (!m_records.CmdBrowse()) {
        m_session.RepositionEnabled = true;
        return false;
    }
    setState(State::Browsing);
    tbsstock->setCurrentIndex(0);
    display();
    m_session.RepositionEnabled = true;
    return true;
}

bool StockRecordPanel::showFoundAnimal(qint64 number)
{
    HourglassScope wait(window());
    if (!m_records.showAnimal(number))
        return false;
    m_fromSearch = true;
    if (m_state != State::Browsing)
        setState(State::Browsing);
    tbsstock->setCurrentIndex(0);
    display();
    return true;
}

void StockRecordPanel::CmdNew_Click()
{
    m_fromSearch = false;
    {
        HourglassScope wait(window());
        // The new row is begun first: when the stud cannot give it a number the screen
        // stays as it was.
        showNew(m_records.CmdNew());
    }
    TxtName->setFocus();
}

void StockRecordPanel::Next_Litter_Offspring()
{
    {
        HourglassScope wait(window());
        showNew(m_records.Next_Litter_Offspring());
        // The day of birth and the parents of a litter do not change between its young.
        RDOB->setReadOnly(true);
        RDOB->setStyleSheet(u"background: palette(window);"_s);
        RSire->setEnabled(false);
        RDam->setEnabled(false);
        pbSire->setEnabled(false);
        pbdam->setEnabled(false);
        if (m_session.Dates.parse(RDOB->displayText()))
            updateAge();
    }
    TxtName->setFocus();
}

void StockRecordPanel::showNew(const StockForm &f)
{
    setState(State::Adding);
    tbsstock->setCurrentIndex(0);
    for (QLineEdit *e : {TxtName, TxtId1, TxtId2, TxtId3, RGenotype, TxtAge})
        e->clear();
    RNotes->clear();
    RHealth->clear();
    LblCoi->clear();
    fillLists();
    Rtype->setEditText(f.breed.value_or(QString()));
    RColour->setEditText(f.colour.value_or(QString()));
    RBreeder->setEditText(f.breeder.value_or(QString()));
    RStatus->setEditText(f.status.value_or(QString()));
    RArchive->setCurrentText(f.archive.value_or(u"No"_s));
    RSex->setCurrentIndex(0);
    const QString dob = f.dob.value_or(QString());
    RDOB->setText(dob == m_session.Dates.BlankDate ? QString() : dob);
    RDOD->setText(QString());
    RWeight->clear();
    RSire->setCurrentIndex(f.sire ? f.sire->position : 0);
    RDam->setCurrentIndex(f.dam ? f.dam->position : 0);
    pbSire->setEnabled(RSire->count() > 0);
    pbdam->setEnabled(RDam->count() > 0);
    LblStock->clear();
    for (QTreeWidget *t : lvrels)
        t->clear();
    for (QPushButton *b : lblbrrel)
        b->setText(QString());
}

void StockRecordPanel::saveRecord(bool adding)
{
    // A press that arrives after the record has gone (a queued press of Save) does nothing.
    if (m_state != (adding ? State::Adding : State::Updating))
        return;
    tbsstock->setCurrentIndex(0);
    StockForm f = readForm();
    QString focus;
    StockRecords::Save result;
    {
        HourglassScope wait(window());
        result = adding ? m_records.CmdNewUpdate(f, &focus) : m_records.CmdModifyOK(f, &focus);
    }
    writeBack(f);
    switch (result) {
    case StockRecords::Save::Refused:
        focusControl(focus);
        return;
    case StockRecords::Save::NextOffspring:
        Next_Litter_Offspring();
        return;
    case StockRecords::Save::LitterEnded:
        close();
        return;
    case StockRecords::Save::Saved:
        break;
    }
    setState(State::Browsing);
    display();
}

void StockRecordPanel::CmdNewUpdate_Click()
{
    saveRecord(true);
}

void StockRecordPanel::CmdNewCancel_Click()
{
    if (m_state != State::Adding)
        return;
    m_records.CmdNewCancel();
    close();
}

void StockRecordPanel::CmdBrowseModify_Click()
{
    m_records.CmdBrowseModify();
    setState(State::Updating);
    TxtName->setFocus();
}

void StockRecordPanel::CmdModifyOK_Click()
{
    saveRecord(false);
}

void StockRecordPanel::cmdModifyCancel_Click()
{
    m_records.cmdModifyCancel();
    setState(State::Browsing);
    display();
}

void StockRecordPanel::CmdBrowseRemove_Click()
{
    const StockRecords::Removed result = m_records.CmdBrowseRemove();
    if (result == StockRecords::Removed::Kept)
        return;
    if (result == StockRecords::Removed::StockEmpty) {
        fillLists();
        close();
        return;
    }
    display();
}

void StockRecordPanel::close()
{
    m_records.RestoreParentLists();
    setState(State::Closed);
    if (onClosed)
        onClosed();
}

void StockRecordPanel::enquire(qint64 number)
{
    fmStockenq enquiry(m_session, number, window());
    Modal::exec(enquiry);
}

void StockRecordPanel::pickParent(bool sire)
{
    if (m_state == State::Browsing) {
        const RecordView v = m_records.Stock_Reposition();
        const QVariant parent = sire ? v.sire : v.dam;
        if (!parent.isNull() && parent.toLongLong() > 0)
            enquire(parent.toLongLong());
        display();
        return;
    }
    m_session.QuickSearchSex = sire ? m_session.MaleWord : m_session.FemaleWord;
    FmQuickSrch search(m_session, m_prompts, m_session.QuickSearchSex, window());
    Modal::exec(search);
    if (search.QuickSearchNumber == -1)
        return;
    const int other = sire ? RDam->currentIndex() : RSire->currentIndex();
    const int index = m_records.addParentChoice(sire, search.QuickSearchName, search.QuickSearchNumber);
    fillLists();
    (sire ? RSire : RDam)->setCurrentIndex(index);
    (sire ? RDam : RSire)->setCurrentIndex(other);
}

void StockRecordPanel::updateAge()
{
    const auto dob = m_session.Dates.parse(RDOB->displayText());
    if (!dob) {
        TxtAge->clear();
        return;
    }
    const auto dod = m_session.Dates.parse(RDOD->displayText());
    TxtAge->setText(AgeText(*dob, RStatus->currentText(), dod.value_or(QDate()), m_session.clock->today(),
                            m_session.OptionsCache));
}

bool StockRecordPanel::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        auto *key = static_cast<QKeyEvent *>(event);
        if (watched == TxtName && key->modifiers() == Qt::AltModifier && !TxtName->isReadOnly()) {
            if (key->key() == Qt::Key_P) {
                TxtName->setText(m_session.NamePrefix + u' ' + TxtName->text());
                TxtName->setCursorPosition(int(m_session.NamePrefix.size()) + 1);
                return true;
            }
            if (key->key() == Qt::Key_S) {
                TxtName->setText(TxtName->text() + u' ' + m_session.NameSuffix);
                return true;
            }
        }
    } else if (event->type() == QEvent::FocusOut && (watched == TxtName || watched == TxtId1) &&
               movedWithinWindow(event)) {
        // A likely duplicate is reported while the new animal is typed in.
        const QWidget *next = QApplication::focusWidget();
        // The check reads the stud: a fault of it is told like that of any action.
        runAction(QString(), [&] {
            const QString nextName = next ? next->objectName() : QString();
            const StockRecords::NameLeft left = watched == TxtName
                                                    ? m_records.nameLeft(TxtName->text(), TxtId1->text(), nextName)
                                                    : m_records.idLeft(TxtName->text(), TxtId1->text(), nextName);
            switch (left) {
            case StockRecords::NameLeft::CancelNew:
                QTimer::singleShot(0, this, [this] { runAction(u"Cancel"_s, [this] { CmdNewCancel_Click(); }); });
                break;
            case StockRecords::NameLeft::SaveNew:
                QTimer::singleShot(0, this, [this] { runAction(u"Ok"_s, [this] { CmdNewUpdate_Click(); }); });
                break;
            case StockRecords::NameLeft::Stay:
                break;
            }
        });
    } else if (event->type() == QEvent::FocusOut && (watched == RDOB || watched == RDOD)) {
        auto *field = static_cast<QLineEdit *>(watched);
        const QWidget *next = QApplication::focusWidget();
        const bool cancelling = next && next->objectName() == u"cmdModifyCancel";
        if (!cancelling && !field->isReadOnly() && field->displayText() != m_session.Dates.BlankDate) {
            if (!Is_Valid_Date(field->displayText(), m_session.Dates, m_prompts))
                QTimer::singleShot(0, field, [field] { field->setFocus(); });
            else
                updateAge();
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace tarvex
