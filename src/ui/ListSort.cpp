#include "ListSort.h"

#include <QHeaderView>
#include <QTreeWidget>

#include <functional>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {
QString withoutMark(QString text)
{
    if (text.endsWith(u" ^"_s) || text.endsWith(u" v"_s))
        text.chop(2);
    return text;
}

// Sorts the rows by a text each is given for the while, then gives each its own back.
void sortByTexts(QTreeWidget *list, int column, Qt::SortOrder order,
                 const std::function<QString(QTreeWidgetItem *)> &sortText)
{
    QList<QString> shown;
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        QTreeWidgetItem *item = list->topLevelItem(i);
        item->setData(column, Qt::UserRole + 2, item->text(column));
        item->setText(column, sortText(item));
    }
    list->sortItems(column, order);
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        QTreeWidgetItem *item = list->topLevelItem(i);
        item->setText(column, item->data(column, Qt::UserRole + 2).toString());
        item->setData(column, Qt::UserRole + 2, QVariant());
    }
}
} // namespace

void enableColumnSort(QTreeWidget *list, int percentColumn)
{
    ColumnSortOptions options;
    if (percentColumn >= 0)
        options.percentColumns = {percentColumn};
    enableColumnSort(list, options);
}

void setSortColumn(QTreeWidget *list, int column, Qt::SortOrder order)
{
    list->setProperty("sortColumn", column);
    list->setProperty("sortOrder", int(order));
}

void enableColumnSort(QTreeWidget *list, const ColumnSortOptions &options)
{
    list->setSortingEnabled(false);
    list->header()->setSectionsClickable(true);
    list->header()->setSortIndicatorShown(false);
    QObject::connect(list->header(), &QHeaderView::sectionClicked, list, [list, options](int column) {
        QTreeWidgetItem *head = list->headerItem();
        const bool reverse = list->property("sortColumn").toInt() == column &&
                             list->property("sortOrder").toInt() == Qt::AscendingOrder &&
                             list->property("sortColumn").isValid();
        const Qt::SortOrder order = reverse ? Qt::DescendingOrder : Qt::AscendingOrder;
        const QString descendingMark = options.ascendingMark == u" v" ? u" ^"_s : u" v"_s;
        for (int c = 0; c < list->columnCount(); ++c)
            head->setText(c, withoutMark(head->text(c)));
        head->setText(column, head->text(column) +
                                  (order == Qt::AscendingOrder ? options.ascendingMark : descendingMark));
        setSortColumn(list, column, order);
        if (options.percentColumns.contains(column)) {
            // Shares sort as numbers: written as "000.00" and the first column while sorting.
            sortByTexts(list, column, order, [column](QTreeWidgetItem *item) {
                QString value = item->text(column);
                value.chop(1);
                return QString::number(value.toDouble(), 'f', 2).rightJustified(6, u'0') + item->text(0);
            });
        } else if (options.keyColumns.contains(column)) {
            sortByTexts(list, column, order,
                        [column](QTreeWidgetItem *item) { return item->data(column, kSortKeyRole).toString(); });
        } else {
            list->sortItems(column, order);
        }
        // The first row is selected and brought into view.
        if (QTreeWidgetItem *first = list->topLevelItem(0)) {
            list->setCurrentItem(first);
            list->scrollToItem(first);
        }
    });
}

} // namespace tarvex
