#include "fmStockenq.h"

#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/Modal.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

void fmStockenq::showRelative(Session &session, qint64 number, QWidget *parent)
{
    const qint64 remembered = session.CurrentStockNo;
    fmStockenq enquiry(session, number, parent);
    Modal::exec(enquiry);
    session.CurrentStockNo = remembered;
}

fmStockenq::fmStockenq(Session &session, qint64 number, QWidget *parent) : QDialog(parent)
{
    setObjectName(u"fmStockenq"_s);
    setWindowTitle(u"Stock Enquiry"_s);
    m_summary = summaryOf(session, number).value_or(StockSummary{});
    const StockSummary &m = m_summary;

    const auto field = [&](const char *name, const QString &caption, const QString &value, int left, int top,
                           int width) {
        place(make<QLabel>(this, (std::string("Lbl") + name).c_str(), caption), left, top + 40, 1300, 300);
        auto *edit = make<QLineEdit>(this, name, value);
        edit->setReadOnly(true);
        place(edit, left + 1350, top, width, 330);
        return edit;
    };
    field("TxtName", u"Name"_s, m.name, 150, 150, 3000);
    field("TxtSex", u"Sex"_s, m.sex, 150, 550, 1500);
    field("TxtType", u"Breed"_s, m.type, 150, 950, 3000);
    field("TxtColour", session.ColourWord, m.colour, 150, 1350, 3000);
    field("TxtBreeder", u"Breeder"_s, m.breeder, 150, 1750, 3000);
    field("TxtStatus", u"Status"_s, m.status, 150, 2150, 3000);
    field("TxtDOB", u"Date of Birth"_s, m.dob, 4800, 150, 1500);
    field("TxtDOD", u"Date of Death"_s, m.dod, 4800, 550, 1500);
    field("TxtArchive", u"Archive"_s, m.archive, 4800, 950, 800);
    field("TxtGenotype", u"Genotype"_s, m.genotype, 4800, 2150, 3000);

    auto *father = make<QLabel>(this, "LblFather", session.FatherWord);
    place(father, 4800, 1390, 1300, 300);
    auto *sire = make<QLineEdit>(this, "RSire", m.sireName);
    sire->setReadOnly(true);
    place(sire, 6150, 1350, 3000, 330);
    auto *mother = make<QLabel>(this, "LblMother", session.MotherWord);
    place(mother, 4800, 1790, 1300, 300);
    auto *dam = make<QLineEdit>(this, "RDam", m.damName);
    dam->setReadOnly(true);
    place(dam, 6150, 1750, 3000, 330);

    CmbSid = make<QComboBox>(this, "CmbSid");
    const QString words[] = {session.IdWord, session.Id2Word, session.Id3Word};
    for (int i = 0; i < 3; ++i)
        if (!words[i].isEmpty())
            CmbSid->addItem(words[i], i);
    place(CmbSid, 150, 2550, 1300, 330);
    Rid = make<QLineEdit>(this, "Rid");
    Rid->setReadOnly(true);
    place(Rid, 1500, 2550, 3000, 330);
    CmbSid->setVisible(CmbSid->count() > 1);
    onAction(CmbSid, &QComboBox::currentIndexChanged, this, &fmStockenq::showIdentification);
    showIdentification();

    const auto notes = [&](const char *name, const QString &caption, const QString &value, int top) {
        place(make<QLabel>(this, (std::string("Lbl") + name).c_str(), caption), 150, top, 1300, 300);
        auto *edit = make<QPlainTextEdit>(this, name);
        edit->setPlainText(value);
        edit->setReadOnly(true);
        place(edit, 1500, top, 7650, 900);
    };
    notes("TxtHealth", u"Health"_s, m.health, 3050);
    notes("TxtNotes", u"Notes"_s, m.notes, 4050);

    auto *back = make<QPushButton>(this, "CmdExit", u"&Back"_s);
    place(back, 7950, 5100, 1200, 400);
    back->setDefault(true);
    onAction(back, &QPushButton::clicked, this, &QDialog::accept);

    const QSize design(Design::px(9400), Design::px(5700));
    resize(design);
    FormResizeSetup(this, design);
}

void fmStockenq::showIdentification()
{
    const QStringList values{m_summary.ringNo, m_summary.id2, m_summary.id3};
    Rid->setText(values.value(CmbSid->currentData().toInt()));
}

} // namespace tarvex
