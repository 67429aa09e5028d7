#include "support/StudFixture.h"

#include "breeding/Awards.h"
#include "pedigree/PedigreeTable.h"
#include "store/DaySerial.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

class AwardsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        db = &fx.open();
        jet = fx.add({{u"Name"_s, u"Jet"_s}, {u"Sex"_s, u"Buck"_s}});
        other = fx.add({{u"Name"_s, u"Other"_s}, {u"Sex"_s, u"Doe"_s}});
        // A Rabbits stud counts stars from its opening; most cases here work without them.
        EXPECT_TRUE(fx.session.PointsOn);
        fx.session.PointsOn = false;
    }
    Awards awardsOf(qint64 number) { return Awards(fx.session, fx.prompts, number, u"Jet"_s); }
    AwardForm form(const QString &date, const QString &award, const QString &venue = u"Bath RC"_s)
    {
        AwardForm f;
        f.date = date;
        f.award = award;
        f.venue = venue;
        f.entered = u"___"_s;
        f.shown = u"___"_s;
        return f;
    }
    bool save(Awards &a, AwardForm f, const std::optional<AwardRow> &amending = std::nullopt)
    {
        return a.save(f, amending, &focus);
    }
    // An award written straight into the stud, as an earlier run kept it.
    void store(qint64 number, double day, const QString &award, const QVariant &stars, const QVariant &ccStars,
               const QString &venue = {}, const QString &secretary = {})
    {
        db->execute(u"INSERT INTO Awards (Number, Date, Award, Stars, CCStars, Venue, Secretary) "
                    u"VALUES (?, ?, ?, ?, ?, ?, ?)"_s,
                    {number, day, award, stars, ccStars, venue.isEmpty() ? QVariant() : QVariant(venue),
                     secretary.isEmpty() ? QVariant() : QVariant(secretary)});
    }
    void usePoints(int maxPoints = 3)
    {
        fx.session.PointsOn = true;
        fx.session.PointsName = u"Stars"_s;
        fx.session.MaxPoints = maxPoints;
    }

    test::StudFixture fx;
    Database *db = nullptr;
    qint64 jet = 0, other = 0;
    QString focus;
};

TEST_F(AwardsTest, AwardsOfOneDayStayApartAndANewDateGivesANewUnique)
{
    Awards a = awardsOf(jet);
    EXPECT_TRUE(a.Load_Award_List().isEmpty());
    EXPECT_EQ(a.caption(), u"Awards For Jet");
    AwardForm first = form(u"05/03/2024"_s, u"1st Adult"_s);
    first.entered = u"12_"_s;
    first.judge = u"  R. Moss  "_s;
    ASSERT_TRUE(save(a, first));
    ASSERT_TRUE(save(a, form(u"05/03/2024"_s, u"Best of Breed"_s)));
    ASSERT_TRUE(save(a, form(u"01/01/2023"_s, u"2nd Young"_s)));
    QList<AwardRow> rows = a.Load_Award_List();
    ASSERT_EQ(rows.size(), 3);
    EXPECT_EQ(rows[0].award, u"2nd Young") << "in date order";
    EXPECT_EQ(rows[1].date, rows[2].date);
    EXPECT_NE(rows[1].unique, rows[2].unique);
    EXPECT_EQ(rows[1].entered, 12);
    EXPECT_FALSE(rows[1].shown.has_value()) << "a blank mask is no number";
    EXPECT_EQ(rows[1].judge, u"R. Moss");
    EXPECT_EQ(a.rowTexts(rows[1]),
              (QStringList{u"05/03/24"_s, u"1st Adult"_s, u"R. Moss"_s, u"Bath RC"_s, QString()}));
    EXPECT_EQ(sortableDate(rows[1].date), u"2024/03/05");

    // The same day keeps the award's Unique; another day writes it anew.
    const qint64 kept = rows[1].unique;
    AwardForm same = a.formOf(rows[1]);
    EXPECT_EQ(same.date, u"05/03/2024");
    EXPECT_EQ(same.entered, u"12");
    same.award = u"1st Adult Buck"_s;
    ASSERT_TRUE(save(a, same, rows[1]));
    rows = a.Load_Award_List();
    EXPECT_EQ(rows[1].unique, kept);
    EXPECT_EQ(rows[1].award, u"1st Adult Buck");
    AwardForm moved = a.formOf(rows[1]);
    moved.date = u"06/03/2024"_s;
    ASSERT_TRUE(save(a, moved, rows[1]));
    rows = a.Load_Award_List();
    ASSERT_EQ(rows.size(), 3);
    EXPECT_EQ(rows[2].award, u"1st Adult Buck");
    EXPECT_EQ(rows[2].date, QDate(2024, 3, 6));
    EXPECT_GT(rows[2].unique, kept);
    EXPECT_EQ(db->scalar(u"SELECT count(*) FROM Awards WHERE \"Unique\" = ?"_s, {kept}).toInt(), 0);
    EXPECT_TRUE(fx.prompts.messages.isEmpty());
}

