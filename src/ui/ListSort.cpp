#include "ListSort.h"

#include <QHeaderView>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {
QString withoutMark(QString text)
{
    if (text.endsWith(u" ^"_s) || text.endsWith(u" v"_s))
        text.chop(2);
    return text;
}
} // namespace

void enableColumnSort(QTreeWidget *list, int percentColumn)
{
    list->setSortingEnabled(false);
    list->header()->setSectionsClickable(true);
    list->header()->setSortIndicatorShown(false);
    QObject::connect(list->header(), &QHeaderView::sectionClicked, list, [list, percentColumn](int column) {
        QTreeWidgetItem *head = list->headerItem();
        const bool reverse = list->property("sortColumn").toInt() == column &&
                             list->property("sortOrder").toInt() == Qt::AscendingOrder &&
                             list->property("sortColumn").isValid();
        const Qt::SortOrder order = reverse ? Qt::DescendingOrder : Qt::AscendingOrder;
        for (int c = 0; c < list->columnCount(); ++c)
            head->setText(c, withoutMark(head->text(c)));
        head->setText(column, head->text(column) + (order == Qt::AscendingOrder ? u" v"_s : u" ^"_s));
        list->setProperty("sortColumn", column);
        list->setProperty("sortOrder", int(order));
        if (column != percentColumn) {
            list->sortItems(column, order);
        } else {
            // Shares sort as numbers: written as "000.00" and the first column while sorting.
            for (int i = 0; i < list->topLevelItemCount(); ++i) {
                QTreeWidgetItem *item = list->topLevelItem(i);
                QString value = item->text(column);
                value.chop(1);
                item->setText(column,
                              QString::number(value.toDouble(), 'f', 2).rightJustified(6, u'0') + item->text(0));
            }
            list->sortItems(column, order);
            for (int i = 0; i < list->topLevelItemCount(); ++i) {
                QTreeWidgetItem *item = list->topLevelItem(i);
                item->setText(column, QString::number(item->text(column).left(6).toDouble(), 'f', 2) + u'%');
            }
        }
        // The first row is selected and brought into view.
        if (QTreeWidgetItem *first = list->topLevelItem(0)) {
            list->setCurrentItem(first);
            list->scrollToItem(first);
        }
    });
}

} // namespace tarvex
