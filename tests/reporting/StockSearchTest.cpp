#include "support/RecordingProgress.h"
#include "support/RecordingSurface.h"
#include "support/StudFixture.h"

#include "reporting/SearchComposer.h"
#include "reporting/SearchResultsSheet.h"
#include "reporting/StockSearch.h"
#include "store/DaySerial.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::StockSearch;

namespace {

DateSettings datesIn(const QString &format)
{
    return *Detect_Date_Format([format](const QDate &d) { return d.toString(format); });
}

QString day(int y, int m, int d)
{
    return QString::number(qint64(DaySerial::fromDate(QDate(y, m, d))));
}

TEST(StockSearchConditions, FieldsComposeInTheirOrderWithQuotesDoubledAndUpperCased)
{
    const DateSettings uk = datesIn(u"dd/MM/yyyy"_s);
    SearchCriteria c;
    c.genotype = u"Aa*"_s;
    c.health = u"snuffles"_s;
    c.notes = u"show"_s;
    c.dam = 7;
    c.sire = 12;
    c.ids[0] = u"R1"_s;
    c.name = u"O'Neil"_s;
    c.archive = u"No"_s;
    c.sex = u"Doe"_s;
    c.breeder = u"Jo Bloggs"_s;
    c.status = u"Breeding"_s;
    c.colour = u"Black"_s;
    c.type = u"*"_s;
    EXPECT_EQ(BuildStockWhere(c, uk),
              u"Type Like '**' And Colour Like 'BLACK' And Status Like 'BREEDING' And Breeder Like 'JO BLOGGS' "
              u"And Sex Like 'DOE' And Archive Like 'NO' And Name Like '*O''NEIL*' And RingNo Like '*R1*' "
              u"And Sire = 12 And Dam = 7 And Notes Like '*SHOW*' And Health Like '*SNUFFLES*' "
              u"And Genotype Like 'AA*'");

    SearchCriteria bars;
    bars.name = u"a||b"_s;
    EXPECT_EQ(BuildStockWhere(bars, uk), u"Name Like '*A''B*'") << "typed bars become a quote too";
    EXPECT_EQ(BuildStockWhere(SearchCriteria{}, uk), QString());
}

TEST(StockSearchConditions, IdentifierChoiceAddsEachTypedIdentifier)
{
    const DateSettings uk = datesIn(u"dd/MM/yyyy"_s);
    SearchCriteria c;
    c.ids = {u"R1"_s, QString(), u"t?"_s};
    c.idChoice = true;
    EXPECT_EQ(BuildStockWhere(c, uk), u"RingNo Like '*R1*' And Id3 Like '*T?*'");
    c.idChoice = false;
    EXPECT_EQ(BuildStockWhere(c, uk), u"RingNo Like '*R1*'") << "one identifier only: the others are not asked";
}

TEST(StockSearchConditions, DatesAreDayNumbersWithTheirYearReadAsTwoDigits)
{
    for (const auto &[format, christmas, newYear] :
         {std::tuple{u"dd/MM/yyyy"_s, u"25/12/1999"_s, u"01/01/2005"_s},
          std::tuple{u"MM/dd/yyyy"_s, u"12/25/1999"_s, u"01/01/2005"_s},
          std::tuple{u"yyyy-MM-dd"_s, u"1999-12-25"_s, u"2005-01-01"_s}}) {
        SCOPED_TRACE(format.toStdString());
        const DateSettings dates = datesIn(format);
        SearchCriteria c;
        c.dob = christmas;
        c.dobOption = DateOption::EqualTo;
        EXPECT_EQ(BuildStockWhere(c, dates), u"DOB = "_s + day(1999, 12, 25));
        c.dobOption = DateOption::Before;
        EXPECT_EQ(BuildStockWhere(c, dates), u"DOB < "_s + day(1999, 12, 25));
        c.dobOption = DateOption::After;
        EXPECT_EQ(BuildStockWhere(c, dates), u"DOB > "_s + day(1999, 12, 25));
        c.dobOption = DateOption::Range;
        c.toDob = newYear;
        EXPECT_EQ(BuildStockWhere(c, dates), u"DOB >= "_s + day(1999, 12, 25) + u" And DOB <= "_s + day(2005, 1, 1));
        c.dob = dates.BlankDate;
        EXPECT_EQ(BuildStockWhere(c, dates), u"DOB <= "_s + day(2005, 1, 1)) << "a to-date alone under Range";
        c.dobOption = DateOption::EqualTo;
        EXPECT_EQ(BuildStockWhere(c, dates), QString()) << "the to-date counts only under Range";
    }
    const DateSettings uk = datesIn(u"dd/MM/yyyy"_s);
    QString where;
    SearchComposer::AddDateCriterion(where, u"DOB"_s, u"25/12/1925"_s, QString(), uk);
    EXPECT_EQ(where, u"DOB = "_s + day(2025, 12, 25)) << "years 00 to 29 are this century's";
    SearchComposer::AddNumberCriterion(where, u"Sire"_s, 4, QString());
    EXPECT_EQ(where, u"DOB = "_s + day(2025, 12, 25) + u" And Sire = 4"_s);
}

TEST(StockSearchConditions, DiaryAndAwardConditions)
{
    const DateSettings uk = datesIn(u"dd/MM/yyyy"_s);
    SearchCriteria c;
    c.diaryText = u"wormed"_s;
    c.diaryFrom = u"01/02/2020"_s;
    c.diaryTo = u"28/02/2020"_s;
    EXPECT_EQ(BuildDiaryWhere(c, uk),
              u"Notes Like '*WORMED*' And Date >= "_s + day(2020, 2, 1) + u" And Date <= "_s + day(2020, 2, 28));
    c.judge = u"Mr O'Hara"_s;
    c.award = u"BOB"_s;
    c.showDate = u"05/06/2021"_s;
    c.showDateOption = DateOption::After;
    c.toShowDate = u"01/01/2022"_s;
    EXPECT_EQ(BuildAwardWhere(c, uk), u"Judge Like 'MR O''HARA' And Award Like 'BOB' And Date > "_s + day(2021, 6, 5));
    c.showDateOption = DateOption::Range;
    c.judge.clear();
    EXPECT_EQ(BuildAwardWhere(c, uk),
              u"Award Like 'BOB' And Date >= "_s + day(2021, 6, 5) + u" And Date <= "_s + day(2022, 1, 1));
}

TEST(StockSearchConditions, ReplaceTextScansUpwardFromItsStart)
{
    using SearchComposer::ReplaceText;
    EXPECT_EQ(ReplaceText(u"a'b'c"_s, u"'"_s, u"''"_s), u"a''b''c");
    EXPECT_EQ(ReplaceText(u"aXaXa"_s, u"x"_s, u"-"_s, 1, -1, Qt::CaseInsensitive), u"a-a-a");
    EXPECT_EQ(ReplaceText(u"aXaXa"_s, u"x"_s, u"-"_s), u"aXaXa") << "binary compare keeps case";
    EXPECT_EQ(ReplaceText(u"aaaa"_s, u"a"_s, u"b"_s, 2, 2), u"abba");
    EXPECT_EQ(ReplaceText(u"|||"_s, u"||"_s, u"'"_s), u"'|") << "replacements never overlap";
}

// A family: Grand (buck) and Granny (doe) have Dad; Dad and Mum have Kid1 and Kid2;
// Kid1 and Other (doe) have Grandkid. Stranger is unrelated.
struct Family
{
    explicit Family(test::StudFixture &fx)
    {
        const auto add = [&](const QString &name, const QString &sex, QVariant sire = {}, QVariant dam = {}) {
            return fx.add({{u"Name"_s, name}, {u"Sex"_s, sex}, {u"Sire"_s, sire}, {u"Dam"_s, dam}});
        };
        grand = add(u"Grand"_s, u"Buck"_s);
        granny = add(u"Granny"_s, u"Doe"_s);
        dad = add(u"Dad"_s, u"Buck"_s, grand, granny);
        mum = add(u"Mum"_s, u"Doe"_s);
        kid1 = add(u"Kid1"_s, u"Buck"_s, dad, mum);
        kid2 = add(u"Kid2"_s, u"Doe"_s, dad, mum);
        other = add(u"Other"_s, u"Doe"_s);
        grandkid = add(u"Grandkid"_s, u"Buck"_s, kid1, other);
        stranger = add(u"Stranger"_s, u"Buck"_s);
    }
    qint64 grand, granny, dad, mum, kid1, kid2, other, grandkid, stranger;
};

TEST(StockSearchPedigree, ListsEachDirectionOnceFromTheChosenAnimal)
{
    test::StudFixture fx;
    Database &db = fx.open();
    const Family f(fx);
    EXPECT_EQ(BuildPedigreeList(db, f.dad, PedigreeDirection::Forward), (QList<qint64>{f.dad, f.kid1, f.kid2, f.grandkid}));
    EXPECT_EQ(BuildPedigreeList(db, f.grandkid, PedigreeDirection::Backward),
              (QList<qint64>{f.grandkid, f.kid1, f.other, f.dad, f.mum, f.grand, f.granny}));
    // Both: the offspring, then the chosen animal's own ancestors; the other parents of its
    // offspring (Mum) are not followed.
    EXPECT_EQ(BuildPedigreeList(db, f.dad, PedigreeDirection::Both),
              (QList<qint64>{f.dad, f.kid1, f.kid2, f.grandkid, f.grand, f.granny}));
    // Mum reached as the dam of both kids appears once; a grandkid reached twice too.
    EXPECT_EQ(BuildPedigreeList(db, f.mum, PedigreeDirection::Forward), (QList<qint64>{f.mum, f.kid1, f.kid2, f.grandkid}));
    EXPECT_EQ(BuildPedigreeList(db, f.stranger, PedigreeDirection::Both), (QList<qint64>{f.stranger}));
}

TEST(StockSearchRun, OnlyThePedigreeIsSearchedAndTheChosenAnimalIsNoResult)
{
    test::StudFixture fx;
    Database &db = fx.open();
    const Family f(fx);
    SearchCriteria c;
    c.pedigreeRoot = f.dad;
    c.pedigreeDirection = PedigreeDirection::Both;
    const std::optional<SearchPlan> plan = planSearch(db, c, fx.session.Dates);
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->stockWhere, u"Name LIKE '**'");
    SearchFound found = RunStockSearch(db, *plan);
    EXPECT_EQ(found.numbers, (QList<qint64>{f.kid1, f.kid2, f.grandkid, f.grand, f.granny}));
    EXPECT_EQ(found.count, 5);

