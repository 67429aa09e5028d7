// Coefficients of inbreeding and kinship: the textbook matings with their known answers, the
// fast method against the plain table of relationships on random pedigrees, loops reported.
#include "pedigree/CommonAncestors.h"
#include "pedigree/Inbreeding.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

/// A pedigree written as "child sire dam" triples; 0 is an unknown parent.
struct Family
{
    std::vector<PedigreeRecord> records;
    Family &animal(qint64 number, qint64 sire = 0, qint64 dam = 0)
    {
        records.push_back({number, sire, dam});
        return *this;
    }
    Inbreeding inbreeding() const { return Inbreeding(orderPedigree(records)); }
};

double coiOf(const Inbreeding &f, qint64 number)
{
    return f.coi(f.graph().positionOf(number));
}

TEST(Inbreeding, TextbookMatingsGiveTheirKnownCoefficients)
{
    // Founders 1 and 2; full brother and sister 3 and 4; their son 5.
    Family fullSibs;
    fullSibs.animal(5, 3, 4).animal(3, 1, 2).animal(4, 1, 2).animal(1).animal(2);
    const Inbreeding a = fullSibs.inbreeding();
    EXPECT_DOUBLE_EQ(coiOf(a, 5), 0.25) << "offspring of full siblings";
    EXPECT_DOUBLE_EQ(coiOf(a, 1), 0.0) << "no known parents";
    EXPECT_DOUBLE_EQ(a.offspringCoi(a.graph().positionOf(3), a.graph().positionOf(4)), 0.25);
    EXPECT_DOUBLE_EQ(a.relationship(a.graph().positionOf(3), a.graph().positionOf(4)), 0.5);
    EXPECT_DOUBLE_EQ(a.offspringCoi(a.graph().positionOf(3), -1), 0.0) << "an unknown parent";

    Family halfSibs;
    halfSibs.animal(1).animal(2).animal(3).animal(4, 1, 2).animal(5, 1, 3).animal(6, 4, 5);
    EXPECT_DOUBLE_EQ(coiOf(halfSibs.inbreeding(), 6), 0.125) << "offspring of half siblings";

    Family parentOffspring;
    parentOffspring.animal(1).animal(2).animal(3, 1, 2).animal(4, 1, 3);
    EXPECT_DOUBLE_EQ(coiOf(parentOffspring.inbreeding(), 4), 0.25) << "offspring of parent and offspring";

    Family cousins;
    cousins.animal(1).animal(2).animal(3, 1, 2).animal(4, 1, 2).animal(5).animal(6).animal(7, 3, 5).animal(8, 4, 6)
        .animal(9, 7, 8);
    EXPECT_DOUBLE_EQ(coiOf(cousins.inbreeding(), 9), 0.0625) << "offspring of first cousins";

    Family doubleCousins;
    doubleCousins.animal(1).animal(2).animal(3).animal(4)
        .animal(5, 1, 2).animal(6, 1, 2).animal(7, 3, 4).animal(8, 3, 4)
        .animal(9, 5, 7).animal(10, 8, 6).animal(11, 9, 10);
    EXPECT_DOUBLE_EQ(coiOf(doubleCousins.inbreeding(), 11), 0.125) << "offspring of double first cousins";

    // The common ancestor 5 of a half-sibling mating is itself the son of full siblings: his
    // own 25% raises his contribution by a quarter.
    Family inbredAncestor;
    inbredAncestor.animal(1).animal(2).animal(3, 1, 2).animal(4, 1, 2).animal(5, 3, 4).animal(6).animal(7)
        .animal(8, 5, 6).animal(9, 5, 7).animal(10, 8, 9);
    EXPECT_DOUBLE_EQ(coiOf(inbredAncestor.inbreeding(), 10), 0.125 * 1.25);
}

TEST(Inbreeding, RemovedParentsAreFoundersAndLoopsAreReportedByAnAnimalOnThem)
{
    Family removed;
    // 1 and 2 are gone from the stud: 3 and 4 are founders, no longer known to be siblings.
    removed.animal(3, 1, 2).animal(4, 1, 2).animal(5, 3, 4);
    const Inbreeding r = removed.inbreeding();
    EXPECT_DOUBLE_EQ(coiOf(r, 5), 0.0);
    EXPECT_EQ(r.completeness(r.graph().positionOf(3)).generations, 0);

    Family loop;
    loop.animal(1, 3, 0).animal(2, 1, 0).animal(3, 2, 0).animal(4).animal(5, 4, 1);
    try {
        loop.inbreeding();
        ADD_FAILURE() << "a loop went unnoticed";
    } catch (const PedigreeLoop &e) {
        EXPECT_TRUE(e.number() >= 1 && e.number() <= 3) << e.number();
    }
    Family ownSire;
    ownSire.animal(7, 7, 0);
    EXPECT_THROW(ownSire.inbreeding(), PedigreeLoop);
}