TEST_F(AwardsTest, ChecksOnSavingAmendingAndRemovingSayWhatIsWrong)
{
    Awards a = awardsOf(jet);
    EXPECT_FALSE(save(a, form(u"__/__/____"_s, u"1st"_s)));
    EXPECT_EQ(focus, u"ADate");
    EXPECT_FALSE(save(a, form(u"31/02/2024"_s, u"1st"_s)));
    ASSERT_EQ(fx.prompts.messages.size(), 2);
    EXPECT_EQ(fx.prompts.messages[0].text, u"A valid date must be entered");
    EXPECT_EQ(fx.prompts.messages[0].icon, Prompts::Icon::Exclamation);
    EXPECT_EQ(fx.prompts.messages[1].text, u"Date: 31/02/2024 is not valid") << "the date check's box alone";
    EXPECT_EQ(db->scalar(u"SELECT count(*) FROM Awards"_s).toInt(), 0);

    // The texts are cut to their fields and trimmed, and the form shows what was kept.
    AwardForm f = form(u"05/03/2024"_s, u"x"_s.repeated(44) + u" y"_s, u"v"_s.repeated(60));
    f.secretary = u"s"_s.repeated(19) + u" tail"_s;
    ASSERT_TRUE(a.save(f, std::nullopt, &focus));
    EXPECT_EQ(f.award, u"x"_s.repeated(44));
    EXPECT_EQ(f.venue, u"v"_s.repeated(50));
    EXPECT_EQ(f.secretary, u"s"_s.repeated(19));
    EXPECT_EQ(Awards::AVenue_LostFocus(u"c"_s.repeated(49) + u" d"_s), u"c"_s.repeated(49));
    EXPECT_EQ(Awards::AVenue_LostFocus(u" Bath "_s), u" Bath ") << "a club of 50 or less stays as typed";

    fx.prompts.messages.clear();
    const qint64 unique = a.Load_Award_List().first().unique;
    EXPECT_FALSE(a.amend(std::nullopt));
    EXPECT_FALSE(a.amend(unique + 1));
    EXPECT_FALSE(a.remove(std::nullopt));
    EXPECT_FALSE(a.remove(unique + 1));
    fx.prompts.answerNo();
    EXPECT_FALSE(a.remove(unique));
    fx.prompts.answerYes();
    EXPECT_TRUE(a.remove(unique));
    ASSERT_EQ(fx.prompts.messages.size(), 6);
    const QStringList texts{u"Nothing Selected"_s,  u"System Error - Could not find Award"_s,
                            u"Nothing Selected"_s,  u"Whoops - could not find it!"_s,
                            u"Remove This Award"_s, u"Remove This Award"_s};
    EXPECT_EQ(fx.prompts.texts(), texts);
    EXPECT_EQ(fx.prompts.messages[0].icon, Prompts::Icon::Information);
    EXPECT_EQ(fx.prompts.messages[1].icon, Prompts::Icon::None);
    EXPECT_EQ(fx.prompts.messages[3].icon, Prompts::Icon::None);
    EXPECT_EQ(fx.prompts.messages[4].icon, Prompts::Icon::Question);
    EXPECT_EQ(fx.prompts.messages[4].buttons, Prompts::Buttons::YesNoCancel);
    EXPECT_TRUE(a.Load_Award_List().isEmpty());
}

