#pragma once

#include "StudInbreeding.h"

#include <QAbstractTableModel>

#include <memory>

namespace tarvex {

/// The whole stud's coefficients as a table to show, sort and copy to a spreadsheet: one
/// row per animal, a million as quickly as ten, sorted by any column (ties by number).
class InbreedingTable : public QAbstractTableModel
{
public:
    enum Column { Number, Name, Coi, Generations, Known, Columns };

    explicit InbreedingTable(QObject *parent = nullptr);
    void setRows(std::shared_ptr<const std::vector<StudInbreedingRow>> rows);
    const StudInbreedingRow &row(int at) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    /// "1,000,000 animals, average COI 18.33%, highest 84.59%".
    QString summary() const;

private:
    std::shared_ptr<const std::vector<StudInbreedingRow>> m_rows;
    std::vector<int> m_order; // the rows in the order shown
};

} // namespace tarvex
