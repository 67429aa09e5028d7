#pragma once

#include "core/DateFormat.h"
#include "core/Prompts.h"
#include "core/Progress.h"
#include "store/Database.h"

#include <QList>
#include <QString>

#include <array>
#include <vector>

namespace tarvex {

/// How a date criterion compares: the day itself, before it, after it, or between two days.
enum class DateOption { EqualTo = 0, Before = 1, After = 2, Range = 3 };

/// Which way "Only Animals in the Pedigree of:" reaches from the chosen animal.
enum class PedigreeDirection { Forward = 0, Backward = 1, Both = 2 };

/// What the breeder filled in on the search panel, as typed. Dates are the texts of the date
/// fields (blank or the empty mask when not filled).
struct SearchCriteria
{
    QString type, colour, status, breeder, sex, archive, name;
    /// What was typed for RingNo, Id2 and Id3. When the stud uses only its main identifier
    /// (idChoice false) only the first counts, as RingNo.
    std::array<QString, 3> ids;
    bool idChoice = false;
    /// The chosen sire and dam (0: none).
    qint64 sire = 0, dam = 0;
    DateOption dobOption = DateOption::EqualTo;
    QString dob, toDob;
    QString notes, health, genotype;
    QString diaryText, diaryFrom, diaryTo;
    QString judge, award;
    DateOption showDateOption = DateOption::EqualTo;
    QString showDate, toShowDate;
    /// The animal whose pedigree the results must belong to (0: any animal).
    qint64 pedigreeRoot = 0;
    PedigreeDirection pedigreeDirection = PedigreeDirection::Backward;
};

/// The search of the stud by any mix of criteria: the database selects by the condition
/// texts, and each row is then checked for what a condition cannot say (a genotype matched
/// with case, membership of a pedigree, a matching diary note or show award). The search
/// only reads the stud.
namespace StockSearch {

/// Whether a date field holds a date to search by (it is neither blank nor the empty mask).
bool dateFilled(const QString &text, const DateSettings &dates);

/// The condition on Stock; empty when no field criterion was given.
QString BuildStockWhere(const SearchCriteria &c, const DateSettings &dates);
/// The condition on diary notes: the text anywhere in the note, between the two dates.
QString BuildDiaryWhere(const SearchCriteria &c, const DateSettings &dates);
/// The condition on show awards: judge, award and show date.
QString BuildAwardWhere(const SearchCriteria &c, const DateSettings &dates);

/// The chosen animal at index 0, then the animals of its pedigree in the direction asked.
/// Offspring are found through the sire and dam indexes; each animal appears once.
QList<qint64> BuildPedigreeList(Database &db, qint64 root, PedigreeDirection direction,
                                Progress &progress = noProgress());

/// The genotype rule of the search: "*" any run, "?" one character, every other character
/// itself, with case.
bool genotypeMatches(const QString &genotype, const QString &pattern);

/// The conditions and filters of one search, as the panel composed them.
struct SearchPlan
{
    QString stockWhere, diaryWhere, awardWhere;
    QString genotype;          // the typed genotype pattern, matched with case
    bool pedigreeSearch = false;
    QList<qint64> pedigreeList; // index 0 is the chosen animal, never a result itself
};

/// The plan for criteria, or nothing when the breeder asked for nothing. Throws StoreError
/// when the pedigree cannot be read.
std::optional<SearchPlan> planSearch(Database &db, SearchCriteria c, const DateSettings &dates,
                                     Progress &progress = noProgress());

/// The animals found, in the order the database gave them.
struct SearchFound
{
    QList<qint64> numbers;
    /// Rows accepted, the one that did not fit in the list counted too.
    qint64 count = 0;
    /// More rows matched than the list holds; the first ones stand.
    bool truncated = false;
    /// The user stopped the search; the rows found so far stand.
    bool stopped = false;
};

/// The most rows a list of results holds.
inline constexpr qsizetype kMaxResults = 5'000'000;

/// Runs a plan. Throws StoreError when a condition cannot be run (what was found is lost).
SearchFound RunStockSearch(Database &db, const SearchPlan &plan, Progress &progress = noProgress(),
                           qsizetype maxResults = kMaxResults);

/// Tells the user what a search found that the list cannot show: more rows than it holds,
/// or none at all. Whether there is a list of results to show.
bool tellFound(const SearchFound &found, Prompts &prompts);

} // namespace StockSearch

/// One row of the list of results: Name, the main identifier, Sex, DOB in the stud's date
/// format, Type (headed "Breed") and Colour. A null field shows as an empty text.
struct SearchResultRow
{
    qint64 number = 0;
    std::array<QString, 6> cells;
    /// The key of the row in the list: "X" and the number with its leading blank.
    QString key() const;
    /// The number a key stands for (read from its third character on).
    static qint64 numberOfKey(const QString &key);
};

/// The list of results: the numbers of the animals found, sorted by a column, their shown
/// texts read a page at a time as the list is looked at, so a search that finds most of a
/// large stud holds little more than the numbers.
class SearchResults
{
public:
    enum Column { Name = 0, Id = 1, Sex = 2, Dob = 3, Breed = 4, Colour = 5, ColumnCount = 6 };

    /// The results in name order. Throws StoreError when the stud cannot be read.
    SearchResults(Database &db, const DateSettings &dates, QList<qint64> numbers);

    qsizetype size() const { return m_numbers.size(); }
    qint64 number(qsizetype row) const { return m_numbers.at(row); }
    /// The shown texts of a row (read with its page when not yet read).
    const SearchResultRow &row(qsizetype index);

    /// Sorts by a column: a second sort by the current column reverses it, another column
    /// starts ascending. Dates sort as dates; equal values keep name order. Returns the
    /// column's new direction.
    Qt::SortOrder sortByColumn(int column);
    int sortColumn() const { return m_sortColumn; }
    Qt::SortOrder sortOrder() const { return m_sortOrder; }
    /// Sorts by a column in a given direction (to restore a sort).
    void sortBy(int column, Qt::SortOrder order);

private:
    void readPage(qsizetype page);

    Database &m_db;
    const DateSettings &m_dates;
    QList<qint64> m_numbers;
    QList<qint64> m_nameOrder; // the found animals by name: the order ties keep
    int m_sortColumn = Name;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    QHash<qsizetype, std::vector<SearchResultRow>> m_pages;
};

} // namespace tarvex
