#include "QuickSearchModel.h"

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {
// Rows read at a time: a screenful or two.
constexpr qsizetype kPage = 200;
} // namespace

QuickSearchModel::QuickSearchModel(const QStringList &heads, QObject *parent)
    : QAbstractTableModel(parent), m_heads(heads)
{
}

void QuickSearchModel::show(std::unique_ptr<QuickSearch::Results> results)
{
    beginResetModel();
    m_results = std::move(results);
    m_shown = 0;
    if (m_results) {
        m_results->fetch(kPage);
        m_shown = int(m_results->rows().size());
    }
    endResetModel();
}

const QuickSearchRow *QuickSearchModel::rowAt(int row) const
{
    if (!m_results || row < 0 || row >= m_shown)
        return nullptr;
    return &m_results->rows().at(row);
}

int QuickSearchModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_shown;
}

int QuickSearchModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_heads.size());
}

QVariant QuickSearchModel::data(const QModelIndex &index, int role) const
{
    const QuickSearchRow *r = rowAt(index.row());
    if (!r)
        return {};
    if (role == Qt::DisplayRole) {
        switch (index.column()) {
        case QuickSearch::Results::Name:
            return r->name;
        case QuickSearch::Results::RingNo:
            return r->ringNo;
        case QuickSearch::Results::Type:
            return r->type;
        case QuickSearch::Results::Colour:
            return r->colour;
        default:
            return {};
        }
    }
    // The row's key: "X" and the number with its leading blank.
    if (role == Qt::UserRole)
        return u"X "_s + QString::number(r->number);
    return {};
}

QVariant QuickSearchModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return m_heads.value(section);
    return {};
}

bool QuickSearchModel::canFetchMore(const QModelIndex &parent) const
{
    return !parent.isValid() && m_results && (m_shown < m_results->rows().size() || !m_results->atEnd());
}

void QuickSearchModel::fetchMore(const QModelIndex &parent)
{
    if (!canFetchMore(parent))
        return;
    if (m_shown == m_results->rows().size())
        m_results->fetch(kPage);
    const int now = int(m_results->rows().size());
    if (now == m_shown)
        return;
    beginInsertRows({}, m_shown, now - 1);
    m_shown = now;
    endInsertRows();
}

void QuickSearchModel::sort(int column, Qt::SortOrder order)
{
    if (!m_results)
        return;
    beginResetModel();
    m_results->sortBy(column, order == Qt::DescendingOrder);
    m_results->fetch(kPage);
    m_shown = int(m_results->rows().size());
    endResetModel();
}

} // namespace tarvex
