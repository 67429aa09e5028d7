#include "Table.h"

#include "IndexCatalogue.h"

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

constexpr int kInvalidArgument = 3001;
constexpr int kNoCurrentIndex = 3019;
constexpr int kNotAValidBookmark = 3159;
constexpr int kFieldCannotBeUpdated = 3164;

QVariant parseDefault(const QVariant &declared)
{
    if (declared.isNull())
        return {};
    QString text = declared.toString().trimmed();
    if (text.size() >= 2 && text.startsWith(u'\'') && text.endsWith(u'\''))
        return text.mid(1, text.size() - 2).replace(u"''"_s, u"'"_s);
    bool ok = false;
    const qlonglong whole = text.toLongLong(&ok);
    if (ok)
        return whole;
    const double real = text.toDouble(&ok);
    return ok ? QVariant(real) : QVariant();
}

} // namespace

Table::Table(Database &db, const QString &table) : m_db(db)
{
    try {
        SQLite::Statement info(db.sql(), u"PRAGMA table_info(%1)"_s.arg(Database::quoted(table)).toStdString());
        while (info.executeStep()) {
            const QString name = QString::fromUtf8(info.getColumn(1).getText());
            m_columnIndex.insert(name.toLower(), int(m_columns.size()));
            m_columns << name;
            m_defaults << parseDefault(Database::columnValue(info, 4));
            if (info.getColumn(5).getInt() == 1 &&
                QString::fromUtf8(info.getColumn(2).getText()).compare(u"INTEGER"_s, Qt::CaseInsensitive) == 0)
                m_counterColumn = int(m_columns.size()) - 1;
        }
    } catch (const SQLite::Exception &e) {
        Database::fail(e);
    }
    if (m_columns.isEmpty())
        throw StoreError(StoreError::ObjectNotFound,
                         u"The database engine could not find the object '%1'."_s.arg(table));
    m_table = m_db.scalar(u"SELECT name FROM sqlite_master WHERE type = 'table' AND name = ? COLLATE NOCASE"_s,
                          {table})
                  .toString();
    if (m_counterColumn >= 0) {
        const QString sql =
            m_db.scalar(u"SELECT sql FROM sqlite_master WHERE type = 'table' AND name = ?"_s, {m_table}).toString();
        if (!sql.contains(u"AUTOINCREMENT"_s, Qt::CaseInsensitive))
            m_counterColumn = -1;
    }
}

Table::~Table() = default;

int Table::column(const QString &name) const
{
    const auto it = m_columnIndex.constFind(name.toLower());
    if (it == m_columnIndex.cend())
        throw StoreError(StoreError::ItemNotFound, u"Item not found in this collection: %1."_s.arg(name));
    return it.value();
}

bool Table::hasField(const QString &name) const
{
    return m_columnIndex.contains(name.toLower());
}

void Table::setIndex(const QString &name)
{
    const auto definition = findIndex(m_table, name);
    if (!definition)
        throw StoreError(StoreError::NotAnIndex, u"'%1' is not an index in this table."_s.arg(name));
    m_indexName = definition->name;
    m_indexFields.clear();
    for (const QString &f : definition->fields)
        m_indexFields << m_columns.at(column(f));
    if (m_hasRow)
        m_lastKey = keyOf(m_values, m_rowid);
    else
        m_lastKey.reset();
}

QStringList Table::orderFields() const
{
    QStringList fields = m_indexFields;
    // Rows with equal keys keep the order in which they were added; an index on the
    // counter alone is that order already.
    if (fields.isEmpty() || m_counterColumn < 0 || fields.last() != m_columns.at(m_counterColumn))
        fields << u"rowid"_s;
    return fields;
}

QVariantList Table::keyOf(const QVariantList &values, qint64 rowid) const
{
    QVariantList key;
    for (const QString &f : orderFields())
        key << (f == u"rowid"_s ? QVariant(rowid) : values.at(column(f)));
    return key;
}

SQLite::Statement &Table::statement(const QString &sql)
{
    return m_db.cached(sql);
}

void Table::setRow(SQLite::Statement &st)
{
    m_rowid = st.getColumn(0).getInt64();
    m_values.resize(m_columns.size());
    for (int i = 0; i < m_columns.size(); ++i)
        m_values[i] = Database::columnValue(st, i + 1);
    m_hasRow = true;
    m_eof = m_bof = false;
    m_lastKey = keyOf(m_values, m_rowid);
}

void Table::clearPosition(bool eof, bool bof)
{
    m_hasRow = false;
    m_eof = eof;
    m_bof = bof;
}

