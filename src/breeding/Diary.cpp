#include "Diary.h"

#include "store/DaySerial.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvex {

Diary::Diary(Database &db, qint64 number) : m_cursor(db, u"BreedNote"_s), m_number(number)
{
    m_cursor.setIndex(u"PrimaryKey"_s);
}

bool Diary::atAnimal() const
{
    return m_cursor.hasCurrent() && m_cursor.field(u"Number"_s).toLongLong() == m_number &&
           !m_cursor.field(u"Number"_s).isNull();
}

void Diary::step()
{
    if (m_oldestFirst)
        m_cursor.moveNext();
    else
        m_cursor.movePrevious();
}

bool Diary::showDiary(bool oldestFirst)
{
    m_oldestFirst = oldestFirst;
    m_count =
        m_cursor.database().scalar(u"SELECT count(*) FROM BreedNote WHERE Number = ?"_s, {m_number}).toInt();
    m_pages.clear();
    m_page = 0;
    m_rows.clear();
    m_selected = -1;
    if (m_count == 0)
        return false;
    // Newest first: the last note of the animal is the last row before the next animal's.
    if (oldestFirst)
        m_cursor.seek(u">="_s, {m_number});
    else
        m_cursor.seek(u"<"_s, {m_number + 1});
    if (!atAnimal()) {
        m_count = 0;
        return false;
    }
    m_pages = {{m_cursor.bookmark(), 0}};
    m_page = 1;
    return true;
}

QList<DiaryEntry> Diary::page(const std::function<int(const DiaryEntry &)> &heightOf, int frameHeight)
{
    QList<DiaryEntry> rows;
    m_rows.clear();
    m_selected = -1;
    if (m_page < 1 || m_page > m_pages.size())
        return rows;
    const PageStart start = m_pages.at(m_page - 1);
    m_cursor.setBookmark(start.bookmark);
    int top = 0;
    while (atAnimal() && rows.size() < kRows) {
        DiaryEntry e{m_cursor.field(u"Unique"_s).toLongLong(), DaySerial::toDate(m_cursor.field(u"Date"_s)),
                     m_cursor.field(u"Notes"_s).toString()};
        const int height = heightOf(e);
        if (!rows.isEmpty() && top + height > frameHeight)
            break;
        top += height;
        rows << e;
        step();
    }
    // The note that did not fit, or the sixteenth, begins the next page.
    m_pages.resize(m_page);
    if (atAnimal() && start.before + int(rows.size()) < m_count)
        m_pages << PageStart{m_cursor.bookmark(), start.before + int(rows.size())};
    m_rows = rows;
    return rows;
}

QList<DiaryEntry> Diary::relay(const std::function<int(const DiaryEntry &)> &heightOf, int frameHeight)
{
    const qint64 unique = m_selected >= 0 ? m_rows.at(m_selected).unique : 0;
    const QList<DiaryEntry> rows = page(heightOf, frameHeight);
    for (int i = 0; unique != 0 && i < rows.size(); ++i)
        if (rows.at(i).unique == unique)
            m_selected = i;
    return rows;
}

bool Diary::canGoForward() const
{
    return m_page >= 1 && m_page < m_pages.size();
}

void Diary::forward()
{
    if (canGoForward())
        ++m_page;
}

void Diary::backward()
{
    if (canGoBack())
        --m_page;
}

void Diary::select(int row)
{
    m_selected = row >= 0 && row < m_rows.size() ? row : -1;
}

void Diary::CmdNew_Click()
{
    m_isNew = true;
    m_editing = 0;
}

std::optional<DiaryEntry> Diary::chosen(Prompts &prompts)
{
    if (m_selected < 0) {
        prompts.show(u"Nothing Selected"_s, QString(), Prompts::Icon::Information);
        return std::nullopt;
    }
    return findNote(m_cursor.database(), m_number, m_rows.at(m_selected).unique);
}

std::optional<DiaryEntry> Diary::CmdAmend_Click(Prompts &prompts)
{
    const std::optional<DiaryEntry> note = chosen(prompts);
    if (note) {
        m_isNew = false;
        m_editing = note->unique;
    }
    return note;
}

bool Diary::CmdUpdate_Click(const DateSettings &dates, Prompts &prompts, const QString &dateText,
                            const QString &notes, QString *focus)
{
    const std::optional<QDate> date = checkNote(dates, prompts, dateText, notes, u"No Text Entered"_s, focus);
    if (!date)
        return false;
    if (m_isNew)
        addNote(m_cursor.database(), m_number, *date, notes);
    else
        amendNote(m_cursor.database(), m_number, m_editing, *date, notes);
    return true;
}