    c.sex = u"Doe"_s;
    found = RunStockSearch(db, *planSearch(db, c, fx.session.Dates));
    EXPECT_EQ(found.numbers, (QList<qint64>{f.kid2, f.granny})) << "the pedigree's members still meet the fields";

    SearchCriteria childless;
    childless.pedigreeRoot = f.grandkid;
    childless.pedigreeDirection = PedigreeDirection::Forward;
    EXPECT_EQ(RunStockSearch(db, *planSearch(db, childless, fx.session.Dates)).count, 0);

    EXPECT_FALSE(planSearch(db, SearchCriteria{}, fx.session.Dates)) << "nothing asked, nothing searched";
    SearchCriteria datesOnly;
    datesOnly.diaryFrom = u"01/01/2020"_s;
    datesOnly.toShowDate = u"01/01/2020"_s;
    EXPECT_FALSE(planSearch(db, datesOnly, fx.session.Dates)) << "diary dates and a to-show-date alone select nothing";
}

TEST(StockSearchRun, GenotypeMatchesWithCaseAlthoughTheConditionIgnoresIt)
{
    test::StudFixture fx;
    Database &db = fx.open();
    const qint64 exact = fx.add({{u"Name"_s, u"Exact"_s}, {u"Genotype"_s, u"Aa Bb"_s}});
    fx.add({{u"Name"_s, u"Swapped"_s}, {u"Genotype"_s, u"aA Bb"_s}});
    fx.add({{u"Name"_s, u"Upper"_s}, {u"Genotype"_s, u"AA BB"_s}});
    fx.add({{u"Name"_s, u"None"_s}});
    SearchCriteria c;
    c.genotype = u"Aa*"_s;
    const std::optional<SearchPlan> plan = planSearch(db, c, fx.session.Dates);
    EXPECT_EQ(plan->stockWhere, u"Genotype Like 'AA*'");
    EXPECT_EQ(RunStockSearch(db, *plan).numbers, QList<qint64>{exact});

    EXPECT_TRUE(genotypeMatches(u"Aa Bb"_s, u"A? *b"_s));
    EXPECT_FALSE(genotypeMatches(u"Aa Bb"_s, u"A? *B"_s));
    EXPECT_TRUE(genotypeMatches(u"Aa"_s, u"*"_s));
    EXPECT_FALSE(genotypeMatches(u"Aa"_s, u"Aa?"_s));
    EXPECT_TRUE(genotypeMatches(u"a[b]c"_s, u"a[b]*"_s)) << "brackets are plain characters here";
}