bool Table::runStep(const Step &step, bool upward)
{
    QStringList order;
    for (const QString &f : orderFields())
        order << (f == u"rowid"_s ? f : Database::quoted(f)) + (upward ? u" ASC"_s : u" DESC"_s);
    QString sql = u"SELECT rowid, * FROM %1"_s.arg(Database::quoted(m_table));
    if (!step.where.isEmpty())
        sql += u" WHERE "_s + step.where;
    sql += u" ORDER BY "_s + order.join(u", "_s) + u" LIMIT 1"_s;
    try {
        SQLite::Statement &st = statement(sql);
        for (int i = 0; i < step.params.size(); ++i)
            Database::bind(st, i + 1, step.params.at(i));
        if (!st.executeStep())
            return false;
        setRow(st);
        st.reset();
        return true;
    } catch (const SQLite::Exception &e) {
        Database::fail(e);
    }
}

bool Table::locate(const QVariantList &keys, bool upward, bool inclusive, bool equalOnly)
{
    const QStringList fields = orderFields();
    const auto name = [&](int i) { return fields.at(i) == u"rowid"_s ? fields.at(i) : Database::quoted(fields.at(i)); };
    const auto equalPrefix = [&](int count, Step &step) {
        for (int i = 0; i < count; ++i) {
            if (keys.at(i).isNull()) {
                step.where += name(i) + u" IS NULL AND "_s;
            } else {
                step.where += name(i) + u" = ? AND "_s;
                step.params << keys.at(i);
            }
        }
    };

    QList<Step> steps;
    const int m = int(keys.size());
    if (equalOnly || inclusive || m == 0) {
        Step all;
        equalPrefix(m, all);
        all.where.chop(5); // the last " AND "
        steps << all;
    }
    if (!equalOnly) {
        // The nearest rows share the longest prefix with the key; widen the prefix step by step.
        for (int i = m - 1; i >= 0; --i) {
            const QVariant &v = keys.at(i);
            QList<Step> alternatives;
            if (upward) {
                Step s;
                equalPrefix(i, s);
                if (v.isNull()) {
                    s.where += name(i) + u" IS NOT NULL"_s;
                } else {
                    s.where += name(i) + u" > ?"_s;
                    s.params << v;
                }
                alternatives << s;
            } else if (!v.isNull()) {
                Step less;
                equalPrefix(i, less);
                less.where += name(i) + u" < ?"_s;
                less.params << v;
                Step null;
                equalPrefix(i, null);
                null.where += name(i) + u" IS NULL"_s;
                alternatives << less << null;
            }
            steps << alternatives;
        }
    }
    for (const Step &s : steps) {
        if (runStep(s, upward))
            return true;
    }
    return false;
}

void Table::seek(const QString &comparison, const QVariantList &keys)
{
    if (m_indexFields.isEmpty())
        throw StoreError(kNoCurrentIndex, u"Operation invalid without a current index."_s);
    if (keys.isEmpty() || keys.size() > m_indexFields.size())
        throw StoreError(kInvalidArgument, u"Invalid argument."_s);
    if (m_mode != EditMode::None)
        cancelUpdate();
    const QString op = comparison.trimmed();
    bool found = false;
    if (op == u"=")
        found = locate(keys, true, true, true);
    else if (op == u">=")
        found = locate(keys, true, true);
    else if (op == u">")
        found = locate(keys, true, false);
    else if (op == u"<=")
        found = locate(keys, false, true);
    else if (op == u"<")
        found = locate(keys, false, false);
    else
        throw StoreError(kInvalidArgument, u"Invalid argument."_s);
    m_noMatch = !found;
    m_deleted = false;
    if (!found)
        clearPosition(true, true);
}

void Table::moveFirst()
{
    if (m_mode != EditMode::None)
        cancelUpdate();
    m_deleted = false;
    if (!locate({}, true, true))
        clearPosition(true, true);
}

void Table::moveLast()
{
    if (m_mode != EditMode::None)
        cancelUpdate();
    m_deleted = false;
    if (!locate({}, false, true))
        clearPosition(true, true);
}

void Table::moveNext()
{
    if (m_mode != EditMode::None)
        cancelUpdate();
    if ((m_hasRow || m_deleted) && m_lastKey) {
        m_deleted = false;
        if (!locate(*m_lastKey, true, false))
            clearPosition(true, false);
    } else if (m_bof && !m_eof) {
        moveFirst();
    } else {
        throw StoreError(StoreError::NoCurrentRecord, u"No current record."_s);
    }
}

void Table::movePrevious()
{
    if (m_mode != EditMode::None)
        cancelUpdate();
    if ((m_hasRow || m_deleted) && m_lastKey) {
        m_deleted = false;
        if (!locate(*m_lastKey, false, false))
            clearPosition(false, true);
    } else if (m_eof && !m_bof) {
        moveLast();
    } else {
        throw StoreError(StoreError::NoCurrentRecord, u"No current record."_s);
    }
}

