#include "FmReports.h"

#include "pedigree/PedigreeStyles.h"
#include "platform/QPainterSurface.h"
#include "reporting/BirthDateReport.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/DateField.h"
#include "ui/Design.h"
#include "ui/Hourglass.h"
#include "ui/PrintJob.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

namespace {
constexpr int kWidth = 6000, kHeight = 4200;
} // namespace

FmReports::FmReports(Session &session, Prompts &prompts, QWidget *parent)
    : QDialog(parent), m_session(session), m_prompts(prompts)
{
    setObjectName(u"FmReports"_s);
    setWindowTitle(u"Reports Menu"_s);

    auto *menu = make<QMenuBar>(this, "MenuBar");
    menu->setNativeMenuBar(false);
    place(menu, 0, 0, kWidth, 330);
    QMenu *file = menu->addMenu(u"&File"_s);
    file->setObjectName(u"File"_s);
    QAction *setup = file->addAction(u"Printer Set&up"_s);
    setup->setObjectName(u"MnuSetup"_s);
    onAction(setup, &QAction::triggered, this, [this] {
        PrintJob::pageSetup(this, u"Print "_s + m_session.StockType + u" Sheet Options"_s);
    });
    file->addSeparator();
    QAction *exit = file->addAction(u"E&xit"_s);
    exit->setObjectName(u"Exit"_s);
    onAction(exit, &QAction::triggered, this, &QDialog::reject);

    auto *select = make<QGroupBox>(this, "FrSelRep", u"Select Report Type:"_s);
    place(select, 150, 450, 5700, 780);
    CmbRepType = make<QComboBox>(select, "CmbRepType");
    CmbRepType->addItems({QString(), u"Blank Pedigree Form"_s, u"Birth Date Report"_s});
    CmbRepType->setCurrentIndex(-1);
    place(CmbRepType, 240, 300, 5220, 360);
    onAction(CmbRepType, &QComboBox::activated, this, &FmReports::CmbRepType_Click);

    // The options of each report, in the same place; the one chosen stands in front.
    FrmRepOptions[1] = make<QGroupBox>(this, "FrmRepOptions_1", u"Blank Pedigree Form"_s);
    place(FrmRepOptions[1], 150, 1380, 5700, 1560);
    auto *genLabel = make<QLabel>(FrmRepOptions[1], "LblGen", u"Generations:"_s);
    place(genLabel, 240, 420, 1500, 330);
    CmbGen = make<QComboBox>(FrmRepOptions[1], "CmbGen");
    CmbGen->addItems({u"3 Generations"_s, u"4 Generations"_s, u"5 Generations"_s});
    place(CmbGen, 1800, 390, 2400, 360);

    FrmRepOptions[2] = make<QGroupBox>(this, "FrmRepOptions_2", u"Birth Date Report"_s);
    place(FrmRepOptions[2], 150, 1380, 5700, 1560);
    auto *fromLabel = make<QLabel>(FrmRepOptions[2], "LblFrom", u"Born From:"_s);
    place(fromLabel, 240, 420, 1500, 330);
    SDOB = make<QLineEdit>(FrmRepOptions[2], "SDOB");
    place(SDOB, 1800, 390, 1500, 360);
    auto *toLabel = make<QLabel>(FrmRepOptions[2], "LblTo", u"To:"_s);
    place(toLabel, 240, 900, 1500, 330);
    SToDOB = make<QLineEdit>(FrmRepOptions[2], "SToDOB");
    place(SToDOB, 1800, 870, 1500, 360);
    for (QLineEdit *date : {SDOB, SToDOB})
        Apply_Date_Mask(date, session.Dates);
    for (int i : {1, 2})
        FrmRepOptions[i]->hide();

    PbControl = make<QWidget>(this, "PbControl");
    place(PbControl, 0, 3240, kWidth, 600);
    auto *back = make<QPushButton>(PbControl, "CmdRepCancel", u"&Back"_s);
    place(back, 4350, 60, 1500, 420);
    onAction(back, &QPushButton::clicked, this, &QDialog::reject);

    PbReports = make<QWidget>(this, "PbReports");
    place(PbReports, 0, 3240, kWidth, 600);
    auto *print = make<QPushButton>(PbReports, "CmdRepPrint", u"&Print"_s);
    print->setToolTip(u"Print selected report"_s);
    place(print, 2700, 60, 1500, 420);
    auto *cancel = make<QPushButton>(PbReports, "cmdCancel", u"&Cancel"_s);
    cancel->setToolTip(u"Cancel reports "_s);
    place(cancel, 4350, 60, 1500, 420);
    onAction(print, &QPushButton::clicked, this, &FmReports::CmdRepPrint_Click);
    onAction(cancel, &QPushButton::clicked, this, &FmReports::cmdCancel_Click);
    PbReports->hide();

    resize(Design::px(kWidth), Design::px(kHeight));
    FormResizeSetup(this, QSize(Design::px(kWidth), Design::px(kHeight)));
}

void FmReports::CmbRepType_Click(int index)
{
    if (index != 1 && index != 2)
        return;
    FrmRepOptions[index]->show();
    FrmRepOptions[index]->raise();
    FrmRepOptions[3 - index]->hide();
    PbControl->hide();
    PbReports->show();
    if (index == 1) {
        CmbGen->setCurrentIndex(qBound(0, Default_Generations(m_session) - 3, 2));
    } else {
        SDOB->clear();
        SToDOB->clear();
        SDOB->setFocus();
    }
}

void FmReports::cmdCancel_Click()
{
    for (int i : {1, 2})
        FrmRepOptions[i]->hide();
    CmbRepType->setCurrentIndex(-1);
    PbReports->hide();
    PbControl->show();
}

bool FmReports::printReport(QPagedPaintDevice *device)
{
    HourglassScope busy(this);
    QPainterSurface page(device);
    if (CmbRepType->currentIndex() == 1) {
        printBlankPedigreeForm(page, m_session, m_prompts, CmbGen->currentIndex() + 3);
        return true;
    }
    if (CmbRepType->currentIndex() == 2) {
        QString focus;
        const auto range = birthDateRange(SDOB->text(), SToDOB->text(), m_session.Dates, m_prompts, &focus);
        return range && printBirthDateReport(page, m_session, *range);
    }
    page.killDoc();
    return false;
}

void FmReports::CmdRepPrint_Click()
{
    const int report = CmbRepType->currentIndex();
    if (report == 2) {
        QString focus;
        const auto range = birthDateRange(SDOB->text(), SToDOB->text(), m_session.Dates, m_prompts, &focus);
        if (!range) {
            if (auto *field = findChild<QLineEdit *>(focus))
                field->setFocus();
            return;
        }
        if (!anyBirthsBetween(m_session, *range)) {
            m_prompts.show(u"No Details To Print"_s, u"No Records"_s, Prompts::Icon::Exclamation);
            return;
        }
    } else if (report != 1) {
        return;
    }
    PrintJob job(this, CmbRepType->currentText(), [this](QPagedPaintDevice *device) { return printReport(device); });
    job.setOrientation(QPageLayout::Portrait);
    job.preview();
}

} // namespace tarvex
