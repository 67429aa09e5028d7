#include "support/StudFixture.h"

#include "breeding/Matings.h"

#include "core/Options.h"
#include "core/StudLoader.h"
#include "store/DaySerial.h"
#include "store/StudDatabase.h"

#include <gtest/gtest.h>

#include <deque>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

/// Prompts whose input boxes are answered from a script: nothing stands for Cancel.
class AnsweringPrompts : public test::ScriptedPrompts
{
public:
    std::optional<QString> input(const QString &prompt, const QString &title, const QString &) override
    {
        asked << title + u": "_s + prompt;
        if (typed.empty()) {
            ADD_FAILURE() << "Unexpected input box: " << prompt.toStdString();
            return u"1"_s; // an answer that ends the question
        }
        const std::optional<QString> answer = typed.front();
        typed.pop_front();
        return answer;
    }
    std::deque<std::optional<QString>> typed;
    QStringList asked;
};

const QString kGestationQuestion =
    u"Gestation: Enter Gestation Period in Days\n\n(This can be amended on the Options Screen)"_s;

class MatingsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        db = &fx.open();
        fx.session.clock = &clock;
        Options(fx.session).set(Opt::GestationInDays, u" 31 "_s);
        jet = fx.add({{u"Name"_s, u"Jet"_s}, {u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"No"_s}});
        bramble = fx.add({{u"Name"_s, u"Bramble"_s}, {u"Sex"_s, u"Doe"_s}, {u"Archive"_s, u"No"_s}});
    }

    /// The matings of an animal, opened as the screen opens them.
    std::unique_ptr<Matings> of(qint64 number)
    {
        auto m = std::make_unique<Matings>(fx.session, prompts, number);
        EXPECT_TRUE(m->open());
        return m;
    }
    MatingForm form(std::optional<qint64> partner, const QString &partnerText, const QString &mated,
                    const QString &due, bool diary = true)
    {
        MatingForm f;
        f.partner = partner;
        f.partnerText = partnerText;
        f.matingDate = mated;
        f.birthDate = due;
        f.updateDiary = diary;
        return f;
    }
    QStringList diary()
    {
        QStringList lines;
        db->eachRow(u"SELECT Number, Date, Notes FROM BreedNote ORDER BY \"Unique\""_s, {}, [&](const Row &r) {
            lines << u"%1 %2 %3"_s.arg(r.number(u"Number"_s))
                         .arg(DaySerial::toDate(r.value(u"Date"_s)).toString(u"yyyy-MM-dd"_s), r.text(u"Notes"_s));
        });
        return lines;
    }
    int count() { return db->scalar(u"SELECT count(*) FROM Matings"_s).toInt(); }

    test::StudFixture fx;
    AnsweringPrompts prompts;
    Database *db = nullptr;
    qint64 jet = 0, bramble = 0;
    QString focus;
    struct FixedClock : Clock
    {
        QDateTime now() const override { return QDateTime(QDate(2024, 12, 31), QTime(9, 0)); }
    } clock;
};

TEST_F(MatingsTest, DueDateRunsAcrossMonthYearAndLeapDays)
{
    EXPECT_EQ(dueDate(QDate(2023, 3, 1), 31), QDate(2023, 4, 1));
    EXPECT_EQ(dueDate(QDate(2024, 2, 28), 1), QDate(2024, 2, 29)) << "a leap year";
    EXPECT_EQ(dueDate(QDate(2023, 2, 28), 1), QDate(2023, 3, 1));
    EXPECT_EQ(dueDate(QDate(2023, 12, 31), 31), QDate(2024, 1, 31));

    // Leaving the mating day: blank is today, and the birth day follows from the stud's 31 days.
    auto m = of(jet);
    QString mated = fx.session.Dates.BlankDate, due = fx.session.Dates.BlankDate;
    m->matingDateLeft(mated, due);
    EXPECT_EQ(mated, u"31/12/2024");
    EXPECT_EQ(due, u"31/01/2025");
    mated = u"01/03/2024"_s;
    due = QString();
    m->matingDateLeft(mated, due);
    EXPECT_EQ(due, u"01/04/2024");
    // An amended mating day does not move a birth day already there.
    mated = u"15/03/2024"_s;
    m->matingDateLeft(mated, due);
    EXPECT_EQ(mated, u"15/03/2024");
    EXPECT_EQ(due, u"01/04/2024");
    // No birth day from a mating day that is no date.
    mated = u"31/02/2024"_s;
    due = fx.session.Dates.BlankDate;
    m->matingDateLeft(mated, due);
    EXPECT_EQ(due, fx.session.Dates.BlankDate);
    EXPECT_TRUE(prompts.asked.isEmpty()) << "\" 31 \" is read as 31 days";
    EXPECT_TRUE(prompts.messages.isEmpty());
}