TEST(StockSearchRun, DiaryAndAwardRowsDecideWithTheFields)
{
    test::StudFixture fx;
    Database &db = fx.open();
    const qint64 wormed = fx.add({{u"Name"_s, u"Wormed"_s}, {u"Sex"_s, u"Doe"_s}});
    const qint64 late = fx.add({{u"Name"_s, u"Late"_s}, {u"Sex"_s, u"Doe"_s}});
    const qint64 winner = fx.add({{u"Name"_s, u"Winner"_s}, {u"Sex"_s, u"Buck"_s}});
    const auto note = [&](qint64 n, QDate d, const QString &text) {
        db.execute(u"INSERT INTO BreedNote (Number, Date, Notes) VALUES (?1, ?2, ?3)"_s,
                   {n, DaySerial::fromDate(d), text});
    };
    note(wormed, QDate(2020, 2, 10), u"Wormed today"_s);
    note(late, QDate(2020, 5, 10), u"wormed again"_s);
    db.execute(u"INSERT INTO Awards (Number, Date, Judge, Award) VALUES (?1, ?2, 'Mr O''Hara', 'Best in Show')"_s,
               {winner, DaySerial::fromDate(QDate(2021, 6, 5))});

    SearchCriteria c;
    c.diaryText = u"  WORMED "_s;
    c.diaryTo = u"01/03/2020"_s;
    std::optional<SearchPlan> plan = planSearch(db, c, fx.session.Dates);
    EXPECT_EQ(plan->stockWhere, u"Name LIKE '**'");
    EXPECT_EQ(RunStockSearch(db, *plan).numbers, QList<qint64>{wormed});

    SearchCriteria a;
    a.judge = u"mr o'hara"_s;
    a.showDate = u"05/06/2021"_s;
    plan = planSearch(db, a, fx.session.Dates);
    EXPECT_EQ(RunStockSearch(db, *plan).numbers, QList<qint64>{winner});
    a.sex = u"Doe"_s;
    EXPECT_EQ(RunStockSearch(db, *planSearch(db, a, fx.session.Dates)).count, 0);
}

