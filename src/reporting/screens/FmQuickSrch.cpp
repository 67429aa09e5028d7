#include "FmQuickSrch.h"

#include "QuickSearchModel.h"

#include "reporting/QuickSearch.h"
#include "stock/screens/fmStockenq.h"
#include "store/StudDatabase.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/Hourglass.h"
#include "ui/Modal.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

FmQuickSrch::FmQuickSrch(Session &session, Prompts &prompts, const QString &sex, QWidget *parent)
    : QDialog(parent), m_session(session), m_prompts(prompts)
{
    setObjectName(u"FmQuickSrch"_s);
    setWindowTitle(u"Quick Search"_s);
    const StudLists &lists = session.Lists;

    auto *frame = make<QGroupBox>(this, "FrmSearch", u"Search Details"_s);
    FrmSearch = frame;
    place(frame, 150, 100, 7500, 3900);
    Design::FormRows rows(frame, 330, 200, 1800, 2100, 5100);
    const auto combo = [&](const char *name, const QStringList &items) {
        auto *c = Design::editableList(frame, name, items);
        c->setCurrentIndex(-1);
        c->setEditText(QString());
        return c;
    };
    const Design::AnimalRows animal = Design::addAnimalRows(rows, frame, session.IdWord, session.ColourWord,
                                                            lists.breeds, lists.colours, combo);
    TxtFName = animal.name;
    TxtFRingNo = animal.id;
    CmbFType = animal.breed;
    cmbFColour = animal.colour;
    CmbfSex = combo("CmbfSex", lists.sexes);
    rows.add("LblSex", u"Sex"_s, CmbfSex);
    CmbFStatus = combo("CmbFStatus", lists.statuses);
    rows.add("LblStatus", u"Status"_s, CmbFStatus);
    CmbFArchive = combo("CmbFArchive", lists.archive);
    rows.add("LblArchive", u"Archive"_s, CmbFArchive);
    TxtfNotes = make<QLineEdit>(frame, "TxtfNotes");
    rows.add("LblNotes", u"Notes"_s, TxtfNotes);
    if (!sex.isEmpty()) {
        CmbfSex->setEditText(sex);
        CmbfSex->setEnabled(false);
    }

    auto *results = make<QGroupBox>(this, "FrmSearchRes", u"Search Results:"_s);
    FrmSearchRes = results;
    place(results, 150, 100, 7500, 3900);
    SList = make<QTreeView>(results, "SList");
    SList->setRootIsDecorated(false);
    SList->setUniformRowHeights(true);
    SList->setAllColumnsShowFocus(true);
    m_results = new QuickSearchModel({u"Name"_s, session.IdWord, u"Breed"_s, session.ColourWord}, this);
    SList->setModel(m_results);
    place(SList, 150, 330, 7200, 3400);
    onAction(SList, &QTreeView::doubleClicked, this, [this](const QModelIndex &index) {
        fmStockenq enquiry(m_session, index.siblingAtColumn(0).data(Qt::UserRole).toString().mid(2).toLongLong(),
                           this);
        Modal::exec(enquiry);
    });

    auto *searchPanel = make<QWidget>(this, "PbSearch");
    PbSearch = searchPanel;
    place(searchPanel, 150, 4150, 7500, 450);
    auto *search = make<QPushButton>(searchPanel, "CmdSearch", u"&Search"_s);
    place(search, 3900, 0, 1700, 420);
    auto *cancel = make<QPushButton>(searchPanel, "CmdCancel", u"&Cancel"_s);
    place(cancel, 5800, 0, 1700, 420);

    auto *resultPanel = make<QWidget>(this, "pbSrchRes");
    pbSrchRes = resultPanel;
    place(resultPanel, 150, 4150, 7500, 450);
    auto *hint = make<QLabel>(resultPanel, "LblHint", u"Double Click on name to show details or Select"_s);
    hint->setWordWrap(true);
    place(hint, 0, 0, 3800, 420);
    auto *select = make<QPushButton>(resultPanel, "CmdSelect", u"&Select"_s);
    place(select, 3900, 0, 1700, 420);
    auto *back = make<QPushButton>(resultPanel, "CmdSRCancel", u"&Cancel"_s);
    place(back, 5800, 0, 1700, 420);

    onAction(search, &QPushButton::clicked, this, &FmQuickSrch::onSearch);
    onAction(cancel, &QPushButton::clicked, this, &QDialog::reject);
    onAction(select, &QPushButton::clicked, this, &FmQuickSrch::onSelect);
    onAction(back, &QPushButton::clicked, this, [this] { showResults(false); });
    showResults(false);
    search->setDefault(true);

    const QSize design(Design::px(7800), Design::px(4800));
    resize(design);
    FormResizeSetup(this, design);
}

void FmQuickSrch::showResults(bool on)
{
    FrmSearch->setVisible(!on);
    PbSearch->setVisible(!on);
    FrmSearchRes->setVisible(on);
    pbSrchRes->setVisible(on);
    if (!on)
        TxtFName->setFocus();
}

void FmQuickSrch::onSearch()
{
    QuickSearchFields f;
    f.name = TxtFName->text();
    f.archive = CmbFArchive->currentText();
    f.ringNo = TxtFRingNo->text();
    f.sex = CmbfSex->currentText();
    f.type = CmbFType->currentText();
    f.colour = cmbFColour->currentText();
    f.status = CmbFStatus->currentText();
    f.notes = TxtfNotes->text();
    const QString where = QuickSearch::compose(f);
    if (where.isEmpty()) {
        TxtFName->setFocus();
        return;
    }
    {
        HourglassScope wait(this);
        // The rows come in name order from the stud, a page at a time as the list scrolls.
        SList->setSortingEnabled(false);
        m_results->show(std::make_unique<QuickSearch::Results>(m_session.Stud->handle(), where));
    }
    if (m_results->rowCount() == 0) {
        m_prompts.show(u"No Matching Stock Found"_s, QString(), Prompts::Icon::Information);
        TxtFName->setFocus();
        return;
    }
    SList->header()->setSortIndicator(0, Qt::AscendingOrder);
    SList->setSortingEnabled(true);
    const QFontMetrics fm(SList->font());
    const char *samples[] = {"##################", "#########", "##########", "#############"};
    for (int c = 0; c < 4; ++c)
        SList->setColumnWidth(c, fm.horizontalAdvance(QString::fromLatin1(samples[c])));
    SList->setCurrentIndex(QModelIndex());
    SList->clearSelection();
    showResults(true);
}

void FmQuickSrch::onSelect()
{
    const QModelIndex current = SList->currentIndex();
    if (!current.isValid() || !SList->selectionModel()->isSelected(current)) {
        m_prompts.show(u"No Details Selected"_s, u"Quick Search"_s, Prompts::Icon::Information);
        return;
    }
    const QModelIndex key = current.siblingAtColumn(0);
    QuickSearchNumber = key.data(Qt::UserRole).toString().mid(2).toLongLong();
    QuickSearchName = key.data(Qt::DisplayRole).toString();
    accept();
}

} // namespace tarvex
