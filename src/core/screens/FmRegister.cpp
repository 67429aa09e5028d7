#include "FmRegister.h"

#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/StatusHints.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStatusBar>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

namespace {
constexpr int kWidth = 8700;
constexpr int kHeight = 6600;
} // namespace

FmRegister::FmRegister(Session &session, Prompts &prompts, bool firstRun, QWidget *parent)
    : QDialog(parent), m_session(session), m_prompts(prompts), m_registration(session, prompts, firstRun)
{
    setObjectName(u"FmRegister"_s);
    setWindowTitle(u"Register Database"_s);

    auto *intro = make<QLabel>(this, "LblIntro",
                               firstRun ? u"Welcome to Tarvex. Register a stud database for the kind of livestock you "
                                          u"breed."_s
                                        : u"Register a stud database, or change the details of a registered one."_s);
    intro->setWordWrap(true);
    place(intro, 240, 120, 8200, 450);

    place(make<QLabel>(this, "LblStockType", u"Type of Stock"_s), 240, 720, 2000, 300);
    TStockType = make<QComboBox>(this, "TStockType");
    place(TStockType, 2300, 680, 3500, 360);
    CmdAdd = make<QPushButton>(this, "CmdAdd", u"&Add New Stock Type"_s);
    place(CmdAdd, 6000, 660, 2460, 400);

    place(make<QLabel>(this, "LblStudName", u"Stud Name"_s), 240, 1260, 2000, 300);
    TStudName = make<QLineEdit>(this, "TStudName");
    place(TStudName, 2300, 1220, 6160, 360);

    place(make<QLabel>(this, "LblTelNo", u"Telephone"_s), 240, 1800, 2000, 300);
    TTelNo = make<QLineEdit>(this, "TTelNo");
    place(TTelNo, 2300, 1760, 3500, 360);

    FrmAdd = make<QGroupBox>(this, "FrmAdd", u"Add New Stock Type"_s);
    place(FrmAdd, 240, 2300, 8220, 3420);
    const struct
    {
        const char *name;
        QString caption, help;
    } rows[] = {
        {"AStockType", u"Stock Type"_s, u"(I.E. Rabbit, Cat, Dog, Horse, Guinea Pig, etc). "_s},
        {"AMale", u"Male Name"_s, u"(I.E. Buck, Tom, Dog, Stallion, Boar, etc). "_s},
        {"AFemale", u"Female Name"_s, u"(I.E. Doe, Queen, Bitch, Mare, Sow, etc). "_s},
        {"AFather", u"Father"_s, u"(I.E. Sire)."_s},
        {"AMother", u"Mother"_s, u"(I.E. Dam)."_s},
        {"AId_0", u"Main ID"_s, u"(I.E. Ring No., KK No., Tatoo, etc)."_s},
        {"AId_1", u"2nd ID"_s, u"(I.E. Tatto, Ear Tag, etc)."_s},
        {"AId_2", u"3rd ID"_s, u"(I.E. GR Ch. No. etc)."_s},
    };
    QLineEdit **edits[] = {&AStockType, &AMale, &AFemale, &AFather, &AMother, &AId[0], &AId[1], &AId[2]};
    for (int i = 0; i < 8; ++i) {
        const int top = 300 + i * 330;
        auto *label = make<QLabel>(FrmAdd, (std::string("LblA_") + std::to_string(i)).c_str(), rows[i].caption);
        place(label, 150, top + 30, 1500, 270);
        *edits[i] = make<QLineEdit>(FrmAdd, rows[i].name);
        place(*edits[i], 1700, top, 2000, 300);
        auto *help = make<QLabel>(FrmAdd, (std::string("LblHelp_") + std::to_string(i)).c_str(), rows[i].help);
        place(help, 3800, top + 30, 4350, 270);
    }
    CmdAddOk = make<QPushButton>(FrmAdd, "CmdAddOk", u"Create New Stock Type"_s);
    place(CmdAddOk, 1700, 2980, 2400, 360);
    CmdAddCancel = make<QPushButton>(FrmAdd, "CmdAddCancel", u"Cancel New Stock Type"_s);
    place(CmdAddCancel, 4300, 2980, 2400, 360);
    FrmAdd->hide();

    CmdOkay = make<QPushButton>(this, "CmdOkay", u"&OK"_s);
    place(CmdOkay, 3900, 5850, 1400, 400);
    CmdOkay->setDefault(true);
    CmdCancel = make<QPushButton>(this, "CmdCancel", u"&Cancel"_s);
    place(CmdCancel, 5480, 5850, 1400, 400);
    CmdExit = make<QPushButton>(this, "CmdExit", u"E&xit"_s);
    place(CmdExit, 7060, 5850, 1400, 400);
    // At first start there is nothing to go back to: the way out is to leave the program.
    CmdCancel->setVisible(!firstRun);
    CmdExit->setVisible(firstRun);

    StatusBar = make<QStatusBar>(this, "StatusBar");
    StatusBar->setSizeGripEnabled(false);
    place(StatusBar, 0, kHeight - 330, kWidth, 330);
    m_hints = new StatusHints(StatusBar, this);
    m_hints->add(TStockType, u"Select the type of Stock you breed"_s);
    m_hints->add(TStudName, u"Enter your Stud Name or the Name under which you breed"_s);
    m_hints->add(TTelNo, u"Enter your Telephone Number"_s);
    TStockType->setToolTip(u"Select the type of Stock you breed"_s);
    TStudName->setToolTip(u"Enter your Stud Name or the Name under which you breed"_s);
    TTelNo->setToolTip(u"Enter your Telephone Number"_s);

    onAction(TStockType, &QComboBox::activated, this, &FmRegister::onStockTypeChosen);
    onAction(CmdOkay, &QPushButton::clicked, this, &FmRegister::onOkay);
    onAction(CmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    onAction(CmdExit, &QPushButton::clicked, this, [this] { done(EndProgram); });
    onAction(CmdAdd, &QPushButton::clicked, this, &FmRegister::onAdd);
    onAction(CmdAddOk, &QPushButton::clicked, this, &FmRegister::onAddOk);
    onAction(CmdAddCancel, &QPushButton::clicked, this, [this] {
        FrmAdd->hide();
        TStockType->setFocus();
    });

    resize(Design::px(kWidth), Design::px(kHeight));
    fResize = FormResizeSetup(this, QSize(Design::px(kWidth), Design::px(kHeight)));
}

bool FmRegister::load()
{
    if (!m_registration.load())
        return false;
    QString current;
    if (!m_registration.firstRun() && m_registration.isRegistered(m_session.StockType))
        current = m_session.StockType;
    fillStockTypes(current);
    if (!current.isEmpty()) {
        const Registration::Choice choice = m_registration.chooseStockType(current);
        TStudName->setText(choice.studName);
        TTelNo->setText(choice.telephone);
    }
    return true;
}

void FmRegister::fillStockTypes(const QString &select)
{
    const QSignalBlocker block(TStockType);
    TStockType->clear();
    TStockType->addItems(m_registration.stockTypeNames());
    m_currentIndex = select.isEmpty() ? -1 : TStockType->findText(select, Qt::MatchFixedString);
    TStockType->setCurrentIndex(m_currentIndex);
}

void FmRegister::onStockTypeChosen(int index)
{
    const Registration::Choice choice = m_registration.chooseStockType(TStockType->itemText(index));
    if (!choice.accepted) {
        const QSignalBlocker block(TStockType);
        TStockType->setCurrentIndex(m_currentIndex);
        return;
    }
    m_currentIndex = index;
    if (choice.fillDetails) {
        TStudName->setText(choice.studName);
        TTelNo->setText(choice.telephone);
    }
}

void FmRegister::focusControl(const QString &name)
{
    if (auto *w = findChild<QWidget *>(name))
        w->setFocus();
}

void FmRegister::onOkay()
{
    QString focus;
    const QString type = TStockType->currentIndex() >= 0 ? TStockType->currentText() : QString();
    switch (m_registration.CmdOkay(type, TStudName->text(), TTelNo->text(), &focus)) {
    case Registration::Result::Stay:
        focusControl(focus);
        break;
    case Registration::Result::Done:
        accept();
        break;
    case Registration::Result::EndProgram:
        done(EndProgram);
        break;
    }
}

void FmRegister::onAdd()
{
    for (QLineEdit *e : {AStockType, AMale, AFemale, AId[0], AId[1], AId[2]})
        e->clear();
    AFather->setText(u"Sire"_s);
    AMother->setText(u"Dam"_s);
    FrmAdd->show();
    AStockType->setFocus();
}

void FmRegister::onAddOk()
{
    StockTypeEntry entry;
    entry.stockType = AStockType->text();
    entry.maleWord = AMale->text();
    entry.femaleWord = AFemale->text();
    entry.fatherWord = AFather->text();
    entry.motherWord = AMother->text();
    entry.id1 = AId[0]->text();
    entry.id2 = AId[1]->text();
    entry.id3 = AId[2]->text();
    QString focus;
    if (!m_registration.CmdAddOk(entry, &focus)) {
        focusControl(focus);
        return;
    }
    FrmAdd->hide();
    fillStockTypes(QString());
    // The new kind as the list reads it back (without any quotes typed into its name).
    const QString added = StockTypes::parseLine(StockTypes::formatLine(entry)).stockType;
    const int index = TStockType->findText(added, Qt::MatchFixedString);
    if (index >= 0) {
        TStockType->setCurrentIndex(index);
        onStockTypeChosen(index);
    }
}

} // namespace tarvex
