#include "NewLitterPanel.h"

#include "StockRecordPanel.h"

#include "core/StudLoader.h"
#include "stock/FieldLimits.h"
#include "ui/Action.h"
#include "ui/DateField.h"
#include "ui/Design.h"
#include "ui/Hourglass.h"
#include "ui/ParentListModel.h"
#include "ui/StatusHints.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

NewLitterPanel::NewLitterPanel(Session &session, Prompts &prompts, StatusHints &hints, StockRecordPanel &record,
                               QWidget *parent)
    : QWidget(parent), m_session(session), m_prompts(prompts), m_record(record)
{
    setObjectName(u"NewLitterPanel"_s);
    auto *title = make<QLabel>(this, "LblNewLit", u"Create New Offspring"_s);
    QFont big = title->font();
    big.setPointSizeF(big.pointSizeF() * 1.4);
    big.setBold(true);
    title->setFont(big);
    title->setAlignment(Qt::AlignCenter);
    place(title, 240, 150, 9120, 480);

    auto *frame = make<QGroupBox>(this, "FrmNewLit", u"Offspring Details"_s);
    FrmNewLit = frame;
    place(frame, 1200, 750, 7200, 4650);
    const auto label = [&](const char *name, const QString &caption, int row) {
        auto *l = make<QLabel>(frame, name, caption);
        place(l, 300, 400 + row * 450, 1900, 300);
        return l;
    };
    const auto at = [&](QWidget *w, int row, int width) { place(w, 2300, 360 + row * 450, width, 360); };
    const auto list = [&](const char *name, bool editable) {
        auto *c = make<QComboBox>(frame, name);
        c->setEditable(editable);
        c->setInsertPolicy(QComboBox::NoInsert);
        c->setMaxVisibleItems(20);
        return c;
    };

    label("LblNLNo", u"No. of Young"_s, 0);
    NLNo = make<QLineEdit>(frame, "NLNo");
    NLNo->setInputMask(u"99;_"_s);
    at(NLNo, 0, 700);
    label("LblNLDOB", u"Date of Birth"_s, 1);
    NLDOB = make<QLineEdit>(frame, "NLDOB");
    at(NLDOB, 1, 1500);
    LblNLSire = label("LblNLSire", u"Sire"_s, 2);
    NLSire = list("NLSire", false);
    m_sires = ParentListModel::install(NLSire);
    at(NLSire, 2, 4500);
    LblNLDam = label("LblNLDam", u"Dam"_s, 3);
    NLDam = list("NLDam", false);
    m_dams = ParentListModel::install(NLDam);
    at(NLDam, 3, 4500);
    label("LblNlType", u"Breed"_s, 4);
    NlType = list("NlType", true);
    at(NlType, 4, 4500);
    LblNlColour = label("LblNlColour", u"Colour"_s, 5);
    NlColour = list("NlColour", true);
    at(NlColour, 5, 4500);
    label("LblNLBreeder", u"Breeder"_s, 6);
    NLBreeder = list("NLBreeder", true);
    at(NLBreeder, 6, 4500);
    label("LblNlStatus", u"Status"_s, 7);
    NlStatus = list("NlStatus", true);
    at(NlStatus, 7, 4500);
    label("LblNlArchive", u"Archive"_s, 8);
    NlArchive = list("NlArchive", false);
    NlArchive->addItems({u"Yes"_s, u"No"_s});
    at(NlArchive, 8, 1000);
    CbNLAuto = make<QCheckBox>(frame, "CbNLAuto", u"Create Automatically"_s);
    place(CbNLAuto, 3700, 360 + 8 * 450, 3200, 360);
    // Holds a text at all times, so that the name's step of the checks passes.
    NlDummyName = make<QLineEdit>(frame, "NlDummyName");
    NlDummyName->setText(u"Litter"_s);
    NlDummyName->hide();

    Design::limitTyping(NlType, FieldLimits::Breed, m_prompts);
    Design::limitTyping(NlColour, FieldLimits::Colour, m_prompts);
    Design::limitTyping(NlStatus, FieldLimits::Status, m_prompts);
    Design::limitTyping(NLBreeder, FieldLimits::Breeder, m_prompts);

    hints.add(NLNo, u"Enter the number of young in litter"_s);
    hints.add(NLDOB, u"Enter Offsprings date of birth"_s);
    hints.add(NLSire, u"Select Sire"_s);
    hints.add(NLDam, u"Select Dam"_s);
    hints.add(NlType, u"Default Breed of Offspring"_s);
    hints.add(NlColour, u"Default Colour of Offspring"_s);
    hints.add(NlStatus, u"Default Status of Offspring"_s);
    hints.add(NlArchive, u"Default Archive Status of Offspring"_s);
    hints.add(CbNLAuto, u"Automatically or Interactively Create Details"_s);

    PBNewLitter = make<QWidget>(this, "PBNewLitter");
    place(PBNewLitter, 120, 5600, 9360, 420);
    CmdNLOK = Design::panelButton(PBNewLitter, "CmdNLOK", u"&Ok"_s, 5900, 1600, 420);
    CmdNLOK->setToolTip(u"Accept litter details"_s);
    CmdNLOK->setDefault(true);
    CmdNLCan = Design::panelButton(PBNewLitter, "CmdNLCan", u"Cancel"_s, 7700, 1600, 420);
    CmdNLCan->setToolTip(u"Cancel litter details"_s);
    hints.add(CmdNLOK, CmdNLOK->toolTip());
    hints.add(CmdNLCan, CmdNLCan->toolTip());
    onAction(CmdNLOK, &QPushButton::clicked, this, &NewLitterPanel::CmdNLOK_Click);
    onAction(CmdNLCan, &QPushButton::clicked, this, &NewLitterPanel::CmdNLCan_Click);
    hide();
}

