#include "QuickSearch.h"

#include "SearchComposer.h"

#include "store/Recordset.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvex::QuickSearch {

using namespace SearchComposer;

QString compose(const QuickSearchFields &f)
{
    QString where;
    AddLikeCriterion(where, u"Name"_s, WrapWildcards(f.name.trimmed()), u"Like"_s);
    AddLikeCriterion(where, u"Archive"_s, f.archive, u"Like"_s);
    // Only the first identification, and without wildcards: it is matched as typed.
    AddLikeCriterion(where, u"RingNo"_s, f.ringNo, u"Like"_s);
    AddLikeCriterion(where, u"Sex"_s, f.sex, u"="_s);
    AddLikeCriterion(where, u"Type"_s, f.type, u"Like"_s);
    AddLikeCriterion(where, u"Colour"_s, f.colour, u"Like"_s);
    AddLikeCriterion(where, u"Status"_s, f.status, u"Like"_s);
    AddLikeCriterion(where, u"Notes"_s, WrapWildcards(f.notes.trimmed()), u"Like"_s);
    return where;
}

QList<QuickSearchRow> run(Database &db, const QString &where)
{
    QList<QuickSearchRow> rows;
    Recordset rs(db, u"Select * From Stock Where "_s + where + u";"_s);
    for (; !rs.eof(); rs.moveNext())
        rows.append({rs.field(u"Number"_s).toLongLong(), rs.field(u"Name"_s).toString(),
                     rs.field(u"RingNo"_s).toString(), rs.field(u"Type"_s).toString(),
                     rs.field(u"Colour"_s).toString()});
    std::stable_sort(rows.begin(), rows.end(), [](const QuickSearchRow &a, const QuickSearchRow &b) {
        return a.name.compare(b.name, Qt::CaseInsensitive) < 0;
    });
    return rows;
}

} // namespace tarvex::QuickSearch
