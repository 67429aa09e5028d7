#include "StockLookup.h"

#include "Recordset.h"

using namespace Qt::StringLiterals;

namespace tarvex {

QStringList walkVocabulary(Table &cursor, const QString &indexName, const QString &field)
{
    QStringList values;
    cursor.setIndex(indexName);
    QString last;
    for (;;) {
        cursor.seek(u">"_s, {last});
        if (cursor.noMatch() || cursor.eof())
            break;
        last = cursor.field(field).toString();
        values << last;
    }
    return values;
}

qsizetype ParentList::indexOf(qint64 number) const
{
    if (m_places.isEmpty()) {
        m_places.reserve(m_entries.size());
        for (qsizetype i = m_entries.size() - 1; i >= 0; --i)
            m_places.insert(m_entries.at(i).number, i);
    }
    return m_places.value(number, -1);
}

ParentList parentList(Database &db, const QString &sexWord, bool includeArchived)
{
    // The same rows, in the same order, as a walk of ParentKey from (sex, "No") while
    // both still match; read as one query because a stud can hold tens of thousands.
    const QString query = includeArchived
                              ? u"SELECT Name, Number FROM Stock WHERE Sex = ? AND Name IS NOT NULL "
                                u"ORDER BY Sex, Archive, Name, Number"_s
                              : u"SELECT Name, Number FROM Stock WHERE Sex = ? AND Archive = 'No' "
                                u"ORDER BY Sex, Archive, Name, Number"_s;
    QList<ParentEntry> list{{QString(), -1}};
    db.eachRow(query, {sexWord}, [&](const Row &row) { list.append({row.text(u"Name"_s), row.number(u"Number"_s)}); });
    return ParentList(std::move(list));
}

QList<qint64> everyAnimal(Database &db)
{
    QList<qint64> numbers;
    SQLite::Statement &st = db.cached(u"SELECT Number FROM Stock ORDER BY Sex, Archive, Name, Number"_s);
    try {
        while (st.executeStep())
            numbers.append(st.getColumn(0).getInt64());
    } catch (const SQLite::Exception &e) {
        st.reset();
        Database::fail(e, db.path());
    }
    st.reset();
    return numbers;
}

} // namespace tarvex