TEST(StockSearchRun, OddTextsNeverBreakTheConditionAndAFullListKeepsItsFirstRows)
{
    test::StudFixture fx;
    Database &db = fx.open();
    const QString odd = u"Ö'Brien's [#1] \"Star\" ?"_s;
    const qint64 oddOne = fx.add({{u"Name"_s, odd}, {u"Notes"_s, QString(200, u'x')}});
    for (int i = 0; i < 5; ++i)
        fx.add({{u"Name"_s, u"Bun %1"_s.arg(i)}});
    SearchCriteria c;
    c.name = u"ö'brien's"_s;
    c.notes = QString(200, u'X');
    EXPECT_EQ(RunStockSearch(db, *planSearch(db, c, fx.session.Dates)).numbers, QList<qint64>{oddOne});
    for (const QString &typed : {u"'"_s, u"''"_s, u"*"_s, u"?"_s, u"#"_s, u"["_s, u"]"_s, u"\\"_s, u"%_"_s}) {
        SCOPED_TRACE(typed.toStdString());
        SearchCriteria t;
        t.name = typed;
        t.breeder = typed;
        EXPECT_NO_THROW(RunStockSearch(db, *planSearch(db, t, fx.session.Dates)));
    }

    SearchCriteria all;
    all.name = u"bun"_s;
    test::RecordingProgress progress;
    const SearchFound found = RunStockSearch(db, *planSearch(db, all, fx.session.Dates), progress, 3);
    EXPECT_TRUE(found.truncated);
    EXPECT_EQ(found.numbers.size(), 3);
    EXPECT_EQ(found.count, 4) << "the row that did not fit is counted";
}