TEST_F(MatingsTest, GestationIsAskedForUntilGivenAndKept)
{
    Options options(fx.session);
    options.remove(Opt::GestationInDays);
    auto m = of(jet);
    prompts.typed = {std::nullopt, u"none"_s, u" 28 days"_s};
    EXPECT_EQ(m->gestation(), 28);
    EXPECT_EQ(prompts.asked, QStringList({kGestationQuestion, kGestationQuestion, kGestationQuestion}))
        << "Cancel and an answer that is no number ask again";
    EXPECT_EQ(options.text(Opt::GestationInDays), u"28");
    EXPECT_EQ(m->gestation(), 28);
    EXPECT_EQ(prompts.asked.size(), 3) << "held for the life of the screen";

    // A stored period below one day is asked for again.
    options.set(Opt::GestationInDays, u"0"_s);
    prompts.typed = {u"30"_s};
    EXPECT_EQ(of(bramble)->gestation(), 30);
    EXPECT_EQ(prompts.asked.size(), 4);
    EXPECT_EQ(options.text(Opt::GestationInDays), u"30");
}

TEST_F(MatingsTest, UnknownSexCannotHaveMatings)
{
    const qint64 kit = fx.add({{u"Name"_s, u"Kit"_s}, {u"Archive"_s, u"No"_s}});
    Matings m(fx.session, prompts, kit);
    EXPECT_FALSE(m.open());
    ASSERT_EQ(prompts.messages.size(), 1);
    EXPECT_EQ(prompts.messages[0].text, u"Matings Cannot be Recorded");
    EXPECT_EQ(prompts.messages[0].title, u"Unknown Sex");
    EXPECT_EQ(prompts.messages[0].icon, Prompts::Icon::Exclamation);
}

TEST_F(MatingsTest, NewMatingIsListedFromEitherSideWithDiaryLinesForBoth)
{
    auto buck = of(jet);
    EXPECT_EQ(buck->partnerWord(), u"Dam");
    EXPECT_EQ(buck->partners()->entries(), QList<ParentEntry>({{u"Bramble"_s, bramble}})) << "no blank entry";
    ASSERT_TRUE(buck->save(form(bramble, u"Bramble"_s, u"01/03/2024"_s, u"01/04/2024"_s), &focus));
    EXPECT_EQ(diary(), QStringList({u"%1 2024-03-01 Mated to Bramble  - Due 01/04/2024"_s.arg(jet),
                                    u"%1 2024-03-01 Mated to Jet  - Due 01/04/2024"_s.arg(bramble)}));

    auto doe = of(bramble);
    EXPECT_EQ(doe->partnerWord(), u"Sire");
    EXPECT_EQ(doe->partners()->entries(), QList<ParentEntry>({{u"Jet"_s, jet}}));
    const QList<MatingRow> fromDoe = doe->rows();
    ASSERT_EQ(fromDoe.size(), 1);
    EXPECT_EQ(fromDoe[0].partnerName, u"Jet");
    EXPECT_EQ(fromDoe[0].matingDate, QDate(2024, 3, 1));
    EXPECT_EQ(fromDoe[0].birthDate, QDate(2024, 4, 1));
    const QList<MatingRow> fromBuck = buck->rows();
    ASSERT_EQ(fromBuck.size(), 1);
    EXPECT_EQ(fromBuck[0].partnerName, u"Bramble");
    EXPECT_EQ(fromBuck[0].unique, fromDoe[0].unique);

    // From the doe's side the partner is the sire; no diary lines when not asked for.
    const qint64 ash = fx.add({{u"Name"_s, u"Ash"_s}, {u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"No"_s}});
    auto doe2 = of(bramble);
    ASSERT_TRUE(doe2->save(form(ash, u"Ash"_s, u"05/06/2024"_s, u"06/07/2024"_s, false), &focus));
    EXPECT_EQ(db->scalar(u"SELECT Dam FROM Matings WHERE Sire = ?"_s, {ash}).toLongLong(), bramble);
    EXPECT_EQ(diary().size(), 2);
    EXPECT_EQ(doe2->rows().size(), 2);
    EXPECT_EQ(buck->rows().size(), 1);

    // Amending changes the days and writes no diary line, whatever the tick says.
    MatingForm amended = form(bramble, u"Bramble"_s, u"02/03/2024"_s, u"03/04/2024"_s);
    amended.unique = fromBuck[0].unique;
    ASSERT_TRUE(buck->save(amended, &focus));
    EXPECT_EQ(buck->rows()[0].matingDate, QDate(2024, 3, 2));
    EXPECT_EQ(buck->rows()[0].birthDate, QDate(2024, 4, 3));
    EXPECT_EQ(diary().size(), 2);
    EXPECT_EQ(count(), 2);
    EXPECT_TRUE(prompts.messages.isEmpty());
}

