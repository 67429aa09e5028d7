#pragma once

#include "store/Database.h"

#include <QAbstractListModel>
#include <QHash>
#include <QList>

namespace tarvex {

/// A list of animals as the screens that pick many of them show it (the diary entry for
/// many, the hutch labels): the name shown, the number behind it. A stud may hold a million
/// animals, so the list holds their numbers only and reads a name when its row is first
/// shown, without a widget item for each.
class AnimalListModel : public QAbstractListModel
{
public:
    AnimalListModel(Database &db, QList<qint64> numbers, QObject *parent = nullptr);

    qint64 numberAt(int row) const { return m_numbers.at(row); }
    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    Database &m_db;
    QList<qint64> m_numbers;
    mutable QHash<int, QString> m_names; // the rows shown so far
};

} // namespace tarvex
