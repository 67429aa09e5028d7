#include "StudDatabase.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

#include <atomic>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

std::atomic<quint64> openings{0};

} // namespace

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
    watchPedigrees();
}

void StudDatabase::watchPedigrees()
{
    m_opening = ++openings;
    // Triggers of this connection alone, kept in memory: nothing is added to the file. Every
    // write path of the program passes through them, whichever screen or routine saves.
    sqlite3_create_function_v2(
        m_db->sql().getHandle(), "tarvex_pedigree_changed", 0, SQLITE_UTF8, &m_pedigreeChanges,
        [](sqlite3_context *c, int, sqlite3_value **) {
            ++*static_cast<quint64 *>(sqlite3_user_data(c));
            sqlite3_result_null(c);
        },
        nullptr, nullptr, nullptr);
    for (const char *when : {"AFTER INSERT ON main.Stock", "AFTER DELETE ON main.Stock",
                             "AFTER UPDATE OF Number, Sire, Dam ON main.Stock"}) {
        const QString name = u"tarvex_pedigree_%1"_s.arg(QString::fromLatin1(when).section(u' ', 1, 1).toLower());
        m_db->execute(u"CREATE TEMP TRIGGER IF NOT EXISTS %1 %2 BEGIN SELECT tarvex_pedigree_changed(); END"_s.arg(
            name, QString::fromLatin1(when)));
    }
}

StudDatabase::PedigreeStamp StudDatabase::pedigreeStamp()
{
    return {m_opening, m_pedigreeChanges, m_db->scalar(u"PRAGMA data_version"_s).toLongLong()};
}

} // namespace tarvex
