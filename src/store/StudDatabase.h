#pragma once

#include "Database.h"
#include "Table.h"

#include <memory>

namespace tarvex {

/// The open stud database: one connection for all the program's work, and the cursor of
/// the animal on show in the main window. Opened in the order the program has always used,
/// so that each kind of failure shows at its own step. Everything else reads through its
/// own queries or cursors of its own, so no routine moves another's position.
class StudDatabase
{
public:
    /// Opens the file and checks the Genes table: the first real access to the file.
    /// Throws StoreError (3024 missing file, 3011 missing table, others).
    explicit StudDatabase(const QString &path);
    ~StudDatabase();

    /// Older files named the picture comment field "Comment"; failure is ignored.
    void renameImageComments();
    /// Checks the Images table; a file without it is too old (3011).
    void openImages();
    /// Checks the remaining tables and opens the cursor of the animal on show.
    void openRest();

    Database &handle() { return *m_db; }

    /// Tells whether the stud's pedigrees may have changed: a new value after any save of
    /// ours that adds or removes an animal or changes a Sire or Dam, and after any save by
    /// another program. Results worked out from the pedigrees stay good while it is the same.
    struct PedigreeStamp
    {
        quint64 opening = 0;  // this opening of a stud, told from every other in the run
        quint64 changes = 0;  // our own saves touching parents
        qint64 elsewhere = 0; // saves by other connections
        bool operator==(const PedigreeStamp &) const = default;
    };
    PedigreeStamp pedigreeStamp();

    /// The animal on show in the main window, walked in name order.
    std::unique_ptr<Table> Stock;

private:
    void requireTable(const QString &table);

    void watchPedigrees();

    std::unique_ptr<Database> m_db;
    quint64 m_opening = 0;
    quint64 m_pedigreeChanges = 0;
};

} // namespace tarvex