qint64 Table::bookmark() const
{
    if (!m_hasRow)
        throw StoreError(StoreError::NoCurrentRecord, u"No current record."_s);
    return m_rowid;
}

bool Table::loadRow(qint64 rowid)
{
    try {
        SQLite::Statement &st = statement(u"SELECT rowid, * FROM %1 WHERE rowid = ?"_s.arg(Database::quoted(m_table)));
        st.bind(1, static_cast<int64_t>(rowid));
        if (!st.executeStep())
            return false;
        setRow(st);
        st.reset();
        return true;
    } catch (const SQLite::Exception &e) {
        Database::fail(e);
    }
}

void Table::setBookmark(qint64 bookmark)
{
    if (m_mode != EditMode::None)
        cancelUpdate();
    m_deleted = false;
    if (!loadRow(bookmark))
        throw StoreError(kNotAValidBookmark, u"Not a valid bookmark."_s);
}

void Table::refresh()
{
    if (m_hasRow && !loadRow(m_rowid))
        clearPosition(false, false);
}

void Table::addNew()
{
    m_buffer = m_defaults;
    m_dirty = QList<bool>(m_columns.size(), false);
    if (m_counterColumn >= 0)
        m_buffer[m_counterColumn] = m_db.reserveCounter(m_table);
    m_mode = EditMode::Add;
}

void Table::edit()
{
    if (!m_hasRow)
        throw StoreError(StoreError::NoCurrentRecord, u"No current record."_s);
    m_buffer = m_values;
    m_dirty = QList<bool>(m_columns.size(), false);
    m_mode = EditMode::Edit;
}

void Table::cancelUpdate()
{
    m_mode = EditMode::None;
    m_buffer.clear();
    m_dirty.clear();
}

void Table::setField(const QString &name, const QVariant &value)
{
    const int c = column(name);
    if (m_mode == EditMode::None)
        throw StoreError(StoreError::UpdateWithoutEdit, u"Update or CancelUpdate without AddNew or Edit."_s);
    if (c == m_counterColumn)
        throw StoreError(kFieldCannotBeUpdated, u"Field cannot be updated."_s);
    m_buffer[c] = value;
    m_dirty[c] = true;
}

QVariant Table::field(const QString &name) const
{
    const int c = column(name);
    if (m_mode != EditMode::None)
        return m_buffer.at(c);
    if (!m_hasRow)
        throw StoreError(StoreError::NoCurrentRecord, u"No current record."_s);
    return m_values.at(c);
}

void Table::update()
{
    if (m_mode == EditMode::None)
        throw StoreError(StoreError::UpdateWithoutEdit, u"Update or CancelUpdate without AddNew or Edit."_s);
    QStringList names;
    QVariantList params;
    for (int i = 0; i < m_columns.size(); ++i) {
        if (m_dirty.at(i) || (m_mode == EditMode::Add && i == m_counterColumn)) {
            names << Database::quoted(m_columns.at(i));
            params << m_buffer.at(i);
        }
    }
    const QString table = Database::quoted(m_table);
    if (m_mode == EditMode::Add) {
        QString sql;
        if (names.isEmpty()) {
            sql = u"INSERT INTO %1 DEFAULT VALUES"_s.arg(table);
        } else {
            QStringList marks(names.size(), u"?"_s);
            sql = u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(table, names.join(u", "_s), marks.join(u", "_s));
        }
        m_db.execute(sql, params);
        m_lastModified = m_db.sql().getLastInsertRowid();
    } else {
        if (!names.isEmpty()) {
            params << m_rowid;
            m_db.execute(u"UPDATE %1 SET %2 = ? WHERE rowid = ?"_s.arg(table, names.join(u" = ?, "_s)), params);
        }
        m_lastModified = m_rowid;
    }
    const bool wasEdit = m_mode == EditMode::Edit;
    cancelUpdate();
    if (wasEdit)
        refresh();
}

void Table::resume(const Pending &row)
{
    m_mode = row.mode;
    m_buffer = row.buffer;
    m_dirty = row.dirty;
    if (row.mode == EditMode::Edit && !loadRow(row.rowid))
        clearPosition(false, false);
}

void Table::deleteCurrent()
{
    if (!m_hasRow)
        throw StoreError(StoreError::NoCurrentRecord, u"No current record."_s);
    if (m_mode != EditMode::None)
        cancelUpdate();
    m_db.execute(u"DELETE FROM %1 WHERE rowid = ?"_s.arg(Database::quoted(m_table)), {m_rowid});
    m_hasRow = false;
    m_deleted = true;
}

int Table::recordCount()
{
    return m_db.scalar(u"SELECT count(*) FROM %1"_s.arg(Database::quoted(m_table))).toInt();
}

} // namespace tarvex