TEST_F(AwardsTest, PointsSystemStarsTotalsAndTheChampionshipRule)
{
    store(jet, 45000, u"CC"_s, u"2"_s, u"2"_s);
    store(jet, 45001, u"BOB"_s, u"3 stars"_s, u"3 stars"_s);
    store(jet, 45002, u"BIS"_s, u"1.5"_s, u"1.5"_s);
    store(other, 45000, u"CC"_s, u"9"_s, u"9"_s);

    // Off: no points columns, no total, and amending leaves the stars as they were.
    Awards off = awardsOf(jet);
    EXPECT_EQ(off.Build_Award_Columns().size(), 5);
    EXPECT_EQ(off.absentWidthPatterns().size(), 2);
    QList<AwardRow> rows = off.Load_Award_List();
    EXPECT_EQ(off.caption(), u"Awards For Jet");
    AwardForm f = off.formOf(rows[1]);
    EXPECT_TRUE(f.stars.isEmpty());
    f.stars = u"7"_s;
    ASSERT_TRUE(off.save(f, rows[1], &focus));
    f = off.formOf(rows[2]);
    f.date = u"01/01/2025"_s;
    ASSERT_TRUE(off.save(f, rows[2], &focus));
    EXPECT_EQ(db->scalar(u"SELECT count(*) FROM Awards WHERE Number = ? AND Stars = CCStars"_s, {jet}).toInt(), 3);
    EXPECT_FALSE(off.AAward_LostFocus(u"CC"_s, QString(), u"3"_s));

    usePoints(3);
    Awards on = awardsOf(jet);
    const QList<AwardColumn> columns = on.Build_Award_Columns();
    QStringList heads;
    for (const AwardColumn &c : columns)
        heads << c.head;
    EXPECT_EQ(heads, (QStringList{u"Date v"_s, u"Award"_s, u"Stars"_s, u"Awarded"_s, u"Judge"_s, u"Club"_s,
                                  u"Shown"_s}));
    EXPECT_TRUE(on.absentWidthPatterns().isEmpty());
    rows = on.Load_Award_List();
    EXPECT_EQ(on.caption(), u"Awards For Jet (Total CC Stars: 6)") << "2, then 5, then 6.5 to the even 6";
    EXPECT_EQ(on.rowTexts(rows[1]).mid(1, 3), (QStringList{u"BOB"_s, u"3 stars"_s, u"3 stars"_s}));
    EXPECT_EQ(on.formOf(rows[1]).stars, u"3") << "the stars are offered as a plain number";
    EXPECT_EQ(on.Fill_Star_Lists(), (QStringList{QString(), u"1"_s, u"2"_s, u"3"_s}));

    // A changed award that is a challenge certificate, the whole text, takes the show's stars.
    EXPECT_EQ(on.AAward_LostFocus(u"cc"_s, QString(), u"3"_s), u"3"_s);
    EXPECT_EQ(on.AAward_LostFocus(u"Challenge Certificate"_s, u"CC"_s, u"2"_s), u"2"_s);
    EXPECT_EQ(on.AAward_LostFocus(u"c.c."_s, QString(), u"1"_s), u"1"_s);
    EXPECT_FALSE(on.AAward_LostFocus(u"CC winner"_s, QString(), u"3"_s));
    EXPECT_FALSE(on.AAward_LostFocus(u"CC"_s, u"CC"_s, u"3"_s)) << "unchanged since the field was entered";
    EXPECT_FALSE(on.AAward_LostFocus(u"CC"_s, QString(), QString()));

    // The pedigree reads the same total and the best award kept on the animal.
    on.setBestAward(u"Best in Show, Adult Bucks 2024"_s);
    EXPECT_EQ(on.bestAward(), u"Best in Show, Adult Bucks");
    EXPECT_EQ(Total_Stars(fx.session, jet), 6);
    PedigreeCell cell;
    ASSERT_TRUE(Get_Animal_Details(fx.session, jet, cell));
    EXPECT_EQ(cell.BestAward, u"Best in Show, Adult Bucks");
    EXPECT_EQ(cell.Points, u"6 Stars");
}

TEST_F(AwardsTest, BestAwardChoicesVocabulariesAndSecretaries)
{
    Awards a = awardsOf(jet);
    store(jet, 45010, u"BOB"_s, {}, {}, u"Bath RC"_s, u"Ann"_s);
    store(jet, 45001, u"1st"_s, {}, {}, u"Avon"_s, u"Bea"_s);
    store(jet, 45005, u"bob"_s, {}, {}, u"bath rc"_s, u"Cal"_s);
    store(jet, 45020, u"1st"_s, {}, {}, u"Bath RC"_s, u"Ann"_s);
    store(other, 45000, u"Reserve"_s, {}, {}, u"Bath RC"_s, u"Dee"_s);
    EXPECT_EQ(a.bestAwardChoices(), (QStringList{u"1st"_s, u"bob"_s, u"BOB"_s})) << "each award once, by date";
    a.setBestAward(u"Supreme"_s);
    EXPECT_EQ(a.bestAwardChoices(), (QStringList{u"Supreme"_s, u"1st"_s, u"bob"_s, u"BOB"_s}));
    a.setBestAward(QString());
    EXPECT_TRUE(db->scalar(u"SELECT BestAward FROM Stock WHERE Number = ?"_s, {jet}).isNull());

    EXPECT_EQ(Fill_Award_Names(*db), (QStringList{u"1st"_s, u"BOB"_s, u"Reserve"_s}))
        << "each award of any animal once, in index order without case";
    EXPECT_EQ(Fill_Venue_Names(*db), (QStringList{u"Avon"_s, u"Bath RC"_s}));
    EXPECT_TRUE(Fill_Judge_Names(*db).isEmpty());
    EXPECT_EQ(a.secretariesOf(u"Bath RC"_s), (QStringList{u"Dee"_s, u"Ann"_s, u"Cal"_s})) << "latest entered first";
    EXPECT_TRUE(a.secretariesOf(u"Nowhere"_s).isEmpty());
}

TEST_F(AwardsTest, LongCommentsAndQuotedTextsComeBackUnchanged)
{
    Awards a = awardsOf(jet);
    AwardForm f = form(u"05/03/2024"_s, u"Judge's \"pick\""_s, u"Côte d'Azur Société"_s);
    f.comments = u"Ça va, l'œil \"très\" bon; Ünal's Åse — "_s.repeated(3000).left(100000);
    ASSERT_EQ(f.comments.size(), 100000);
    f.judge = u"O'Brien"_s;
    const AwardForm typed = f;
    ASSERT_TRUE(a.save(f, std::nullopt, &focus));
    const QList<AwardRow> rows = a.Load_Award_List();
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows[0].comments, typed.comments);
    EXPECT_EQ(rows[0].award, typed.award);
    EXPECT_EQ(rows[0].venue, typed.venue);
    EXPECT_EQ(rows[0].judge, typed.judge);
    EXPECT_EQ(a.formOf(rows[0]).comments, typed.comments);
}

} // namespace
