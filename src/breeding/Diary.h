#pragma once

#include "core/DateFormat.h"
#include "core/Progress.h"
#include "core/Prompts.h"
#include "store/Table.h"

#include <QDate>
#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace tarvex {

/// One dated note of an animal's diary. Unique tells two notes of one day apart.
struct DiaryEntry
{
    qint64 unique = 0;
    QDate date; // invalid for a note stored without one
    QString notes;
};

/// One animal's diary as the diary screen pages through it: newest first, or oldest first
/// after a toggle, a page at a time. Only the notes of the page showing are read; each page
/// keeps where it began, so going back needs no walk from the start. It also keeps what the
/// screen has in hand: the note chosen on the page and the note being written.
class Diary
{
public:
    /// The most notes a page shows, and the most lines a note's box is high.
    static constexpr int kRows = 15;
    static constexpr int kMaxLines = 5;

    Diary(Database &db, qint64 number);

    qint64 number() const { return m_number; }
    /// Counts the animal's notes and starts at page 1 in the order given: newest first
    /// unless oldestFirst. False when the animal has no notes.
    bool showDiary(bool oldestFirst);
    bool oldestFirst() const { return m_oldestFirst; }
    int entryCount() const { return m_count; }

    /// The notes of the page showing: up to fifteen, as many as fit a frame of that height
    /// one under the other, each as high as heightOf says. The first note of a page is
    /// always shown, however high. The note that does not fit begins the next page.
    /// No note of the page is chosen afterwards.
    QList<DiaryEntry> page(const std::function<int(const DiaryEntry &)> &heightOf, int frameHeight);
    /// The page showing read again for new heights (the window's size changed): the note
    /// chosen stays chosen while it is still on the page.
    QList<DiaryEntry> relay(const std::function<int(const DiaryEntry &)> &heightOf, int frameHeight);
    /// The notes of the page read last.
    const QList<DiaryEntry> &rows() const { return m_rows; }
    int pageNumber() const { return m_page; }
    bool canGoBack() const { return m_page > 1; }
    /// Whether notes follow the page shown last.
    bool canGoForward() const;
    /// Moves to the next or the previous page; page() then reads it.
    void forward();
    void backward();

    /// The note of the page the user clicked; -1 when none is chosen.
    void select(int row);
    int selectedRow() const { return m_selected; }

    /// A new note: the panel opens empty.
    void CmdNew_Click();
    /// The chosen note as it is stored, for the panel to show. "Nothing Selected" when no
    /// note is chosen; nothing, silently, when the note has gone meanwhile.
    std::optional<DiaryEntry> CmdAmend_Click(Prompts &prompts);
    /// Whether the panel holds a new note (or the one taken up by CmdAmend_Click).
    bool isNew() const { return m_isNew; }
    /// Ok on the panel: the checks of checkNote with "No Text Entered", then the note is
    /// added, or the one in hand changed. False when refused; focus then names the control
    /// to return to. The diary is to be shown again afterwards.
    bool CmdUpdate_Click(const DateSettings &dates, Prompts &prompts, const QString &dateText,
                         const QString &notes, QString *focus);
    /// Removes the chosen note when the user says Yes to "Delete this entry?". True when the
    /// note has gone and the diary is to be shown again.
    bool CmdDelete_Click(Prompts &prompts);

    /// The number of lines a note's box takes: the lines its text needs, at least one and at
    /// most kMaxLines (a longer note scrolls inside its box).
    static int boxLines(int textLines);

private:
    struct PageStart
    {
        qint64 bookmark = 0;
        int before = 0; // notes on the pages before this one
    };
    bool atAnimal() const;
    void step();
    /// The chosen note as it is stored; "Nothing Selected" when none is chosen.
    std::optional<DiaryEntry> chosen(Prompts &prompts);

    Table m_cursor;
    qint64 m_number;
    bool m_oldestFirst = false;
    int m_count = 0;
    int m_page = 0;
    QList<DiaryEntry> m_rows; // the page shown last
    QList<PageStart> m_pages;
    int m_selected = -1;
    bool m_isNew = false;
    qint64 m_editing = 0; // the Unique of the note taken up for amending
};

/// The checks of Ok on a note, in the program's order: a blank or invalid day gives "A valid
/// date must be entered" (after the box of the date check for an invalid one), then a text
/// that is empty when trimmed gives emptyText. The day when both pass; otherwise focus names
/// the control to return to.
std::optional<QDate> checkNote(const DateSettings &dates, Prompts &prompts, const QString &dateText,
                               const QString &notes, const QString &emptyText, QString *focus);

/// The note of that animal with that Unique, or nothing when it has gone.
std::optional<DiaryEntry> findNote(Database &db, qint64 number, qint64 unique);
/// Adds a note to an animal's diary; returns its Unique.
qint64 addNote(Database &db, qint64 number, const QDate &date, const QString &notes);
/// Changes a note. A new day moves it in the diary's order and gives it a new Unique, which
/// is returned; otherwise the Unique stays. A note that has gone meanwhile is written anew,
/// so that nothing typed is lost.
qint64 amendNote(Database &db, qint64 number, qint64 unique, const QDate &date, const QString &notes);
void removeNote(Database &db, qint64 unique);

/// The checks of a diary entry for many animals, in the program's order: those of checkNote
/// (with "No Diary Entry made"), then "No animals selected to update" for an empty choice.
/// The day when all pass; otherwise focus names the control to return to (empty for the
/// choice).
std::optional<QDate> checkBulkDiary(const DateSettings &dates, Prompts &prompts, const QString &dateText,
                                    const QString &notes, const QList<qint64> &numbers, QString *focus);
/// Writes one note to every animal given, in that order, as one change. Many thousands are
/// written a block at a time, telling progress; a stop (StoreError Cancelled) writes nothing.
void writeBulkDiary(Database &db, const QDate &date, const QString &notes, const QList<qint64> &numbers,
                    Progress &progress = noProgress());
/// The diary entry of many animals at once: checkBulkDiary, then writeBulkDiary. False when
/// something was refused.
bool Bulk_Diary_Entry(Database &db, const DateSettings &dates, Prompts &prompts, const QString &dateText,
                      const QString &notes, const QList<qint64> &numbers, QString *focus);

} // namespace tarvex
