#include "ParentListModel.h"

#include <QComboBox>
#include <QListView>

namespace tarvex {

ParentListModel::ParentListModel(QObject *parent)
    : QAbstractListModel(parent), m_list(std::make_shared<const ParentList>())
{
}

ParentListModel *ParentListModel::install(QComboBox *combo)
{
    auto *model = new ParentListModel(combo);
    // A list of every animal of one sex: the drop-down keeps its size whatever the names,
    // and its pop-up lays rows out without measuring each.
    auto *view = new QListView(combo);
    view->setUniformItemSizes(true);
    combo->setView(view);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(12);
    combo->setModel(model);
    return model;
}

void ParentListModel::setList(std::shared_ptr<const ParentList> list)
{
    if (!list || list == m_list)
        return;
    beginResetModel();
    m_list = std::move(list);
    endResetModel();
}

void ParentListModel::setAddition(const std::optional<ParentEntry> &addition)
{
    if (addition == m_addition)
        return;
    const int row = int(m_list->size());
    if (m_addition) {
        beginRemoveRows({}, row, row);
        m_addition.reset();
        endRemoveRows();
    }
    if (addition) {
        beginInsertRows({}, row, row);
        m_addition = addition;
        endInsertRows();
    }
}

const ParentEntry *ParentListModel::entry(int row) const
{
    if (row >= 0 && row < m_list->size())
        return &m_list->at(row);
    if (m_addition && row == m_list->size())
        return &*m_addition;
    return nullptr;
}

qint64 ParentListModel::numberAt(int row) const
{
    const ParentEntry *e = entry(row);
    return e ? e->number : -1;
}

QList<ParentEntry> ParentListModel::entries() const
{
    QList<ParentEntry> all = m_list->entries();
    if (m_addition)
        all.append(*m_addition);
    return all;
}

int ParentListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_list->size()) + (m_addition ? 1 : 0);
}

QVariant ParentListModel::data(const QModelIndex &index, int role) const
{
    const ParentEntry *e = entry(index.row());
    if (!e)
        return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return e->name;
    if (role == Qt::UserRole)
        return e->number;
    return {};
}

} // namespace tarvex
