#include "FmPrint.h"

#include "platform/QPainterSurface.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/Hourglass.h"
#include "ui/PrintJob.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

namespace {
constexpr int kWidth = 4200, kHeight = 4500;
} // namespace

FmPrint::FmPrint(Session &session, qint64 number, QWidget *parent)
    : QDialog(parent), m_session(session), m_number(number)
{
    setObjectName(u"FmPrint"_s);
    setWindowTitle(u"Print Details"_s);

    auto *frame = make<QGroupBox>(this, "FrmToPrint", u"Information to Print:"_s);
    place(frame, 150, 120, 3900, 3480);
    const QString captions[kSheetSections] = {u"General Information"_s, u"Health Details"_s, u"Notes"_s,
                                              u"Awards"_s,              u"Diary"_s,          u"Critique/Comments"_s,
                                              u"Matings"_s,             u"Image"_s};
    const SheetSections ticked = readSheetSections(Options(session));
    // The critiques are part of the awards: they stand indented under them.
    const int rowOf[kSheetSections] = {0, 1, 2, 3, 5, 4, 6, 7};
    for (int i = 0; i < kSheetSections; ++i) {
        ChkToPrint[i] = make<QCheckBox>(frame, ("ChkToPrint_" + std::to_string(i)).c_str(), captions[i]);
        const int indent = i == int(SheetSection::AwardComments) ? 600 : 240;
        place(ChkToPrint[i], indent, 330 + rowOf[i] * 380, 3600 - indent, 330);
        ChkToPrint[i]->setChecked(ticked[i]);
    }
    for (int row = 1; row < kSheetSections; ++row)
        setTabOrder(ChkToPrint[std::find(rowOf, rowOf + kSheetSections, row - 1) - rowOf],
                    ChkToPrint[std::find(rowOf, rowOf + kSheetSections, row) - rowOf]);
    QCheckBox *awards = ChkToPrint[int(SheetSection::Awards)];
    QCheckBox *comments = ChkToPrint[int(SheetSection::AwardComments)];
    comments->setEnabled(awards->isChecked());
    onAction(awards, &QCheckBox::toggled, this, [comments](bool on) { comments->setEnabled(on); });

    auto *print = make<QPushButton>(this, "CmdPrint", u"&Print"_s);
    print->setToolTip(u"Print the Selected Details"_s);
    place(print, 600, 3840, 1400, 420);
    auto *cancel = make<QPushButton>(this, "CmdCancel", u"&Cancel"_s);
    cancel->setToolTip(u"Cancel Print"_s);
    place(cancel, 2250, 3840, 1400, 420);
    onAction(print, &QPushButton::clicked, this, &FmPrint::CmdPrint_Click);
    onAction(cancel, &QPushButton::clicked, this, &QDialog::reject);

    resize(Design::px(kWidth), Design::px(kHeight));
    FormResizeSetup(this, QSize(Design::px(kWidth), Design::px(kHeight)));
}

SheetSections FmPrint::sections() const
{
    SheetSections s{};
    for (int i = 0; i < kSheetSections; ++i)
        s[i] = ChkToPrint[i]->isChecked();
    return s;
}

bool FmPrint::printSheet(QPagedPaintDevice *device)
{
    HourglassScope busy(this);
    QPainterSurface page(device);
    return printAnimalSheet(page, m_session, m_number, sections());
}

void FmPrint::CmdPrint_Click()
{
    Options options(m_session);
    saveSheetSections(options, sections());
    PrintJob job(this, m_session.CurrentStockName, [this](QPagedPaintDevice *device) { return printSheet(device); });
    job.setOrientation(QPageLayout::Portrait);
    job.preview();
    accept();
}

} // namespace tarvex
