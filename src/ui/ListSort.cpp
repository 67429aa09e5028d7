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

void enableColumnSort(QTreeWidget *list)
{
    list->setSortingEnabled(false);
    list->header()->setSectionsClickable(true);
    list->header()->setSortIndicatorShown(false);
    QObject::connect(list->header(), &QHeaderView::sectionClicked, list, [list](int column) {
        QTreeWidgetItem *head = list->headerItem();
        const bool reverse = list->property("sortColumn").toInt() == column &&
                             list->property("sortOrder").toInt() == Qt::AscendingOrder &&
                             list->property("sortColumn").isValid();
        const Qt::SortOrder order = reverse ? Qt::DescendingOrder : Qt::AscendingOrder;
        for (int c = 0; c < list->columnCount(); ++c)
            head->setText(c, withoutMark(head->text(c)));
        head->setText(column, head->text(column) + (order == Qt::AscendingOrder ? u" ^"_s : u" v"_s));
        list->setProperty("sortColumn", column);
        list->setProperty("sortOrder", int(order));
        list->sortItems(column, order);
    });
}

} // namespace tarvex