TEST(Inbreeding, CompletenessCountsTheKnownPlacesOfTheLongestLine)
{
    Family f;
    f.animal(1).animal(2).animal(3).animal(5, 1, 2).animal(6, 3, 0).animal(7, 5, 6);
    const Inbreeding a = f.inbreeding();
    const auto c = a.completeness(a.graph().positionOf(7));
    EXPECT_EQ(c.generations, 2);
    EXPECT_DOUBLE_EQ(c.known, 5.0 / 6.0) << "two parents and three of four grandparents";
    EXPECT_EQ(coiText(0.0625, {10, 0.874}), u"COI 6.25% (10 gen, 87% of ancestors known)");
    EXPECT_EQ(coiText(0, a.completeness(a.graph().positionOf(1))), u"COI 0.00% (no ancestors known)");
}

// The plain table of additive relationships, row by row in parents-first order: the answer
// the fast method must give.
std::vector<std::vector<double>> relationshipTable(const PedigreeGraph &g)
{
    const int n = g.size();
    std::vector<std::vector<double>> a(std::size_t(n), std::vector<double>(std::size_t(n), 0.0));
    const auto at = [&](int i, int j) { return i < 0 || j < 0 ? 0.0 : a[std::size_t(i)][std::size_t(j)]; };
    for (int i = 0; i < n; ++i) {
        const int s = g.sire[std::size_t(i)], d = g.dam[std::size_t(i)];
        for (int j = 0; j < i; ++j)
            a[std::size_t(i)][std::size_t(j)] = a[std::size_t(j)][std::size_t(i)] = 0.5 * (at(j, s) + at(j, d));
        a[std::size_t(i)][std::size_t(i)] = 1 + 0.5 * at(s, d);
    }
    return a;
}

TEST(Inbreeding, TheFastMethodAgreesWithThePlainTableOnRandomPedigrees)
{
    std::mt19937 random(20261124);
    for (int round = 0; round < 200; ++round) {
        const int n = 10 + int(random() % 291);
        // Parents drawn from the animals before, often few of them, so that lines close up.
        std::vector<PedigreeRecord> records;
        for (int i = 1; i <= n; ++i) {
            const int pool = std::min(i - 1, 5 + int(random() % 20));
            const auto parent = [&]() -> qint64 {
                if (i == 1 || random() % 6 == 0)
                    return 0;
                return i - 1 - qint64(random() % std::max(pool, 1));
            };
            records.push_back({i, parent(), parent()});
        }
        std::shuffle(records.begin(), records.end(), random);
        const Inbreeding fast(orderPedigree(records));
        const auto table = relationshipTable(fast.graph());
        for (int i = 0; i < n; ++i)
            ASSERT_NEAR(fast.coi(i), table[std::size_t(i)][std::size_t(i)] - 1, 1e-12) << "round " << round;
        // One animal's own pedigree gives it the same coefficient as the whole stud does.
        const int one = int(random() % n);
        const Inbreeding alone(ancestorsOf(fast.graph(), one, std::numeric_limits<int>::max()));
        ASSERT_NEAR(alone.coi(alone.graph().size() - 1), fast.coi(one), 1e-12);
        for (int k = 0; k < 20; ++k) {
            const int s = int(random() % n), d = int(random() % n);
            ASSERT_NEAR(fast.offspringCoi(s, d), 0.5 * table[std::size_t(s)][std::size_t(d)], 1e-12);
        }
        // One sire against every dam at once.
        const int sire = int(random() % n);
        const std::vector<double> kinships = fast.kinshipsOf(sire);
        for (int d = 0; d < n; ++d)
            ASSERT_NEAR(kinships[std::size_t(d)], 0.5 * table[std::size_t(sire)][std::size_t(d)], 1e-12);
        // The common ancestors' shares add up to the coefficient, each one once.
        const int s = alone.graph().sire.back(), d = alone.graph().dam.back();
        double shares = 0;
        for (const CommonAncestor &c : Common_Ancestors(alone, s, d)) {
            ASSERT_GE(c.timesSire, 1);
            ASSERT_GE(c.timesDam, 1);
            shares += c.contribution;
        }
        ASSERT_NEAR(shares, fast.coi(one), 1e-12) << "round " << round;
    }
}

