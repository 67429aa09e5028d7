#include "FmLabels.h"

#include "core/Options.h"
#include "platform/QPainterSurface.h"
#include "store/StudDatabase.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/Hourglass.h"
#include "ui/PrintJob.h"
#include "ui/StatusHints.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QListView>
#include <QListWidget>
#include <QPushButton>
#include <QStatusBar>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

namespace {

constexpr int kWidth = 7200, kHeight = 6000;

QColor fromBgr(int bgr)
{
    return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF);
}

int toBgr(const QColor &colour)
{
    return colour.red() | (colour.green() << 8) | (colour.blue() << 16);
}

FmLabels::ColourChooser &colourChooser()
{
    static FmLabels::ColourChooser chooser;
    return chooser;
}

std::optional<int> systemColourDialog(QWidget *parent, int current)
{
    const QColor chosen = QColorDialog::getColor(fromBgr(current), parent, u"Select Color"_s);
    if (!chosen.isValid())
        return std::nullopt;
    return toBgr(chosen);
}

} // namespace

LabelStockModel::LabelStockModel(Database &db, QList<qint64> numbers, QObject *parent)
    : AnimalListModel(db, numbers, parent), m_numbers(std::move(numbers))
{
}

void LabelStockModel::setAllTicked(bool on)
{
    m_ticks.setAll(on);
    if (!m_numbers.isEmpty())
        Q_EMIT dataChanged(index(0), index(int(m_numbers.size()) - 1), {Qt::CheckStateRole});
}

Qt::ItemFlags LabelStockModel::flags(const QModelIndex &index) const
{
    return AnimalListModel::flags(index) | Qt::ItemIsUserCheckable;
}

QVariant LabelStockModel::data(const QModelIndex &index, int role) const
{
    if (role == Qt::CheckStateRole && index.isValid() && index.row() < m_numbers.size())
        return m_ticks.ticked(m_numbers.at(index.row())) ? Qt::Checked : Qt::Unchecked;
    return AnimalListModel::data(index, role);
}

bool LabelStockModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::CheckStateRole || !index.isValid() || index.row() >= m_numbers.size())
        return false;
    m_ticks.setTicked(m_numbers.at(index.row()), value.value<Qt::CheckState>() == Qt::Checked);
    Q_EMIT dataChanged(index, index, {Qt::CheckStateRole});
    return true;
}

void FmLabels::setColourChooser(ColourChooser chooser)
{
    colourChooser() = std::move(chooser);
}

