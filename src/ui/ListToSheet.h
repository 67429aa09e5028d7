#pragma once

// A list on screen goes to a spreadsheet as an .xlsx file, which any spreadsheet program
// opens.
//
// Where the desktop has a program for .xlsx files (asked once of the desktop through
// `xdg-mime query default` for the type's name; no answer within a few seconds, no program,
// or no xdg-mime all mean none), the sheet is written to a folder of the program's own
// under the system's temporary folder, named after the list's title ("hello.xlsx",
// "hello (2).xlsx" for the next one of the same title), and opened there, left for the
// user to save or print. That folder is private to the user and is not emptied when the
// program ends: a breeder who saved the sheet in place with the spreadsheet program keeps
// it, and the system clears its temporary folder in its own time.
//
// Where there is no such program, or it could not be started, the "Copy to Excel" buttons
// still work: they offer to save the file wherever the breeder chooses, so that it can be
// taken to another computer or sent on.
//
// The list is read when it is handed over (listviewA), not kept as a pointer, so the one
// instance never holds a list whose window has closed; CreateExcel uses up the title and
// list it was handed, so one screen's list never goes out under another's title.

#include "reporting/ListSheet.h"

#include <QString>

#include <functional>
#include <optional>

class QAbstractItemModel;
class QTreeWidget;
class QUrl;
class QWidget;

namespace tarvex {

class Prompts;

/// Copies a list on screen to a spreadsheet left open for the user. One shared instance serves the program.
class clslvtoExcel
{
public:
    static clslvtoExcel &shared();

    void Heading(const QString &title);
    void listviewA(const QTreeWidget *list);
    /// The same for a list drawn from a model (the search's results), read row by row in
    /// the order shown with the heads as shown.
    void listviewA(const QAbstractItemModel *list);
    /// Yes when the desktop has a program that opens .xlsx files (looked up once, then kept).
    bool ExcelExists();
    /// Writes the sheet and opens it in that program; where none exists, offers to save the file instead.
    /// Failures get a clear message through prompts.
    void CreateExcel(QWidget *parent, Prompts &prompts);

    // What the desktop does, replaceable by tests. An empty function restores the
    // desktop's own.
    /// Opens the file in the desktop's program for it; no when that failed.
    using Opener = std::function<bool(const QUrl &file)>;
    /// Whether the desktop has a program for .xlsx files; asked once until replaced again.
    using ProgramQuery = std::function<bool()>;
    void setOpener(Opener opener);
    void setProgramQuery(ProgramQuery query);
    /// The folder the sheets to be opened go in; empty for the program's own temporary one.
    void setWorkFolder(const QString &folder);

    /// The sheet as the last CreateExcel wrote it.
    const ListSheet &lastSheet() const { return m_last; }

private:
    clslvtoExcel() = default;
    QString workFolder(Prompts &prompts);
    bool write(const ListSheet &sheet, const QString &path, QWidget *parent, Prompts &prompts);
    void offerToSave(const ListSheet &sheet, QWidget *parent, Prompts &prompts);

    ListSheet m_sheet;
    ListSheet m_last;
    std::optional<bool> m_programFound;
    QString m_folder;
    Opener m_opener;
    ProgramQuery m_query;
};

} // namespace tarvex
