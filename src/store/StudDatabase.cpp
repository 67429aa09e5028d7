#include "StudDatabase.h"

using namespace Qt::StringLiterals;

namespace tarvex {

StudDatabase::StudDatabase(const QString &path) : m_db(Database::open(path))
{
    DbGene = std::make_unique<Table>(*m_db, u"Genes"_s);
}

StudDatabase::~StudDatabase()
{
    // Cursors go before the connection they read from.
    for (auto *cursor : {&Stock, &StockUtil, &Parent, &Awards, &AwardsDyn, &BRNot, &NotesDyn, &Matings, &DbGene,
                         &dbImages})
        cursor->reset();
}

void StudDatabase::renameImageComments()
{
    try {
        m_db->execute(u"ALTER TABLE Images RENAME COLUMN Comment TO Comments"_s);
    } catch (const StoreError &) {
        // Already renamed, or no such field: nothing to do.
    }
}

void StudDatabase::openImages()
{
    dbImages = std::make_unique<Table>(*m_db, u"Images"_s);
}

void StudDatabase::openRest()
{
    Awards = std::make_unique<Table>(*m_db, u"Awards"_s);
    AwardsDyn = std::make_unique<Table>(*m_db, u"Awards"_s);
    BRNot = std::make_unique<Table>(*m_db, u"BreedNote"_s);
    NotesDyn = std::make_unique<Table>(*m_db, u"BreedNote"_s);
    Parent = std::make_unique<Table>(*m_db, u"Stock"_s);
    StockUtil = std::make_unique<Table>(*m_db, u"Stock"_s);
    Matings = std::make_unique<Table>(*m_db, u"Matings"_s);
    Stock = std::make_unique<Table>(*m_db, u"Stock"_s);
    Stock->setIndex(u"PrimaryKey"_s);
}

} // namespace tarvex
