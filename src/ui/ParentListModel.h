#pragma once

#include "store/StockLookup.h"

#include <QAbstractListModel>

#include <memory>
#include <optional>

class QComboBox;

namespace tarvex {

/// A sire or dam list on screen: the stud's list as it was read, and the one animal shown
/// at its end while a record needs it (an archived parent, a pick of the quick search). The
/// drop-down shows it without copying a name, so lists of hundreds of thousands of animals
/// cost nothing to show again, and a new list is told from the one shown by its address.
class ParentListModel : public QAbstractListModel
{
public:
    explicit ParentListModel(QObject *parent = nullptr);

    /// Shows that list; nothing happens when it is the list shown already.
    void setList(std::shared_ptr<const ParentList> list);
    /// Shows an animal after the list's own entries, or none.
    void setAddition(const std::optional<ParentEntry> &addition);

    /// The number behind a row; -1 for the blank entry or no row.
    qint64 numberAt(int row) const;
    /// Every entry shown, in order.
    QList<ParentEntry> entries() const;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

    /// Makes a drop-down show this model, and fit for a long list: its size does not follow
    /// its entries, and its pop-up lays out rows of one height.
    static ParentListModel *install(QComboBox *combo);

private:
    const ParentEntry *entry(int row) const;

    std::shared_ptr<const ParentList> m_list;
    std::optional<ParentEntry> m_addition;
};

} // namespace tarvex