void NewLitterPanel::applyStud()
{
    LblNLSire->setText(m_session.FatherWord);
    LblNLDam->setText(m_session.MotherWord);
    LblNlColour->setText(m_session.ColourWord);
    Apply_Date_Mask(NLDOB, m_session.Dates);
}

void NewLitterPanel::CmdNewLit_Click()
{
    HourglassScope wait(window());
    // Entering one by one is the default; creating at once is a choice made each time.
    CbNLAuto->setChecked(false);
    m_sires->setList(sireList(m_session));
    m_sires->setAddition(std::nullopt);
    m_dams->setList(damList(m_session));
    m_dams->setAddition(std::nullopt);
    const StudLists &l = m_session.Lists;
    const auto fill = [](QComboBox *c, const QStringList &items) {
        c->clear();
        c->addItems(items);
        c->setEditText(items.size() == 1 ? items.first() : QString());
    };
    fill(NlType, l.breeds);
    fill(NlColour, l.colours);
    fill(NLBreeder, l.breeders);
    fill(NlStatus, l.statuses);
    NLBreeder->setEditText(QString());
    NlStatus->setEditText(QString());
    NLSire->setCurrentIndex(0);
    NLDam->setCurrentIndex(0);
    NLDOB->clear();
    NLNo->clear();
    NlArchive->setCurrentText(u"No"_s);
    show();
    NLNo->setFocus();
}

void NewLitterPanel::CmdNLOK_Click()
{
    if (!isVisible())
        return;
    LitterForm form;
    form.young = NLNo->displayText();
    form.dob = NLDOB->displayText();
    form.sire = ParentPick{NLSire->currentIndex(), m_sires->numberAt(NLSire->currentIndex())};
    form.dam = ParentPick{NLDam->currentIndex(), m_dams->numberAt(NLDam->currentIndex())};
    form.breed = NlType->currentText();
    form.colour = NlColour->currentText();
    form.breeder = NLBreeder->currentText();
    form.status = NlStatus->currentText();
    form.archive = NlArchive->currentText();
    form.automatic = CbNLAuto->isChecked();
    QString focus;
    StockRecords::LitterStart start;
    {
        HourglassScope wait(window());
        start = m_record.records().CmdNLOK(form, &focus);
    }
    switch (start) {
    case StockRecords::LitterStart::Refused:
        if (auto *w = findChild<QWidget *>(focus))
            w->setFocus();
        return;
    case StockRecords::LitterStart::Created:
        End_Litter();
        hide();
        if (onClosed)
            onClosed();
        return;
    case StockRecords::LitterStart::OneByOne:
        hide();
        m_record.Next_Litter_Offspring();
        End_Litter();
        return;
    }
}

void NewLitterPanel::CmdNLCan_Click()
{
    End_Litter();
    hide();
    if (onClosed)
        onClosed();
}

void NewLitterPanel::End_Litter()
{
    // The panel lets go of the stud's lists; the next litter fills them afresh.
    m_sires->setList(std::make_shared<const ParentList>());
    m_dams->setList(std::make_shared<const ParentList>());
    for (QComboBox *c : {NlColour, NlType, NlStatus, NLBreeder})
        c->clear();
}

} // namespace tarvex
