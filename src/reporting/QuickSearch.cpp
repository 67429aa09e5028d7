#include "QuickSearch.h"

#include "SearchComposer.h"

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

Results::Results(Database &db, const QString &where) : m_db(db), m_where(where)
{
    sortBy(Name, false);
}

Results::~Results() = default;

void Results::sortBy(int column, bool descending)
{
    static const char16_t *const fields[] = {u"Name", u"RingNo", u"Type", u"Colour"};
    const QString field = QString::fromUtf16(fields[std::clamp(column, 0, 3)]);
    const QString direction = descending ? u" DESC"_s : QString();
    // Texts compare without regard to case, as the stud's indexes do; equal ones by name.
    const QString order = field == u"Name"
                              ? u"Name"_s + direction + u", Number"_s + direction
                              : field + direction + u", Name, Number"_s;
    m_query.reset();
    m_rows.clear();
    m_atEnd = false;
    try {
        m_query = std::make_unique<SQLite::Statement>(
            m_db.sql(), (u"SELECT Number, Name, RingNo, Type, Colour FROM Stock WHERE "_s + m_where + u" ORDER BY "_s +
                         order)
                            .toStdString());
    } catch (const SQLite::Exception &e) {
        Database::fail(e);
    }
    m_columns = Row::columnsOf(*m_query);
}

qsizetype Results::fetch(qsizetype count)
{
    if (m_atEnd)
        return 0;
    qsizetype read = 0;
    try {
        const Row row(*m_query, m_columns);
        while (read < count) {
            if (!m_query->executeStep()) {
                m_atEnd = true;
                // Done: the query lets go of its read of the file.
                m_query.reset();
                break;
            }
            m_rows.append({row.number(u"Number"_s), row.text(u"Name"_s), row.text(u"RingNo"_s),
                           row.text(u"Type"_s), row.text(u"Colour"_s)});
            ++read;
        }
    } catch (const SQLite::Exception &e) {
        m_atEnd = true;
        m_query.reset();
        Database::fail(e);
    }
    return read;
}

} // namespace tarvex::QuickSearch