TEST_F(MatingsTest, RefusedMatingSaysWhyAndWritesNothing)
{
    auto m = of(jet);
    EXPECT_FALSE(m->save(form(std::nullopt, QString(), u"01/03/2024"_s, u"01/04/2024"_s), &focus));
    EXPECT_EQ(focus, u"MSireDam");
    EXPECT_FALSE(m->save(form(bramble, u"Bramble"_s, u"__/__/____"_s, u"01/04/2024"_s), &focus));
    EXPECT_EQ(focus, u"MMatingDate");
    EXPECT_FALSE(m->save(form(bramble, u"Bramble"_s, u"31/02/2024"_s, u"01/04/2024"_s), &focus));
    EXPECT_EQ(focus, u"MMatingDate");
    EXPECT_FALSE(m->save(form(bramble, u"Bramble"_s, u"01/03/2024"_s, QString()), &focus));
    EXPECT_EQ(focus, u"MBirthDate");
    EXPECT_EQ(prompts.texts(), QStringList({u"A partner must be selected"_s, u"A valid date must be entered"_s,
                                            u"Date: 31/02/2024 is not valid"_s, u"A valid date must be entered"_s,
                                            u"A valid date must be entered"_s}));
    for (const auto &message : prompts.messages) {
        EXPECT_EQ(message.title, QString());
        EXPECT_EQ(message.icon, Prompts::Icon::Exclamation);
    }
    EXPECT_EQ(count(), 0);
    EXPECT_TRUE(diary().isEmpty());
}

