#include "StockSearch.h"

#include "SearchComposer.h"

#include "store/DaySerial.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvex {

using namespace SearchComposer;

namespace StockSearch {

namespace {

const QString kLike = u"Like"_s;

// The operators of the first three date options: the day itself, before it, after it.
QString dateOperator(DateOption option)
{
    switch (option) {
    case DateOption::Before:
        return u"<"_s;
    case DateOption::After:
        return u">"_s;
    default:
        return u"="_s;
    }
}

// A date criterion: under Range each filled bound adds its own comparison, so one bound
// alone is allowed; otherwise a filled date compares by the option chosen.
void addDateRange(QString &where, const QString &field, DateOption option, const QString &from,
                  const QString &to, const DateSettings &dates)
{
    if (option == DateOption::Range) {
        if (dateFilled(from, dates))
            AddDateCriterion(where, field, from, u">="_s, dates);
        if (dateFilled(to, dates))
            AddDateCriterion(where, field, to, u"<="_s, dates);
    } else if (dateFilled(from, dates)) {
        AddDateCriterion(where, field, from, dateOperator(option), dates);
    }
}

// The sire and dam of an animal, -1 for one that is not recorded or an animal not found.
std::pair<qint64, qint64> GetParents(Database &db, qint64 number)
{
    std::pair<qint64, qint64> parents{-1, -1};
    db.eachRow(u"SELECT Sire, Dam FROM Stock WHERE Number = ?1"_s, {number}, [&](const Row &row) {
        parents = {row.number(u"Sire"_s, -1), row.number(u"Dam"_s, -1)};
    });
    return parents;
}

// The pedigree list with its members kept in a set as well, so that each animal is added
// once however many ways it is reached.
class PedigreeMembers
{
public:
    explicit PedigreeMembers(qint64 root) { add(root); }
    void add(qint64 number)
    {
        if (!m_seen.contains(number)) {
            m_seen.insert(number);
            m_list.append(number);
        }
    }
    qsizetype count() const { return m_list.size(); }
    qint64 at(qsizetype i) const { return m_list.at(i); }
    QList<qint64> take() { return std::move(m_list); }

private:
    QList<qint64> m_list;
    QSet<qint64> m_seen;
};

} // namespace

bool dateFilled(const QString &text, const DateSettings &dates)
{
    return !text.trimmed().isEmpty() && text != dates.BlankDate;
}

QString BuildStockWhere(const SearchCriteria &c, const DateSettings &dates)
{
    QString where;
    AddLikeCriterion(where, u"Type"_s, c.type, kLike);
    AddLikeCriterion(where, u"Colour"_s, c.colour, kLike);
    AddLikeCriterion(where, u"Status"_s, c.status, kLike);
    AddLikeCriterion(where, u"Breeder"_s, c.breeder, kLike);
    AddLikeCriterion(where, u"Sex"_s, c.sex, kLike);
    AddLikeCriterion(where, u"Archive"_s, c.archive, kLike);
    AddLikeCriterion(where, u"Name"_s, WrapWildcards(c.name.trimmed()), kLike);
    if (c.idChoice) {
        static const QString fields[] = {u"RingNo"_s, u"Id2"_s, u"Id3"_s};
        for (int i = 0; i < 3; ++i)
            AddLikeCriterion(where, fields[i], WrapWildcards(c.ids.at(i).trimmed()), kLike);
    } else {
        AddLikeCriterion(where, u"RingNo"_s, WrapWildcards(c.ids.at(0).trimmed()), kLike);
    }
    if (c.sire > 0)
        AddNumberCriterion(where, u"Sire"_s, c.sire, u"="_s);
    if (c.dam > 0)
        AddNumberCriterion(where, u"Dam"_s, c.dam, u"="_s);
    addDateRange(where, u"DOB"_s, c.dobOption, c.dob, c.toDob, dates);
    AddLikeCriterion(where, u"Notes"_s, WrapWildcards(c.notes.trimmed()), kLike);
    AddLikeCriterion(where, u"Health"_s, WrapWildcards(c.health.trimmed()), kLike);
    AddLikeCriterion(where, u"Genotype"_s, c.genotype, kLike);
    return where;
}

QString BuildDiaryWhere(const SearchCriteria &c, const DateSettings &dates)
{
    QString where;
    AddLikeCriterion(where, u"Notes"_s, WrapWildcards(c.diaryText.trimmed()), kLike);
    if (dateFilled(c.diaryFrom, dates))
        AddDateCriterion(where, u"Date"_s, c.diaryFrom, u">="_s, dates);
    if (dateFilled(c.diaryTo, dates))
        AddDateCriterion(where, u"Date"_s, c.diaryTo, u"<="_s, dates);
    return where;
}

QString BuildAwardWhere(const SearchCriteria &c, const DateSettings &dates)
{
    QString where;
    AddLikeCriterion(where, u"Judge"_s, c.judge, kLike);
    AddLikeCriterion(where, u"Award"_s, c.award, kLike);
    addDateRange(where, u"Date"_s, c.showDateOption, c.showDate, c.toShowDate, dates);
    return where;
}

QList<qint64> BuildPedigreeList(Database &db, qint64 root, PedigreeDirection direction, Progress &progress)
{
    PedigreeMembers members(root);
    progress.start(0, u"Reading the pedigree"_s);
    qsizetype cursor = 0;
    if (direction != PedigreeDirection::Backward) {
        // Offspring of each member in turn, through the sire index and then the dam index.
        for (; cursor < members.count(); ++cursor) {
            progress.step(cursor);
            const qint64 parent = members.at(cursor);
            for (const char16_t *query : {u"SELECT Number FROM Stock WHERE Sire = ?1 ORDER BY Number",
                                          u"SELECT Number FROM Stock WHERE Dam = ?1 ORDER BY Number"})
                db.eachRow(QString::fromUtf16(query), {parent},
                           [&](const Row &row) { members.add(row.number(u"Number"_s)); });
        }
    }
    if (direction != PedigreeDirection::Forward) {
        // The chosen animal first, then only the ancestors this walk adds itself: with Both,
        // the cursor stands past the offspring, whose other parents are not followed.
        qint64 subject = root;
        for (;;) {
            progress.step(cursor);
            const auto [sire, dam] = GetParents(db, subject);
            // A recorded parent is a real animal; numbers start at 1.
            if (sire > 0)
                members.add(sire);
            if (dam > 0)
                members.add(dam);
            if (cursor >= members.count())
                break;
            subject = members.at(cursor);
            ++cursor;
        }
    }
    return members.take();
}

bool genotypeMatches(const QString &genotype, const QString &pattern)
{
    // A greedy wildcard match with one place to fall back to at the last "*".
    qsizetype t = 0, p = 0, starP = -1, starT = 0;
    while (t < genotype.size()) {
        if (p < pattern.size() && (pattern.at(p) == u'?' || pattern.at(p) == genotype.at(t))) {
            ++t;
            ++p;
        } else if (p < pattern.size() && pattern.at(p) == u'*') {
            starP = p++;
            starT = t;
        } else if (starP >= 0) {
            p = starP + 1;
            t = ++starT;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern.at(p) == u'*')
        ++p;
    return p == pattern.size();
}

std::optional<SearchPlan> planSearch(Database &db, SearchCriteria c, const DateSettings &dates, Progress &progress)
{
    SearchPlan plan;
    c.diaryText = c.diaryText.trimmed();
    if (!c.diaryText.isEmpty())
        plan.diaryWhere = BuildDiaryWhere(c, dates);
    c.judge = c.judge.trimmed();
    c.award = c.award.trimmed();
    if (!c.judge.isEmpty() || !c.award.isEmpty() || dateFilled(c.showDate, dates))
        plan.awardWhere = BuildAwardWhere(c, dates);
    if (c.pedigreeRoot > 0) {
        plan.pedigreeSearch = true;
        plan.pedigreeList = BuildPedigreeList(db, c.pedigreeRoot, c.pedigreeDirection, progress);
    }
    plan.stockWhere = BuildStockWhere(c, dates);
    if (plan.stockWhere.isEmpty()) {
        if (plan.diaryWhere.isEmpty() && plan.awardWhere.isEmpty() && !plan.pedigreeSearch)
            return std::nullopt;
        plan.stockWhere = u"Name LIKE '**'"_s;
    }
    plan.genotype = c.genotype.trimmed();
    return plan;
}

SearchFound RunStockSearch(Database &db, const SearchPlan &plan, Progress &progress, qsizetype maxResults)
{
    SearchFound found;
    // The statements of one search are its own: conditions differ from search to search and
    // are not kept in the connection's cache of repeated queries.
    const auto prepare = [&db](const QString &sql) {
        return std::make_unique<SQLite::Statement>(db.sql(), sql.toStdString());
    };
    try {
        std::unique_ptr<SQLite::Statement> diary, award;
        if (!plan.diaryWhere.isEmpty())
            diary = prepare(u"SELECT 1 FROM BreedNote WHERE Number = ?1 AND ("_s + plan.diaryWhere + u") LIMIT 1"_s);
        if (!plan.awardWhere.isEmpty())
            award = prepare(u"SELECT 1 FROM Awards WHERE Number = ?1 AND ("_s + plan.awardWhere + u") LIMIT 1"_s);
        const auto hasRow = [](SQLite::Statement &st, qint64 number) {
            st.reset();
            st.bind(1, static_cast<int64_t>(number));
            return st.executeStep();
        };
        // Each row the condition selects is checked for what the condition cannot say;
        // false once the list is full.
        const auto consider = [&](SQLite::Statement &row) {
            const qint64 number = row.getColumn(0).getInt64();
            if (!plan.genotype.isEmpty()) {
                const SQLite::Column genotype = row.getColumn(1);
                if (genotype.isNull() || !genotypeMatches(QString::fromUtf8(genotype.getText()), plan.genotype))
                    return true;
            }
            if (diary && !hasRow(*diary, number))
                return true;
            if (award && !hasRow(*award, number))
                return true;
            ++found.count;
            if (found.numbers.size() >= maxResults) {
                found.truncated = true;
                return false;
            }
            found.numbers.append(number);
            return true;
        };
        const auto stopAsked = [&](qint64 done) {
            progress.step(done);
            found.stopped = progress.cancelled();
            return found.stopped;
        };

        const QString columns = u"SELECT Number, Genotype FROM Stock WHERE "_s;
        progress.start(0, u"Searching"_s);
        if (plan.pedigreeSearch) {
            // Only the members of the pedigree can be found: each is looked up by its number
            // and checked against the condition. The chosen animal itself is never a result.
            auto member = prepare(columns + u"Number = ?1 AND ("_s + plan.stockWhere + u')');
            for (qsizetype i = 1; i < plan.pedigreeList.size(); ++i) {
                member->reset();
                member->bind(1, static_cast<int64_t>(plan.pedigreeList.at(i)));
                if (member->executeStep() && !consider(*member))
                    break;
                if ((i & 1023) == 0 && stopAsked(i))
                    break;
            }
            return found;
        }
        auto query = prepare(columns + plan.stockWhere);
        qint64 seen = 0;
        while (query->executeStep()) {
            if (!consider(*query))
                break;
            if ((++seen & 4095) == 0 && stopAsked(seen))
                break;
        }
    } catch (const SQLite::Exception &e) {
        Database::fail(e);
    }
    return found;
}

bool tellFound(const SearchFound &found, Prompts &prompts)
{
    if (found.truncated)
        prompts.show(u"Not all matching results shown"_s, u"Too many Search Results"_s, Prompts::Icon::Information);
    if (found.count == 0) {
        prompts.show(u"No Matching Stock Found"_s, QString(), Prompts::Icon::Information);
        return false;
    }
    return true;
}

} // namespace StockSearch

QString SearchResultRow::key() const
{
    // The number's text form has a leading blank where a sign would go.
    return u"X "_s + QString::number(number);
}

qint64 SearchResultRow::numberOfKey(const QString &key)
{
    return key.mid(2).trimmed().toLongLong();
}

namespace {

constexpr qsizetype kPageRows = 256;
// Numbers read in one query when the rows are looked up by number.
constexpr qsizetype kChunk = 500;

const char16_t *const kColumnFields[] = {u"Name", u"RingNo", u"Sex", u"DOB", u"Type", u"Colour"};

QString numberList(const QList<qint64> &numbers, qsizetype from, qsizetype count)
{
    QString list;
    for (qsizetype i = from; i < from + count; ++i) {
        if (i > from)
            list += u',';
        list += QString::number(numbers.at(i));
    }
    return list;
}

// Reads one field of every animal in numbers (place holds where each stands there): a few
// by number, a chunk at a time; many in one pass over the stud, which reads the file in its
// order instead of seeking each animal.
template <typename Visit>
void eachField(Database &db, const QList<qint64> &numbers, const QHash<qint64, qsizetype> &place,
               const QString &field, Visit visit)
{
    constexpr qsizetype kManyRows = 20000;
    if (numbers.size() > kManyRows) {
        SQLite::Statement st(db.sql(), (u"SELECT Number, "_s + field + u" FROM Stock"_s).toStdString());
        while (st.executeStep()) {
            const auto found = place.constFind(st.getColumn(0).getInt64());
            if (found != place.cend())
                visit(*found, st.getColumn(1));
        }
        return;
    }
    for (qsizetype from = 0; from < numbers.size(); from += kChunk) {
        const qsizetype count = std::min(kChunk, numbers.size() - from);
        SQLite::Statement st(db.sql(), (u"SELECT Number, "_s + field + u" FROM Stock WHERE Number IN ("_s +
                                        numberList(numbers, from, count) + u')')
                                           .toStdString());
        while (st.executeStep())
            visit(place.value(st.getColumn(0).getInt64()), st.getColumn(1));
    }
}

} // namespace

SearchResults::SearchResults(Database &db, const DateSettings &dates, QList<qint64> numbers)
    : m_db(db), m_dates(dates), m_numbers(std::move(numbers))
{
    m_nameOrder = m_numbers;
    sortBy(Name, Qt::AscendingOrder);
    m_nameOrder = m_numbers;
}

Qt::SortOrder SearchResults::sortByColumn(int column)
{
    const Qt::SortOrder order = column == m_sortColumn && m_sortOrder == Qt::AscendingOrder
                                    ? Qt::DescendingOrder
                                    : Qt::AscendingOrder;
    sortBy(column, order);
    return order;
}

void SearchResults::sortBy(int column, Qt::SortOrder order)
{
    column = std::clamp(column, 0, ColumnCount - 1);
    // Every sort starts from name order, so equal values always stand in the same order.
    QHash<qint64, qsizetype> place;
    place.reserve(m_nameOrder.size());
    for (qsizetype i = 0; i < m_nameOrder.size(); ++i)
        place.insert(m_nameOrder.at(i), i);
    struct Keyed
    {
        qint64 number;
        qsizetype place;
        double day;
        QString text;
    };
    std::vector<Keyed> keyed;
    keyed.reserve(m_nameOrder.size());
    for (qsizetype i = 0; i < m_nameOrder.size(); ++i)
        keyed.push_back({m_nameOrder.at(i), i, -1e300, {}});
    const bool dates = column == Dob;
    try {
        eachField(m_db, m_nameOrder, place, QString::fromUtf16(kColumnFields[column]),
                  [&](qsizetype index, const SQLite::Column &value) {
                      Keyed &k = keyed[size_t(index)];
                      if (value.isNull())
                          return;
                      // Texts sort without regard to case: folded once here, not at each comparison.
                      if (dates)
                          k.day = value.getDouble();
                      else
                          k.text = QString::fromUtf8(value.getText()).toCaseFolded();
                  });
    } catch (const SQLite::Exception &e) {
        Database::fail(e);
    }
    const bool descending = order == Qt::DescendingOrder;
    std::stable_sort(keyed.begin(), keyed.end(), [&](const Keyed &a, const Keyed &b) {
        const int c = dates ? (a.day < b.day ? -1 : a.day > b.day ? 1 : 0)
                            : a.text.compare(b.text);
        if (c != 0)
            return descending ? c > 0 : c < 0;
        return a.place < b.place;
    });
    m_numbers.clear();
    for (const Keyed &k : keyed)
        m_numbers.append(k.number);
    m_sortColumn = column;
    m_sortOrder = order;
    m_pages.clear();
}

const SearchResultRow &SearchResults::row(qsizetype index)
{
    const qsizetype page = index / kPageRows;
    if (!m_pages.contains(page))
        readPage(page);
    return m_pages[page].at(size_t(index % kPageRows));
}

void SearchResults::readPage(qsizetype page)
{
    // A list scrolled far holds only the pages near what is shown.
    if (m_pages.size() > 64)
        m_pages.clear();
    const qsizetype from = page * kPageRows;
    const qsizetype count = std::min(kPageRows, m_numbers.size() - from);
    std::vector<SearchResultRow> rows(size_t(std::max<qsizetype>(count, 0)));
    QHash<qint64, qsizetype> at;
    for (qsizetype i = 0; i < count; ++i) {
        rows[size_t(i)].number = m_numbers.at(from + i);
        at.insert(m_numbers.at(from + i), i);
    }
    try {
        SQLite::Statement st(m_db.sql(), (u"SELECT Number, Name, RingNo, Sex, DOB, Type, Colour FROM Stock "
                                          u"WHERE Number IN ("_s +
                                          numberList(m_numbers, from, count) + u')')
                                             .toStdString());
        while (st.executeStep()) {
            SearchResultRow &r = rows[size_t(at.value(st.getColumn(0).getInt64()))];
            for (int c = 0; c < ColumnCount; ++c) {
                const SQLite::Column value = st.getColumn(c + 1);
                if (value.isNull())
                    continue;
                r.cells[size_t(c)] = c == Dob ? m_dates.format(DaySerial::toDate(value.getDouble()))
                                              : QString::fromUtf8(value.getText());
            }
        }
    } catch (const SQLite::Exception &e) {
        Database::fail(e);
    }
    m_pages.insert(page, std::move(rows));
}

} // namespace tarvex