TEST(StockSearchRun, TellsWhatTheListCannotShowAndStopsWhenAsked)
{
    test::StudFixture fx;
    Database &db = fx.open();
    {
        Transaction tx(db);
        for (int i = 0; i < 5000; ++i)
            db.execute(u"INSERT INTO Stock (Name, Sex) VALUES (?1, 'Doe')"_s, {u"Bun %1"_s.arg(i)});
        tx.commit();
    }
    SearchCriteria c;
    c.name = u"bun"_s;
    const SearchPlan plan = *planSearch(db, c, fx.session.Dates);

    SearchFound found = RunStockSearch(db, plan, noProgress(), 10);
    EXPECT_TRUE(tellFound(found, fx.prompts)) << "the first rows stand";
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_EQ(fx.prompts.messages[0].text, u"Not all matching results shown");
    EXPECT_EQ(fx.prompts.messages[0].title, u"Too many Search Results");
    EXPECT_EQ(fx.prompts.messages[0].icon, Prompts::Icon::Information);

    SearchFound none;
    EXPECT_FALSE(tellFound(none, fx.prompts));
    ASSERT_EQ(fx.prompts.messages.size(), 2);
    EXPECT_EQ(fx.prompts.messages[1].text, u"No Matching Stock Found");
    EXPECT_EQ(fx.prompts.messages[1].icon, Prompts::Icon::Information);

    // Cancel pressed while the stud is read: what was found so far stands.
    test::RecordingProgress progress;
    progress.cancelAfter = 1;
    found = RunStockSearch(db, plan, progress);
    EXPECT_TRUE(found.stopped);
    EXPECT_FALSE(found.truncated);
    EXPECT_GT(found.numbers.size(), 0);
    EXPECT_LT(found.numbers.size(), 5000);
    EXPECT_EQ(found.count, found.numbers.size());
}