bool Diary::CmdDelete_Click(Prompts &prompts)
{
    const std::optional<DiaryEntry> note = chosen(prompts);
    if (!note)
        return false;
    if (prompts.message(u"Delete this entry?"_s, u"Delete"_s, Prompts::Icon::Question,
                        Prompts::Buttons::YesNoCancel) != Prompts::Answer::Yes)
        return false;
    removeNote(m_cursor.database(), note->unique);
    return true;
}

int Diary::boxLines(int textLines)
{
    return std::clamp(textLines, 1, kMaxLines);
}

std::optional<QDate> checkNote(const DateSettings &dates, Prompts &prompts, const QString &dateText,
                               const QString &notes, const QString &emptyText, QString *focus)
{
    const std::optional<QDate> date = requiredDate(dateText, dates, prompts);
    if (!date) {
        *focus = u"BRNDate"_s;
        return std::nullopt;
    }
    if (notes.trimmed().isEmpty()) {
        prompts.show(emptyText, QString(), Prompts::Icon::Exclamation);
        *focus = u"BrNNotes"_s;
        return std::nullopt;
    }
    return date;
}

std::optional<DiaryEntry> findNote(Database &db, qint64 number, qint64 unique)
{
    std::optional<DiaryEntry> found;
    db.eachRow(u"SELECT \"Unique\", Date, Notes FROM BreedNote WHERE \"Unique\" = ? AND Number = ?"_s,
               {unique, number}, [&](const Row &row) {
                   found = DiaryEntry{row.number(u"Unique"_s), DaySerial::toDate(row.value(u"Date"_s)),
                                      row.text(u"Notes"_s)};
               });
    return found;
}

namespace {
qint64 insertNote(Database &db, qint64 number, const QDate &date, const QString &notes)
{
    db.executeRepeated(u"INSERT INTO BreedNote (Number, Date, Notes) VALUES (?, ?, ?)"_s,
                       {number, DaySerial::fromDate(date), notes});
    return db.sql().getLastInsertRowid();
}
} // namespace

qint64 addNote(Database &db, qint64 number, const QDate &date, const QString &notes)
{
    Transaction tx(db);
    const qint64 unique = insertNote(db, number, date, notes);
    tx.commit();
    return unique;
}

qint64 amendNote(Database &db, qint64 number, qint64 unique, const QDate &date, const QString &notes)
{
    Transaction tx(db);
    const QDate was =
        DaySerial::toDate(db.scalar(u"SELECT Date FROM BreedNote WHERE \"Unique\" = ?"_s, {unique}));
    qint64 now = unique;
    if (was != date) {
        // The day is part of the note's key: the note is written anew in its new place.
        db.execute(u"DELETE FROM BreedNote WHERE \"Unique\" = ?"_s, {unique});
        now = insertNote(db, number, date, notes);
    } else {
        db.execute(u"UPDATE BreedNote SET Date = ?, Notes = ? WHERE \"Unique\" = ?"_s,
                   {DaySerial::fromDate(date), notes, unique});
    }
    tx.commit();
    return now;
}

void removeNote(Database &db, qint64 unique)
{
    Transaction tx(db);
    db.execute(u"DELETE FROM BreedNote WHERE \"Unique\" = ?"_s, {unique});
    tx.commit();
}

std::optional<QDate> checkBulkDiary(const DateSettings &dates, Prompts &prompts, const QString &dateText,
                                    const QString &notes, const QList<qint64> &numbers, QString *focus)
{
    const std::optional<QDate> date = checkNote(dates, prompts, dateText, notes, u"No Diary Entry made"_s, focus);
    if (!date)
        return std::nullopt;
    if (numbers.isEmpty()) {
        prompts.show(u"No animals selected to update"_s, QString(), Prompts::Icon::Exclamation);
        focus->clear();
        return std::nullopt;
    }
    return date;
}

void writeBulkDiary(Database &db, const QDate &date, const QString &notes, const QList<qint64> &numbers,
                    Progress &progress)
{
    // The whole entry is one change: a stop part way leaves no animal with the note.
    constexpr qsizetype kBlock = 10000;
    progress.start(numbers.size());
    Transaction tx(db);
    for (qsizetype i = 0; i < numbers.size(); ++i) {
        if (i % kBlock == 0) {
            if (progress.cancelled())
                throw StoreError(StoreError::Cancelled, u"Operation canceled by user."_s);
            progress.step(i);
        }
        insertNote(db, numbers.at(i), date, notes);
    }
    tx.commit();
    progress.step(numbers.size());
}

bool Bulk_Diary_Entry(Database &db, const DateSettings &dates, Prompts &prompts, const QString &dateText,
                      const QString &notes, const QList<qint64> &numbers, QString *focus)
{
    const std::optional<QDate> date = checkBulkDiary(dates, prompts, dateText, notes, numbers, focus);
    if (!date)
        return false;
    writeBulkDiary(db, *date, notes, numbers);
    return true;
}

} // namespace tarvex
