#pragma once

#include "store/Table.h"

#include <QString>

#include <array>

namespace tarvex {

/// The four filters of browsing: 0 archived only, 1 unarchived only, 2 male only,
/// 3 female only. Ticking one of a pair clears the other.
class BrowseFilter
{
public:
    /// Toggles an item, clearing its partner when it becomes ticked.
    void toggle(int item);
    bool ticked(int item) const { return m_ticked.at(item); }
    bool any() const;
    void clear() { m_ticked = {}; }

    /// Whether an animal with this archive and sex passes; a null archive passes only when
    /// neither archive item is ticked.
    bool passes(const QVariant &archive, const QVariant &sex, const QString &maleWord,
                const QString &femaleWord) const;

    /// From the cursor's row, moves on in the direction of travel to the first row that
    /// passes. Past either end it goes back to the bookmark (when there is one) and gives false.
    bool skipToPassing(Table &stock, bool forward, std::optional<qint64> bookmark, const QString &maleWord,
                       const QString &femaleWord) const;

private:
    std::array<bool, 4> m_ticked{};
};

} // namespace tarvex
