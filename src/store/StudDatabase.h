#pragma once

#include "Database.h"
#include "Table.h"

#include <memory>

namespace tarvex {

/// The open stud database with the ten cursors of the main window, all on one
/// connection that also serves the program's SQL work. Opened in the order the program
/// has always used, so that each kind of failure shows at its own step.
class StudDatabase
{
public:
    /// Opens the file and the Genes cursor: the first real access to the file.
    /// Throws StoreError (3024 missing file, 3011 missing table, others).
    explicit StudDatabase(const QString &path);
    ~StudDatabase();

    /// Older files named the picture comment field "Comment"; failure is ignored.
    void renameImageComments();
    /// Opens the Images cursor; a file without that table is too old (3011).
    void openImages();
    /// Opens the remaining cursors.
    void openRest();

    Database &handle() { return *m_db; }

    std::unique_ptr<Table> Stock, StockUtil, Parent, Awards, AwardsDyn, BRNot, NotesDyn, Matings, DbGene,
        dbImages;

private:
    std::unique_ptr<Database> m_db;
};

} // namespace tarvex
