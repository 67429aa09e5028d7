#include "FmListColours.h"

#include "genetics/Genotypes.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/ListSort.h"

#include <QPushButton>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

FmListColours::FmListColours(const Session &session, QWidget *parent) : QDialog(parent)
{
    setObjectName(u"FmListColours"_s);
    const GeneticsData &g = *session.Genetics;
    auto *lv = make<QTreeWidget>(this, "lv");
    lv->setRootIsDecorated(false);
    lv->setHeaderLabels({u"Colour"_s, u"Genetic Code"_s});
    QList<QTreeWidgetItem *> items;
    for (const ColourDef &c : g.ColourTable)
        items << new QTreeWidgetItem({c.Name, Genotype_Text(g, c.Alleles)});
    lv->addTopLevelItems(items);
    lv->resizeColumnToContents(0);
    lv->resizeColumnToContents(1);
    enableColumnSort(lv);
    place(lv, 150, 150, 8000, 5400);
    setWindowTitle(u"Possible "_s + session.ColourWord + u"s in Database (Total "_s +
                   QString::number(g.ColourTable.size()) + u')');
    auto *cancel = make<QPushButton>(this, "CmdCancel", u"&Cancel"_s);
    place(cancel, 6650, 5700, 1500, 420);
    onAction(cancel, &QPushButton::clicked, this, &QDialog::reject);

    const QSize design(Design::px(8300), Design::px(6300));
    resize(design);
    FormResizeSetup(this, design);
}

} // namespace tarvex
