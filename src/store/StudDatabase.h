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

    /// The animal on show in the main window, walked in name order.
    std::unique_ptr<Table> Stock;

private:
    void requireTable(const QString &table);

    std::unique_ptr<Database> m_db;
};

} // namespace tarvex
