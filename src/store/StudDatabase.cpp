#include "StudDatabase.h"

using namespace Qt::StringLiterals;

namespace tarvex {

StudDatabase::StudDatabase(const QString &path) : m_db(Database::open(path))
{
    requireTable(u"Genes"_s);
}

StudDatabase::~StudDatabase()
{
    // The cursor goes before the connection it reads from.
    Stock.reset();
}

void StudDatabase::requireTable(const QString &table)
{
    // A cursor on the table proves it is there and readable.
    Table check(*m_db, table);
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
    requireTable(u"Images"_s);
}

void StudDatabase::openRest()
{
    for (const QString &table : {u"Awards"_s, u"BreedNote"_s, u"Matings"_s})
        requireTable(table);
    Stock = std::make_unique<Table>(*m_db, u"Stock"_s);
    Stock->setIndex(u"PrimaryKey"_s);
}

} // namespace tarvex