TEST_F(MatingsTest, AmendAndRemoveNeedARowThatIsStillThere)
{
    auto m = of(jet);
    ASSERT_TRUE(m->save(form(bramble, u"Bramble"_s, u"01/03/2024"_s, u"01/04/2024"_s), &focus));
    const qint64 unique = m->rows()[0].unique;

    EXPECT_FALSE(m->amend(std::nullopt));
    EXPECT_FALSE(m->remove(std::nullopt));
    EXPECT_FALSE(m->amend(unique + 1));
    EXPECT_FALSE(m->remove(unique + 1));
    EXPECT_EQ(prompts.texts(), QStringList({u"Nothing Selected"_s, u"Nothing Selected"_s,
                                            u"System Error - Could not find Mating"_s,
                                            u"Woops - could not find it!"_s}));
    EXPECT_EQ(prompts.messages[0].icon, Prompts::Icon::Information);
    EXPECT_EQ(prompts.messages[1].icon, Prompts::Icon::Information);
    EXPECT_EQ(prompts.messages[2].icon, Prompts::Icon::None);
    EXPECT_EQ(prompts.messages[3].icon, Prompts::Icon::None);

    const std::optional<MatingRow> row = m->amend(unique);
    ASSERT_TRUE(row);
    EXPECT_EQ(row->partner, bramble);
    EXPECT_EQ(m->partnerPlace(*row), 0);

    // No and Cancel keep the mating; Yes removes it and leaves its diary lines.
    prompts.messages.clear();
    prompts.answerNo();
    prompts.answer(Prompts::Answer::Cancel);
    prompts.answerYes();
    EXPECT_FALSE(m->remove(unique));
    EXPECT_FALSE(m->remove(unique));
    EXPECT_EQ(count(), 1);
    EXPECT_TRUE(m->remove(unique));
    EXPECT_EQ(count(), 0);
    ASSERT_EQ(prompts.messages.size(), 3);
    EXPECT_EQ(prompts.messages[2].text, u"Remove This Mating");
    EXPECT_EQ(prompts.messages[2].title, QString());
    EXPECT_EQ(prompts.messages[2].icon, Prompts::Icon::Question);
    EXPECT_EQ(prompts.messages[2].buttons, Prompts::Buttons::YesNoCancel);
    EXPECT_EQ(diary().size(), 2);
}

TEST_F(MatingsTest, PartnerGoneOrArchivedIsNotFoundButTheMatingCanGo)
{
    const qint64 fern = fx.add({{u"Name"_s, u"Fern"_s}, {u"Sex"_s, u"Doe"_s}, {u"Archive"_s, u"No"_s}});
    auto m = of(jet);
    ASSERT_TRUE(m->save(form(bramble, u"Bramble"_s, u"01/03/2024"_s, u"01/04/2024"_s, false), &focus));
    ASSERT_TRUE(m->save(form(fern, u"Fern"_s, u"02/03/2024"_s, u"02/04/2024"_s, false), &focus));
    db->execute(u"DELETE FROM Stock WHERE Number = ?"_s, {bramble});
    db->execute(u"UPDATE Stock SET Archive = 'Yes' WHERE Number = ?"_s, {fern});
    Refill_All_Lists(fx.session);

    auto again = of(jet);
    const QList<MatingRow> rows = again->rows();
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0].partnerName, u"Not Found");
    EXPECT_EQ(rows[1].partnerName, u"Fern") << "an archived partner keeps its name in the list";
    for (const MatingRow &row : rows) {
        const std::optional<MatingRow> amending = again->amend(row.unique);
        ASSERT_TRUE(amending);
        EXPECT_FALSE(again->partnerPlace(*amending)) << row.partnerName.toStdString();
    }
    EXPECT_EQ(Matings::notFoundPartner(), (ParentEntry{u"<Not Found>"_s, -1}));

    // Saved with "<Not Found>" chosen, which carries no number, the mating is refused.
    MatingForm kept = form(std::nullopt, u"<Not Found>"_s, u"01/03/2024"_s, u"01/04/2024"_s);
    kept.unique = rows[0].unique;
    EXPECT_FALSE(again->save(kept, &focus));
    EXPECT_EQ(prompts.texts(), QStringList({u"A partner must be selected"_s}));
    prompts.answerYes();
    EXPECT_TRUE(again->remove(rows[0].unique));
    EXPECT_EQ(count(), 1);
}

TEST_F(MatingsTest, PartnerIsFoundByNumberNotName)
{
    const qint64 second = fx.add({{u"Name"_s, u"Bramble"_s}, {u"Sex"_s, u"Doe"_s}, {u"Archive"_s, u"No"_s}});
    auto m = of(jet);
    ASSERT_TRUE(m->save(form(second, u"Bramble"_s, u"01/03/2024"_s, u"01/04/2024"_s, false), &focus));
    const std::optional<MatingRow> row = m->amend(m->rows()[0].unique);
    ASSERT_TRUE(row);
    const std::optional<qsizetype> place = m->partnerPlace(*row);
    ASSERT_TRUE(place);
    EXPECT_EQ(m->partners()->at(*place).number, second);
}

} // namespace
