#include "BrowseFilter.h"

using namespace Qt::StringLiterals;

namespace tarvex {

void BrowseFilter::toggle(int item)
{
    m_ticked[item] = !m_ticked[item];
    if (m_ticked[item])
        m_ticked[item ^ 1] = false;
}

bool BrowseFilter::any() const
{
    return m_ticked[0] || m_ticked[1] || m_ticked[2] || m_ticked[3];
}

bool BrowseFilter::passes(const QVariant &archive, const QVariant &sex, const QString &maleWord,
                          const QString &femaleWord) const
{
    const bool archiveOk = (!m_ticked[0] && !m_ticked[1]) || (m_ticked[0] && archive.toString() == u"Yes") ||
                           (m_ticked[1] && archive.toString() == u"No");
    const bool sexOk = (!m_ticked[2] && !m_ticked[3]) || (m_ticked[2] && sex.toString() == maleWord) ||
                       (m_ticked[3] && sex.toString() == femaleWord);
    return archiveOk && sexOk;
}

bool BrowseFilter::skipToPassing(Table &stock, bool forward, std::optional<qint64> bookmark,
                                 const QString &maleWord, const QString &femaleWord) const
{
    for (;;) {
        if (!stock.hasCurrent()) {
            if (bookmark)
                stock.setBookmark(*bookmark);
            return false;
        }
        if (passes(stock.field(u"Archive"_s), stock.field(u"Sex"_s), maleWord, femaleWord))
            return true;
        if (forward)
            stock.moveNext();
        else
            stock.movePrevious();
    }
}

} // namespace tarvex
