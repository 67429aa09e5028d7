#include "FmInbreeding.h"

#include "core/Options.h"
#include "pedigree/InbreedingTable.h"
#include "pedigree/StudInbreeding.h"
#include "stock/screens/fmStockenq.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/ListToSheet.h"
#include "ui/WorkProgress.h"

#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

namespace {
constexpr int kWidth = 9600;
constexpr int kHeight = 7200;
} // namespace

FmInbreeding::FmInbreeding(Session &session, Prompts &prompts, QWidget *parent)
    : QDialog(parent), m_session(session), m_prompts(prompts), m_table(new InbreedingTable(this))
{
    setObjectName(u"FmInbreeding"_s);
    setWindowTitle(u"Inbreeding"_s);
    LblSummary = make<QLabel>(this, "LblSummary");
    place(LblSummary, 120, 120, 9360, 300);
    LvInbreeding = make<QTableView>(this, "LvInbreeding");
    LvInbreeding->setModel(m_table);
    LvInbreeding->setSelectionBehavior(QAbstractItemView::SelectRows);
    LvInbreeding->setSelectionMode(QAbstractItemView::SingleSelection);
    LvInbreeding->setEditTriggers(QAbstractItemView::NoEditTriggers);
    LvInbreeding->setSortingEnabled(true);
    LvInbreeding->sortByColumn(InbreedingTable::Number, Qt::AscendingOrder);
    LvInbreeding->verticalHeader()->hide();
    // Rows of one height, so that a million of them scroll as easily as ten.
    LvInbreeding->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    LvInbreeding->horizontalHeader()->setSectionResizeMode(InbreedingTable::Name, QHeaderView::Stretch);
    place(LvInbreeding, 120, 480, 9360, 6000);

    CmdExcel = make<QPushButton>(this, "CmdExcel", u"Copy to Excel"_s);
    CmdExcel->setToolTip(u"Copy the table to a spreadsheet"_s);
    place(CmdExcel, 5900, 6640, 1700, 420);
    CmdBack = make<QPushButton>(this, "CmdBack", u"&Back"_s);
    CmdBack->setToolTip(u"Close the table"_s);
    place(CmdBack, 7780, 6640, 1700, 420);
    CmdExcel->setEnabled(false);

    FrmProgress = make<QGroupBox>(this, "FrmProgress");
    place(FrmProgress, 2400, 2600, 4800, 1400);
    Lblprogress = make<QLabel>(FrmProgress, "Lblprogress");
    place(Lblprogress, 150, 150, 4500, 300);
    Prb = make<QProgressBar>(FrmProgress, "Prb");
    Prb->setTextVisible(false);
    place(Prb, 150, 500, 4500, 270);
    CmdStop = make<QPushButton>(FrmProgress, "CmdStop", u"Cancel"_s);
    place(CmdStop, 3450, 880, 1200, 400);
    FrmProgress->hide();

    onAction(CmdExcel, &QPushButton::clicked, this, &FmInbreeding::copyToSpreadsheet);
    onAction(CmdBack, &QPushButton::clicked, this, &QDialog::reject);
    onAction(LvInbreeding, &QTableView::activated, this, [this](const QModelIndex &index) {
        fmStockenq::showRelative(m_session, m_table->row(index.row()).number, this);
    });

    resize(Design::px(kWidth), Design::px(kHeight));
    FormResizeSetup(this, QSize(Design::px(kWidth), Design::px(kHeight)));
}

void FmInbreeding::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (m_started)
        return;
    m_started = true;
    // Worked out once the window is up, so that the bar is seen.
    QTimer::singleShot(0, this, [this] { runAction(windowTitle(), [this] { fill(); }); });
}

bool FmInbreeding::fill()
{
    if (!m_session.studOpen())
        return false;
    const int generations = inbreedingGenerations(Options(m_session));
    PedigreeCache &cache = pedigreeCache(m_session);
    auto rows = cache.studTable(*m_session.Stud, generations);
    if (!rows) {
        std::vector<StudInbreedingRow> worked;
        FrmProgress->show();
        FrmProgress->raise();
        try {
            WorkProgress progress(this, Prb, {Lblprogress}, CmdStop);
            worked = Stud_Inbreeding(m_session.Stud->handle(), generations, progress);
            if (progress.cancelled()) {
                FrmProgress->hide();
                LblSummary->setText(u"Cancelled"_s);
                return false;
            }
        } catch (const PedigreeLoop &loop) {
            FrmProgress->hide();
            const QString text = pedigreeLoopText(m_session.Stud->handle(), loop.number());
            LblSummary->setText(text);
            m_prompts.show(text, u"Inbreeding"_s, Prompts::Icon::Exclamation);
            return false;
        }
        FrmProgress->hide();
        rows = cache.keepStudTable(*m_session.Stud, generations, std::move(worked));
    }
    m_table->setRows(rows);
    m_table->sort(LvInbreeding->horizontalHeader()->sortIndicatorSection(),
                  LvInbreeding->horizontalHeader()->sortIndicatorOrder());
    LblSummary->setText(m_table->summary());
    // Sized for the font the window has grown to.
    LvInbreeding->horizontalHeader()->setFont(LvInbreeding->font());
    LvInbreeding->verticalHeader()->setDefaultSectionSize(LvInbreeding->fontMetrics().height() + 8);
    for (int c : {InbreedingTable::Number, InbreedingTable::Coi, InbreedingTable::Generations, InbreedingTable::Known})
        LvInbreeding->horizontalHeader()->resizeSection(
            c, LvInbreeding->horizontalHeader()->sectionSizeHint(c) + LvInbreeding->fontMetrics().averageCharWidth() * 2);
    CmdExcel->setEnabled(m_session.SpreadsheetAvailable && m_table->rowCount() > 0);
    return true;
}

void FmInbreeding::copyToSpreadsheet()
{
    clslvtoExcel &excel = clslvtoExcel::shared();
    excel.Heading(u"Inbreeding : "_s + m_session.StudName);
    excel.listviewA(m_table);
    excel.CreateExcel(this, m_prompts);
}

} // namespace tarvex