TEST(StockSearchResults, SortByColumnsWithDatesAsDatesAndTiesInNameOrder)
{
    test::StudFixture fx;
    Database &db = fx.open();
    const auto add = [&](const QString &name, const QString &type, QDate dob) {
        return fx.add({{u"Name"_s, name}, {u"Type"_s, type}, {u"DOB"_s, dob.isValid() ? QVariant(DaySerial::fromDate(dob)) : QVariant()},
                       {u"RingNo"_s, u"R-"_s + name}, {u"Sex"_s, u"Doe"_s}});
    };
    const qint64 cara = add(u"cara"_s, u"Rex"_s, QDate(2001, 1, 2));
    const qint64 bella = add(u"Bella"_s, u"Lop"_s, QDate(1999, 12, 31));
    const qint64 abby = add(u"Abby"_s, u"Rex"_s, QDate(2001, 1, 1));
    const qint64 dora = add(u"Dora"_s, QString(), QDate());
    SearchResults results(db, fx.session.Dates, {cara, dora, bella, abby});
    const auto order = [&] {
        QList<qint64> n;
        for (qsizetype i = 0; i < results.size(); ++i)
            n << results.number(i);
        return n;
    };
    EXPECT_EQ(order(), (QList<qint64>{abby, bella, cara, dora})) << "name order without regard to case";
    EXPECT_EQ(results.row(1).cells, (std::array<QString, 6>{u"Bella"_s, u"R-Bella"_s, u"Doe"_s, u"31/12/1999"_s, u"Lop"_s, QString()}));
    EXPECT_EQ(results.row(3).cells[3], QString()) << "no date shows empty";
    EXPECT_EQ(results.row(0).key(), u"X "_s + QString::number(abby));
    EXPECT_EQ(SearchResultRow::numberOfKey(results.row(0).key()), abby);

    // "31/12/1999" sorts before "01/01/2001" only as dates.
    EXPECT_EQ(results.sortByColumn(SearchResults::Dob), Qt::AscendingOrder);
    EXPECT_EQ(order(), (QList<qint64>{dora, bella, abby, cara}));
    EXPECT_EQ(results.row(1).cells[3], u"31/12/1999") << "the shown date keeps the stud's format";
    EXPECT_EQ(results.sortByColumn(SearchResults::Dob), Qt::DescendingOrder);
    EXPECT_EQ(order(), (QList<qint64>{cara, abby, bella, dora}));

    EXPECT_EQ(results.sortByColumn(SearchResults::Breed), Qt::AscendingOrder);
    EXPECT_EQ(order(), (QList<qint64>{dora, bella, abby, cara})) << "equal breeds stay in name order";
    results.sortByColumn(SearchResults::Breed);
    EXPECT_EQ(order(), (QList<qint64>{abby, cara, bella, dora})) << "descending, ties still in name order";
}

TEST(StockSearchResults, PrintedListHeadsEachPageAndCutsTextsToTheirColumns)
{
    test::StudFixture fx;
    Database &db = fx.open();
    QList<qint64> numbers;
    for (int i = 0; i < 70; ++i)
        numbers << fx.add({{u"Name"_s, u"Animal %1 "_s.arg(i, 2, 10, QChar(u'0')) + QString(60, u'n')},
                           {u"RingNo"_s, u"R%1"_s.arg(i)}, {u"Sex"_s, u"Doe"_s}});
    SearchResults results(db, fx.session.Dates, numbers);
    test::RecordingSurface page;
    ASSERT_TRUE(printSearchResults(page, results, u"Ring No"_s));
    int headings = 0;
    QStringList names;
    for (const auto &op : page.ops) {
        if (op.kind != test::RecordingSurface::Op::Text)
            continue;
        if (op.text == u"Search Results List") {
            ++headings;
            EXPECT_TRUE(op.bold);
            EXPECT_EQ(op.size, 20);
            EXPECT_EQ(op.x, 4);
            EXPECT_EQ(op.y, 3);
        } else if (op.text.startsWith(u"Animal")) {
            names << op.text;
            EXPECT_LE(page.textWidth(op.text), 150.0);
            EXPECT_EQ(op.x, 4);
            EXPECT_FALSE(op.bold);
        }
    }
    EXPECT_EQ(headings, 2) << "a second page for the rows that do not fit the first";
    ASSERT_EQ(names.size(), 70);
    EXPECT_TRUE(names.first().startsWith(u"Animal 00 nnn"));
    EXPECT_LT(names.first().size(), 60) << "a long name is cut to its column";
    const auto *idHead = page.find(u"Ring No"_s);
    ASSERT_NE(idHead, nullptr);
    EXPECT_EQ(idHead->x, 158);
    EXPECT_EQ(idHead->y, 25);
    ASSERT_NE(page.find(u"R0"_s), nullptr);
    EXPECT_EQ(page.find(u"R0"_s)->x, 158);
    EXPECT_EQ(page.find(u"R0"_s)->y, 40) << "the first row under the heading";
    EXPECT_EQ(page.ops.last().kind, test::RecordingSurface::Op::End);
}

} // namespace
