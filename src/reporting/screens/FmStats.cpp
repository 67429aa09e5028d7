#include "FmStats.h"

#include "platform/QPainterSurface.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/PrintJob.h"

#include <QGroupBox>
#include <QHeaderView>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

namespace {
constexpr int kWidth = 9000, kHeight = 6300;
} // namespace

FmStats::FmStats(Session &session, Prompts &prompts, qint64 sire, qint64 dam, const QString &name, QWidget *parent)
    : QDialog(parent), m_stats(session, prompts), m_sire(sire), m_dam(dam)
{
    setObjectName(u"FmStats"_s);
    setWindowTitle(statsTitle(name));

    const std::array<StatsOption, 5> options = statsOptions(session.ColourWord);
    for (int i = 0; i < 5; ++i) {
        OStatType[i] = make<QRadioButton>(this, ("OStatType_" + std::to_string(i)).c_str(), options[i].caption);
        OStatType[i]->setToolTip(options[i].tip);
        place(OStatType[i], 150 + i * 1750, 150, 1650, 330);
        onAction(OStatType[i], &QRadioButton::clicked, this, [this, i] { OStatType_Click(i); });
    }

    FrmSum = make<QGroupBox>(this, "FrmSum");
    place(FrmSum, 120, 600, 8760, 4800);
    GrSum = make<QTableWidget>(FrmSum, "GrSum");
    place(GrSum, 120, 300, 8520, 4380);
    GrSum->verticalHeader()->hide();
    GrSum->setEditTriggers(QAbstractItemView::NoEditTriggers);
    GrSum->setSelectionMode(QAbstractItemView::NoSelection);
    // Each column as wide as its texts, the dates included, at whatever size the form's font
    // takes as the window grows and shrinks.
    GrSum->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    // The grid does not sort: its heads are not buttons.
    GrSum->horizontalHeader()->setSectionsClickable(false);

    auto *print = make<QPushButton>(this, "CmdPrint", u"&Print"_s);
    place(print, 5600, 5600, 1500, 420);
    auto *cancel = make<QPushButton>(this, "CmdCancel", u"&Back"_s);
    cancel->setToolTip(u"Leave Statistics"_s);
    place(cancel, 7380, 5600, 1500, 420);
    onAction(print, &QPushButton::clicked, this, [this] {
        PrintJob job(this, windowTitle(), [this](QPagedPaintDevice *device) { return printTable(device); });
        job.preview();
    });
    onAction(cancel, &QPushButton::clicked, this, &QDialog::reject);

    resize(Design::px(kWidth), Design::px(kHeight));
    FormResizeSetup(this, QSize(Design::px(kWidth), Design::px(kHeight)));
}

bool FmStats::start()
{
    if (!m_stats.load(m_sire, m_dam))
        return false;
    // The litters first: the other views count them by what their young are.
    OStatType[int(StatsView::Summary)]->setChecked(true);
    OStatType_Click(int(StatsView::Summary));
    return true;
}

bool FmStats::printTable(QPagedPaintDevice *device) const
{
    QPainterSurface page(device);
    printStatsTable(page, windowTitle(), m_table);
    return true;
}

void FmStats::OStatType_Click(int index)
{
    m_table = m_stats.table(StatsView(index));
    FrmSum->setTitle(m_table.caption);
    GrSum->clear();
    GrSum->setColumnCount(int(m_table.heads.size()));
    GrSum->setRowCount(int(m_table.rows.size()));
    GrSum->setHorizontalHeaderLabels(m_table.heads);
    QFont bold = GrSum->font();
    bold.setBold(true);
    const int firstSummary = int(m_table.rows.size()) - m_table.summaryRows;
    for (int r = 0; r < m_table.rows.size(); ++r) {
        const QStringList &row = m_table.rows.at(r);
        for (int c = 0; c < m_table.heads.size(); ++c) {
            auto *item = new QTableWidgetItem(row.value(c));
            if (m_table.rightAligned.value(c))
                item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            if (r >= firstSummary)
                item->setFont(bold);
            GrSum->setItem(r, c, item);
        }
    }
}

} // namespace tarvex
