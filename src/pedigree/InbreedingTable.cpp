#include "InbreedingTable.h"

#include <QLocale>

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace tarvex {

InbreedingTable::InbreedingTable(QObject *parent) : QAbstractTableModel(parent) {}

void InbreedingTable::setRows(std::shared_ptr<const std::vector<StudInbreedingRow>> rows)
{
    beginResetModel();
    m_rows = std::move(rows);
    m_order.resize(m_rows ? m_rows->size() : 0);
    std::iota(m_order.begin(), m_order.end(), 0);
    endResetModel();
}

const StudInbreedingRow &InbreedingTable::row(int at) const
{
    return (*m_rows)[std::size_t(m_order[std::size_t(at)])];
}

int InbreedingTable::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_order.size());
}

int InbreedingTable::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Columns;
}

QVariant InbreedingTable::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const StudInbreedingRow &r = row(index.row());
    if (role == Qt::TextAlignmentRole)
        return index.column() == Name ? QVariant() : QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case Number:
        return r.number;
    case Name:
        return r.name;
    case Coi:
        return QString::number(r.coi * 100, 'f', 2);
    case Generations:
        return r.completeness.generations;
    case Known:
        return qRound(r.completeness.known * 100);
    default:
        return {};
    }
}

QVariant InbreedingTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    static const QString heads[Columns] = {u"Number"_s, u"Name"_s, u"COI %"_s, u"Generations"_s,
                                           u"Ancestors Known %"_s};
    return section >= 0 && section < Columns ? heads[section] : QVariant();
}

void InbreedingTable::sort(int column, Qt::SortOrder order)
{
    if (!m_rows)
        return;
    const auto &rows = *m_rows;
    const auto key = [&](int i) -> const StudInbreedingRow & { return rows[std::size_t(i)]; };
    // Each column compared as what it holds; equal rows keep the order of their numbers.
    const auto less = [&](int a, int b) {
        const StudInbreedingRow &x = key(a), &y = key(b);
        switch (column) {
        case Name:
            if (const int c = QString::compare(x.name, y.name, Qt::CaseInsensitive); c != 0)
                return c < 0;
            break;
        case Coi:
            if (x.coi != y.coi)
                return x.coi < y.coi;
            break;
        case Generations:
            if (x.completeness.generations != y.completeness.generations)
                return x.completeness.generations < y.completeness.generations;
            break;
        case Known:
            if (x.completeness.known != y.completeness.known)
                return x.completeness.known < y.completeness.known;
            break;
        default:
            break;
        }
        return x.number < y.number;
    };
    // The rows are put in their new order afresh: nothing on screen points into the old.
    beginResetModel();
    std::sort(m_order.begin(), m_order.end(), less);
    if (order == Qt::DescendingOrder)
        std::reverse(m_order.begin(), m_order.end());
    endResetModel();
}

QString InbreedingTable::summary() const
{
    if (!m_rows || m_rows->empty())
        return u"No animals"_s;
    double sum = 0, highest = 0;
    for (const StudInbreedingRow &r : *m_rows) {
        sum += r.coi;
        highest = std::max(highest, r.coi);
    }
    const QLocale english(QLocale::English);
    return u"%1 animals, average COI %2%, highest %3%"_s.arg(english.toString(qlonglong(m_rows->size())))
        .arg(sum / double(m_rows->size()) * 100, 0, 'f', 2)
        .arg(highest * 100, 0, 'f', 2);
}

} // namespace tarvex
