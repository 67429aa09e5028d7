#include "fmPedCreate.h"

#include "genetics/Genotypes.h"
#include "pedigree/AncestorCreation.h"
#include "stock/FieldLimits.h"
#include "reporting/screens/FmQuickSrch.h"
#include "ui/FocusMoves.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/Modal.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

fmPedCreate::fmPedCreate(Session &session, Prompts &prompts, qint64 child, const QString &breed, bool sire,
                         QWidget *parent)
    : QDialog(parent), m_session(session), m_prompts(prompts), m_child(child), m_sire(sire)
{
    setObjectName(u"fmPedCreate"_s);
    setWindowTitle(u"Fasttrack Pedigree Creation"_s);
    const StudLists &lists = session.Lists;

    auto *frame = make<QGroupBox>(this, "FrmNew", u"Details"_s);
    FrmNew = frame;
    place(frame, 150, 150, 6300, 3500);
    Design::FormRows rows(frame, 350, 200, 1700, 2000, 4000);
    const auto combo = [&](const char *name, const QStringList &items) {
        return Design::editableList(frame, name, items);
    };
    const Design::AnimalRows animal = Design::addAnimalRows(rows, frame, session.IdWord, session.ColourWord,
                                                            lists.breeds, lists.colours, combo);
    TxtFName = animal.name;
    TxtFRingNo = animal.id;
    CmbFType = animal.breed;
    cmbFColour = animal.colour;
    CmbfBreeder = combo("CmbfBreeder", lists.breeders);
    rows.add("LblBreeder", u"Breeder"_s, CmbfBreeder);
    CmbFStatus = combo("CmbFStatus", lists.statuses);
    rows.add("LblStatus", u"Status"_s, CmbFStatus);
    CmbFArchive = combo("CmbFArchive", lists.archive);
    rows.add("LblArchive", u"Archive"_s, CmbFArchive);
    CmbFType->setEditText(breed);
    cmbFColour->setCurrentIndex(cmbFColour->count() == 2 ? 1 : -1);
    Design::limitTyping(CmbFType, FieldLimits::Breed, prompts);
    Design::limitTyping(cmbFColour, FieldLimits::Colour, prompts);
    Design::limitTyping(CmbfBreeder, FieldLimits::Breeder, prompts);
    Design::limitTyping(CmbFStatus, FieldLimits::Status, prompts);
    TxtFName->installEventFilter(this);
    TxtFRingNo->installEventFilter(this);

    const auto panel = [&](const char *name) {
        auto *w = make<QWidget>(this, name);
        place(w, 150, 3800, 6300, 420);
        return w;
    };
    const auto button = [](QWidget *p, const char *name, const QString &caption, int left) {
        return Design::panelButton(p, name, caption, left, 1500, 420);
    };
    PbSelect = panel("PbSelect");
    auto *search = button(PbSelect, "CmdSearch", u"&Search"_s, 1650);
    auto *newAnimal = button(PbSelect, "CmdNew", u"&New"_s, 3250);
    auto *getOut = button(PbSelect, "CmdGetOut", u"&Cancel"_s, 4800);
    pbNew = panel("pbNew");
    auto *add = button(pbNew, "CmdAdd", u"&Add"_s, 3250);
    auto *cancel = button(pbNew, "CmdCancel", u"&Cancel"_s, 4800);

    onAction(search, &QPushButton::clicked, this, &fmPedCreate::CmdSearch_Click);
    onAction(newAnimal, &QPushButton::clicked, this, [this] {
        m_enteringNew = true;
        for (QLineEdit *e : {TxtFName, TxtFRingNo})
            e->clear();
        for (QComboBox *c : {cmbFColour, CmbfBreeder, CmbFStatus})
            c->setEditText(QString());
        // An ancestor known only for its pedigree is not part of the current stock.
        CmbFArchive->setEditText(u"Yes"_s);
        showNew(true);
        TxtFName->setFocus();
    });
    onAction(getOut, &QPushButton::clicked, this, [this] {
        m_enteringNew = false;
        reject();
    });
    onAction(add, &QPushButton::clicked, this, &fmPedCreate::CmdAdd_Click);
    onAction(cancel, &QPushButton::clicked, this, [this] {
        m_enteringNew = false;
        showNew(false);
    });
    showNew(false);

    const QSize design(Design::px(6600), Design::px(4400));
    resize(design);
    FormResizeSetup(this, design);
}

void fmPedCreate::showNew(bool on)
{
    FrmNew->setEnabled(on);
    pbNew->setVisible(on);
    PbSelect->setVisible(!on);
}

void fmPedCreate::CmdSearch_Click()
{
    FmQuickSrch search(m_session, m_prompts, m_session.QuickSearchSex, this);
    Modal::exec(search);
    m_chosenNumber = search.QuickSearchNumber;
    if (m_chosenNumber == -1)
        return;
    m_newNumber = m_chosenNumber;
    Link_Offspring(m_session, m_prompts, m_child, m_newNumber, m_sire);
    accept();
}

void fmPedCreate::CmdAdd_Click()
{
    const NewAncestor a{TxtFName->text(),          TxtFRingNo->text(),         CmbFType->currentText(),
                        cmbFColour->currentText(), CmbfBreeder->currentText(), CmbFStatus->currentText(),
                        CmbFArchive->currentText()};
    const qint64 number = createAncestor(m_session, m_prompts, a, m_child, m_sire);
    if (number == -1)
        return;
    m_newNumber = number;
    if (m_session.GeneticsOn)
        Update_Genes(m_session, m_prompts, a.colour, a.type, number,
                     m_sire ? m_session.MaleWord : m_session.FemaleWord);
    accept();
}

bool fmPedCreate::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == TxtFName && event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->modifiers() == Qt::AltModifier && key->key() == Qt::Key_P) {
            TxtFName->setText(m_session.NamePrefix + u' ' + TxtFName->text());
            TxtFName->setCursorPosition(int(m_session.NamePrefix.size()) + 1);
            return true;
        }
        if (key->modifiers() == Qt::AltModifier && key->key() == Qt::Key_S) {
            TxtFName->setText(TxtFName->text() + u' ' + m_session.NameSuffix);
            return true;
        }
    }
    // Only a move to another control of this window counts: the duplicate warning coming in
    // front takes the focus from the box as well.
    if (event->type() == QEvent::FocusOut && (watched == TxtFName || watched == TxtFRingNo) && m_enteringNew &&
        movedWithinWindow(event)) {
        const QWidget *next = QApplication::focusWidget();
        bool givenUp = false;
        runAction(QString(), [&] {
            const DuplicateField left = watched == TxtFName ? DuplicateField::Name : DuplicateField::Identifier;
            givenUp = ancestorGivenUp(m_session, left, TxtFName->text(), TxtFRingNo->text(),
                                      next ? next->objectName() : QString());
        });
        if (givenUp)
            QTimer::singleShot(0, this, [this] {
                m_enteringNew = false;
                showNew(false);
            });
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace tarvex