FmLabels::FmLabels(Session &session, Prompts &prompts, QWidget *parent)
    : QDialog(parent), m_session(session), m_prompts(prompts), m_items(labelItemTexts(session))
{
    setObjectName(u"FmLabels"_s);
    setWindowTitle(labelsTitle());
    const LabelOptions saved = readLabelOptions(Options(session), m_items);

    place(make<QLabel>(this, "LblStock", u"Print Labels for:"_s), 120, 120, 3300, 300);
    LstStock = make<QListView>(this, "LstStock");
    LstStock->setUniformItemSizes(true);
    LstStock->setEditTriggers(QAbstractItemView::NoEditTriggers);
    place(LstStock, 120, 420, 3300, 4560);
    const LabelStockList animals = labelStockList(session.Stud->handle(), prompts);
    m_stock = new LabelStockModel(session.Stud->handle(), animals.numbers, LstStock);
    LstStock->setModel(m_stock);
    if (animals.cut)
        LstStock->setCurrentIndex(m_stock->index(0));
    ChkAllStock = make<QCheckBox>(this, "ChkAllStock", u"Include All"_s);
    place(ChkAllStock, 120, 5040, 3300, 330);

    place(make<QLabel>(this, "LblInclude", u"Include On Label"_s), 3600, 120, 3480, 300);
    LstInclude = make<QListWidget>(this, "LstInclude");
    place(LstInclude, 3600, 420, 3480, 2340);
    for (int i = 0; i < m_items.size(); ++i) {
        auto *item = new QListWidgetItem(m_items.at(i), LstInclude);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(saved.include[i] ? Qt::Checked : Qt::Unchecked);
    }
    ChkIncludeAll = make<QCheckBox>(this, "ChkIncludeAll", u"Include All"_s);
    place(ChkIncludeAll, 3600, 2820, 3480, 330);

    place(make<QLabel>(this, "LblLabSize", u"Size (Width X Height):"_s), 3600, 3240, 3480, 300);
    CmbLabSize = make<QComboBox>(this, "CmbLabSize");
    for (const LabelSize &size : kLabelSizes)
        CmbLabSize->addItem(QString::fromUtf16(size.caption));
    CmbLabSize->setCurrentIndex(saved.size);
    place(CmbLabSize, 3600, 3540, 2200, 340);

    auto *colours = make<QGroupBox>(this, "FrmColours", u"Colours"_s);
    place(colours, 3600, 3960, 3480, 1080);
    const QString sexes[] = {session.MaleWord, session.FemaleWord};
    for (int sex = 0; sex < 2; ++sex) {
        const std::string n = std::to_string(sex);
        const int y = 300 + sex * 390;
        place(make<QLabel>(colours, ("LblPrtCol_" + n).c_str(), sexes[sex]), 150, y + 30, 1350, 300);
        PbPrtCol[sex] = make<QFrame>(colours, ("PbPrtCol_" + n).c_str());
        PbPrtCol[sex]->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        PbPrtCol[sex]->setAutoFillBackground(true);
        place(PbPrtCol[sex], 1550, y, 600, 330);
        auto *select = make<QPushButton>(colours, ("CmdPrtCol_" + n).c_str(), u"Select"_s);
        select->setAutoDefault(false);
        place(select, 2250, y - 25, 1080, 380);
        onAction(select, &QPushButton::clicked, this, [this, sex] { CmdPrtCol_Click(sex); });
        showColour(sex, saved.colours[sex]);
    }

    auto *print = make<QPushButton>(this, "CmdPrint", u"&Print"_s);
    print->setToolTip(u"Print the Selected Details"_s);
    print->setDefault(true);
    place(print, 3600, 5130, 1560, 420);
    auto *cancel = make<QPushButton>(this, "CmdCancel", u"&Cancel"_s);
    cancel->setToolTip(u"Cancel Print"_s);
    place(cancel, 5520, 5130, 1560, 420);

    auto *bar = make<QStatusBar>(this, "SBar");
    bar->setSizeGripEnabled(false);
    place(bar, 0, kHeight - 330, kWidth, 330);
    auto *hints = new StatusHints(bar, this);
    hints->add(ChkAllStock, u"Include all non-archived livestock"_s);
    hints->add(ChkIncludeAll, u"Include all details on label"_s);
    hints->add(CmbLabSize, u"Select the hutch label size required"_s);
    hints->add(LstInclude, u"Select the details to print on the hutch label"_s);
    hints->add(LstStock, u"Select the Livestock to print labels for"_s);

    onAction(ChkAllStock, &QCheckBox::clicked, this, &FmLabels::ChkAllStock_Click);
    onAction(ChkIncludeAll, &QCheckBox::clicked, this, &FmLabels::ChkIncludeAll_Click);
    onAction(print, &QPushButton::clicked, this, &FmLabels::CmdPrint_Click);
    onAction(cancel, &QPushButton::clicked, this, &QDialog::reject);

    resize(Design::px(kWidth), Design::px(kHeight));
    FormResizeSetup(this, QSize(Design::px(kWidth), Design::px(kHeight)));
}

void FmLabels::ChkAllStock_Click()
{
    m_stock->setAllTicked(ChkAllStock->isChecked());
}

void FmLabels::ChkIncludeAll_Click()
{
    const Qt::CheckState state = ChkIncludeAll->isChecked() ? Qt::Checked : Qt::Unchecked;
    for (int i = 0; i < LstInclude->count(); ++i)
        LstInclude->item(i)->setCheckState(state);
}

void FmLabels::CmdPrtCol_Click(int sex)
{
    const ColourChooser &chooser = colourChooser() ? colourChooser() : ColourChooser(systemColourDialog);
    if (const std::optional<int> colour = chooser(this, m_colours[sex]))
        showColour(sex, *colour);
}

void FmLabels::showColour(int sex, int colour)
{
    m_colours[sex] = colour;
    QPalette swatch = PbPrtCol[sex]->palette();
    swatch.setColor(QPalette::Window, fromBgr(colour));
    PbPrtCol[sex]->setPalette(swatch);
}

LabelOptions FmLabels::chosen() const
{
    LabelOptions o;
    for (int i = 0; i < kLabelItemCount && i < LstInclude->count(); ++i)
        o.include[i] = LstInclude->item(i)->checkState() == Qt::Checked;
    o.size = std::max(0, CmbLabSize->currentIndex());
    o.colours = m_colours;
    return o;
}

void FmLabels::CmdPrint_Click()
{
    const LabelOptions options = chosen();
    Options settings(m_session);
    saveLabelOptions(settings, m_items, options);
    if (!checkLabelsPicked(m_stock->picked(), m_prompts)) {
        LstStock->setFocus();
        return;
    }
    PrintJob job(this, windowTitle(), [this](QPagedPaintDevice *device) { return printLabels(device); });
    job.setOrientation(labelsLandscape(options.size) ? QPageLayout::Landscape : QPageLayout::Portrait);
    // Nothing printed (a size too large for the paper, animals gone), the choices stay on
    // screen to be changed.
    if (job.preview())
        accept();
}

bool FmLabels::printLabels(QPagedPaintDevice *device)
{
    HourglassScope busy(this);
    QPainterSurface page(device);
    return printHutchLabels(page, m_session, m_prompts, chosen(), m_stock->picked());
}

} // namespace tarvex
