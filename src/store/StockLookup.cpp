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

QList<ParentEntry> parentList(Database &db, const QString &sexWord, bool includeArchived)
{
    // The same rows, in the same order, as a walk of ParentKey from (sex, "No") while
    // both still match; read as one query because a stud can hold tens of thousands.
    const QString query = includeArchived
                              ? u"SELECT Name, Number FROM Stock WHERE Sex = ? AND Name IS NOT NULL "
                                u"ORDER BY Sex, Archive, Name, Number"_s
                              : u"SELECT Name, Number FROM Stock WHERE Sex = ? AND Archive = 'No' "
                                u"ORDER BY Sex, Archive, Name, Number"_s;
    QList<ParentEntry> list{{QString(), -1}};
    Recordset rows(db, query, {sexWord});
    list.reserve(rows.recordCount() + 1);
    for (; !rows.eof(); rows.moveNext())
        list.append({rows.field(0).toString(), rows.field(1).toLongLong()});
    return list;
}

} // namespace tarvex