// The common ancestors of animal x of a family, by number: (times on the sire's side, on the
// dam's, share).
std::map<qint64, std::tuple<double, double, double>> commonOf(const Family &family, qint64 x)
{
    const Inbreeding f = family.inbreeding();
    const PedigreeGraph &g = f.graph();
    const int at = g.positionOf(x);
    std::map<qint64, std::tuple<double, double, double>> found;
    for (const CommonAncestor &c : Common_Ancestors(f, g.sire[std::size_t(at)], g.dam[std::size_t(at)]))
        found[g.numbers[std::size_t(c.position)]] = {c.timesSire, c.timesDam, c.contribution};
    return found;
}

TEST(Inbreeding, CommonAncestorsAreThoseWhereLinesFirstMeetWithWrightsShares)
{
    using Share = std::tuple<double, double, double>;
    Family fullSibs;
    fullSibs.animal(1).animal(2).animal(3, 1, 2).animal(4, 1, 2).animal(5, 3, 4);
    EXPECT_EQ(commonOf(fullSibs, 5), (std::map<qint64, Share>{{1, {1, 1, 0.125}}, {2, {1, 1, 0.125}}}));

    // Half siblings whose common sire 3 has known parents: the lines meet in 3, so his
    // parents, on both sides too, take no share of their own.
    Family halfSibs;
    halfSibs.animal(1).animal(2).animal(3, 1, 2).animal(4).animal(5).animal(6, 3, 4).animal(7, 3, 5).animal(8, 6, 7);
    EXPECT_EQ(commonOf(halfSibs, 8), (std::map<qint64, Share>{{3, {1, 1, 0.125}}}));

    // Parent and offspring: the sire is on the dam's side too.
    Family parentOffspring;
    parentOffspring.animal(1).animal(2).animal(3, 1, 2).animal(4, 1, 3);
    EXPECT_EQ(commonOf(parentOffspring, 4), (std::map<qint64, Share>{{1, {1, 1, 0.25}}}));

    // An inbred common ancestor (25%) passes on a quarter more.
    Family inbred;
    inbred.animal(1).animal(2).animal(3, 1, 2).animal(4, 1, 2).animal(5, 3, 4).animal(6).animal(7)
        .animal(8, 5, 6).animal(9, 5, 7).animal(10, 8, 9);
    EXPECT_EQ(commonOf(inbred, 10), (std::map<qint64, Share>{{5, {1, 1, 0.125 * 1.25}}}));

    // A grandsire used twice on the sire's side and once on the dam's.
    Family lineBred;
    lineBred.animal(1).animal(2).animal(3).animal(4, 1, 2).animal(5, 1, 3).animal(6, 4, 5).animal(7, 1, 3)
        .animal(8, 6, 7);
    const auto line = commonOf(lineBred, 8);
    ASSERT_TRUE(line.count(1));
    EXPECT_EQ(std::get<0>(line.at(1)), 2);
    EXPECT_EQ(std::get<1>(line.at(1)), 1);
}

TEST(Inbreeding, LookingBackFewerGenerationsLeavesTheFartherAncestorsOut)
{
    // Full siblings 3 and 4 are the grandparents of 9 on both sides: three generations see
    // it, two do not.
    Family f;
    f.animal(1).animal(2).animal(3, 1, 2).animal(4, 1, 2).animal(5).animal(6).animal(7, 3, 5).animal(8, 4, 6)
        .animal(9, 7, 8).animal(10).animal(11, 9, 10);
    const Inbreeding all = f.inbreeding();
    const int at = all.graph().positionOf(11);
    const Inbreeding two(ancestorsOf(all.graph(), all.graph().positionOf(9), 2));
    EXPECT_DOUBLE_EQ(two.coi(two.graph().size() - 1), 0.0);
    const Inbreeding three(ancestorsOf(all.graph(), all.graph().positionOf(9), 3));
    EXPECT_DOUBLE_EQ(three.coi(three.graph().size() - 1), 0.0625);

    EXPECT_EQ(all.completeness(at).generations, 4);
    const auto c = all.completeness(at, 2);
    EXPECT_EQ(c.generations, 2);
    EXPECT_DOUBLE_EQ(c.known, 4.0 / 6.0) << "sire, dam and the sire's two parents";
    EXPECT_EQ(all.completeness(at, 30).generations, 4);
}

} // namespace
