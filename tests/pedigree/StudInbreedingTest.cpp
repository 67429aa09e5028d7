// Coefficients of the animals of a stud as the screens and the command line get them: read
// from the stud, kept while the pedigrees stay as they are, loops reported by name.
#include "pedigree/StudInbreeding.h"

#include "pedigree/CoiCommand.h"

#include "support/StudFixture.h"
#include "core/Progress.h"
#include "pedigree/InbreedingTable.h"
#include "store/Database.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

/// Founders Adam and Eve; their son Cain and daughter Ada; Cain's son by Ada, Enoch.
struct FamilyStud : test::StudFixture
{
    qint64 adam = 0, eve = 0, cain = 0, ada = 0, enoch = 0, stranger = 0;
    FamilyStud()
    {
        Database &db = open();
        adam = test::addAnimal(db, {{u"Name"_s, u"Adam"_s}, {u"Sex"_s, u"Buck"_s}});
        eve = test::addAnimal(db, {{u"Name"_s, u"Eve"_s}, {u"Sex"_s, u"Doe"_s}});
        cain = test::addAnimal(db, {{u"Name"_s, u"Cain"_s}, {u"Sire"_s, adam}, {u"Dam"_s, eve}});
        ada = test::addAnimal(db, {{u"Name"_s, u"Ada, \"the elder\""_s}, {u"Sire"_s, adam}, {u"Dam"_s, eve}});
        enoch = test::addAnimal(db, {{u"Name"_s, u"Enoch"_s}, {u"Sire"_s, cain}, {u"Dam"_s, ada}});
        stranger = test::addAnimal(db, {{u"Name"_s, u"Stranger"_s}});
    }
    Database &db() { return session.Stud->handle(); }
};

TEST(StudInbreeding, AnAnimalAndAMatingAreWorkedOutFromTheStud)
{
    FamilyStud stud;
    const auto enoch = Animal_Inbreeding(stud.db(), stud.enoch, kAllGenerations);
    ASSERT_TRUE(enoch);
    EXPECT_DOUBLE_EQ(enoch->coi, 0.25);
    EXPECT_EQ(enoch->completeness.generations, 2);
    EXPECT_DOUBLE_EQ(enoch->relationship, 0.5) << "full siblings";
    ASSERT_EQ(enoch->common.size(), 2);
    EXPECT_EQ(enoch->common[0].number + enoch->common[1].number, stud.adam + stud.eve);
    EXPECT_DOUBLE_EQ(enoch->common[0].contribution, 0.125);

    EXPECT_FALSE(Animal_Inbreeding(stud.db(), 9999, 30)) << "not in the stud";
    EXPECT_DOUBLE_EQ(Animal_Inbreeding(stud.db(), stud.adam, 30)->coi, 0.0);

    const AnimalInbreeding backcross = Mating_Inbreeding(stud.db(), stud.adam, stud.ada, 30);
    EXPECT_DOUBLE_EQ(backcross.coi, 0.25) << "father and daughter";
    EXPECT_DOUBLE_EQ(Mating_Inbreeding(stud.db(), stud.cain, stud.stranger, 30).coi, 0.0);
    EXPECT_DOUBLE_EQ(Mating_Inbreeding(stud.db(), stud.enoch, stud.ada, 1).coi, 0.0)
        << "one generation back, the dam's parents are out of sight";
}

TEST(StudInbreeding, APedigreeOfTooManyAncestorsIsWorkedOutOverTheGenerationsThatFit)
{
    // Twelve whole generations: 8,190 ancestors, each place a different animal.
    test::StudFixture fx;
    Database &db = fx.open();
    constexpr int kGenerations = 12;
    const qint64 first = 1000;
    {
        Transaction tx(db);
        // Animal i's parents are 2i and 2i + 1, numbered from first; the founders have none.
        for (qint64 i = (qint64(1) << (kGenerations + 1)) - 1; i >= 1; --i) {
            const bool founder = i >= (qint64(1) << kGenerations);
            db.execute(u"INSERT INTO Stock (Number, Name, Sire, Dam) VALUES (?, ?, ?, ?)"_s,
                       {first + i, u"A%1"_s.arg(i), founder ? QVariant() : QVariant(first + 2 * i),
                        founder ? QVariant() : QVariant(first + 2 * i + 1)});
        }
        tx.commit();
    }
    const auto a = Animal_Inbreeding(db, first + 1, kAllGenerations);
    ASSERT_TRUE(a);
    EXPECT_EQ(kAnimalAncestors, 4000u);
    EXPECT_EQ(coiText(a->coi, a->completeness), u"COI 0.00% (10 gen, 100% of ancestors known)")
        << "the eleventh generation would pass 4,000 ancestors";
    EXPECT_EQ(Animal_Inbreeding(db, first + 1, 5)->completeness.generations, 5);
}

TEST(StudInbreeding, TheCacheKeepsResultsUntilAParentChanges)
{
    FamilyStud stud;
    PedigreeCache &cache = pedigreeCache(stud.session);
    EXPECT_DOUBLE_EQ(cache.animal(*stud.session.Stud, stud.enoch, 30)->coi, 0.25);

    // A note saved: the pedigrees stand, the result is kept.
    stud.db().execute(u"UPDATE Stock SET Notes = 'Good doe' WHERE Number = ?"_s, {stud.ada});
    const auto before = stud.session.Stud->pedigreeStamp();
    EXPECT_DOUBLE_EQ(cache.animal(*stud.session.Stud, stud.enoch, 30)->coi, 0.25);

    // Ada's dam changed to the stranger: Enoch is now a half-sibling mating's son.
    stud.db().execute(u"UPDATE Stock SET Dam = ? WHERE Number = ?"_s, {stud.stranger, stud.ada});
    EXPECT_FALSE(stud.session.Stud->pedigreeStamp() == before);
    EXPECT_DOUBLE_EQ(cache.animal(*stud.session.Stud, stud.enoch, 30)->coi, 0.125);

    // Another program's save is seen too.
    auto other = Database::open(stud.session.databasePath());
    other->execute(u"UPDATE Stock SET Sire = NULL WHERE Number = ?"_s, {stud.ada});
    EXPECT_DOUBLE_EQ(cache.animal(*stud.session.Stud, stud.enoch, 30)->coi, 0.0);
}

TEST(StudInbreeding, TheWholeStudIsATableAndALoopIsNamed)
{
    FamilyStud stud;
    const auto rows = Stud_Inbreeding(stud.db(), 30, noProgress());
    ASSERT_EQ(rows.size(), 6u);
    EXPECT_EQ(rows[4].number, stud.enoch);
    EXPECT_DOUBLE_EQ(rows[4].coi, 0.25);
    EXPECT_EQ(inbreedingCsv({rows[3], rows[4]}),
              u"Number,Name,COI %,Generations,Ancestors known %\n"
              u"%1,\"Ada, \"\"the elder\"\"\",0.00,1,100\n%2,Enoch,25.00,2,100\n"_s.arg(stud.ada).arg(stud.enoch));

    // Adam entered, by a slip, as his own grandson's son.
    stud.db().execute(u"UPDATE Stock SET Sire = ? WHERE Number = ?"_s, {stud.enoch, stud.adam});
    try {
        Stud_Inbreeding(stud.db(), 30, noProgress());
        ADD_FAILURE() << "the loop went unnoticed";
    } catch (const PedigreeLoop &loop) {
        const QString text = pedigreeLoopText(stud.db(), loop.number());
        EXPECT_TRUE(text.endsWith(u" is its own ancestor: a Sire or Dam on its lines has been entered wrongly. "
                                  u"Correct it before the inbreeding can be worked out."_s))
            << text.toStdString();
    }
    EXPECT_THROW(Animal_Inbreeding(stud.db(), stud.enoch, 30), PedigreeLoop);
    EXPECT_EQ(pedigreeLoopText(stud.db(), stud.adam).section(u' ', 0, 0), u"Adam");
}

/// Says yes to Cancel once the work has begun.
struct CancelAtOnce : NoProgress
{
    bool cancelled() override { return true; }
};

TEST(StudInbreeding, TheTableLooksBackTheBreedersGenerationsAndIsKeptUntilAParentChanges)
{
    FamilyStud stud;
    // One generation back, Enoch's parents' common parents are out of sight.
    const auto shallow = Stud_Inbreeding(stud.db(), 1, noProgress());
    ASSERT_EQ(shallow.size(), 6u);
    EXPECT_EQ(shallow[4].number, stud.enoch);
    EXPECT_DOUBLE_EQ(shallow[4].coi, 0.0);
    EXPECT_EQ(shallow[4].completeness.generations, 1);
    EXPECT_DOUBLE_EQ(shallow[4].completeness.known, 1.0);
    CancelAtOnce cancel;
    EXPECT_TRUE(Stud_Inbreeding(stud.db(), kAllGenerations, cancel).empty()) << "a cancelled table gives nothing";

    PedigreeCache &cache = pedigreeCache(stud.session);
    StudDatabase &db = *stud.session.Stud;
    EXPECT_FALSE(cache.studTable(db, kAllGenerations));
    const auto kept = cache.keepStudTable(db, kAllGenerations, Stud_Inbreeding(stud.db(), kAllGenerations, noProgress()));
    EXPECT_EQ(cache.studTable(db, kAllGenerations), kept);
    EXPECT_FALSE(cache.studTable(db, 1)) << "worked out for other generations";
    stud.db().execute(u"INSERT INTO Stock (Name) VALUES ('Newcomer')"_s);
    EXPECT_FALSE(cache.studTable(db, kAllGenerations)) << "a new animal is a new table";
}

TEST(StudInbreeding, OnlyTheCommonAncestorsInSightAreGivenColours)
{
    FamilyStud stud;
    const auto enoch = Animal_Inbreeding(stud.db(), stud.enoch, kAllGenerations);
    ASSERT_TRUE(enoch);
    const QList<CommonAncestorLine> lines = commonAncestorLines(stud.db(), *enoch, {stud.eve});
    ASSERT_EQ(lines.size(), 2);
    for (const CommonAncestorLine &l : lines) {
        EXPECT_EQ(l.mark, l.number == stud.eve ? 0 : -1) << l.name.toStdString();
        EXPECT_EQ(l.share, u"12.50%");
        EXPECT_EQ(l.timesSire, u"1");
    }
    EXPECT_EQ(commonAncestorColour(0), 0xe6194bu);
    EXPECT_EQ(commonAncestorColour(kMarkColours), 0u);
}

TEST(StudInbreeding, TheTableSortsEachColumnAsWhatItHolds)
{
    auto rows = std::make_shared<std::vector<StudInbreedingRow>>(std::vector<StudInbreedingRow>{
        {3, u"bramble"_s, 0.25, {2, 1.0}},
        {1, u"Acorn"_s, 0.0625, {3, 0.5}},
        {2, u"Clover"_s, 0.25, {1, 1.0}},
    });
    InbreedingTable table;
    table.setRows(rows);
    const auto column = [&](int c) {
        QStringList texts;
        for (int r = 0; r < table.rowCount(); ++r)
            texts << table.data(table.index(r, c)).toString();
        return texts.join(u' ');
    };
    EXPECT_EQ(column(InbreedingTable::Number), u"3 1 2") << "as read until sorted";
    table.sort(InbreedingTable::Name);
    EXPECT_EQ(column(InbreedingTable::Name), u"Acorn bramble Clover") << "letter case aside";
    table.sort(InbreedingTable::Coi, Qt::DescendingOrder);
    EXPECT_EQ(column(InbreedingTable::Number), u"3 2 1") << "equal coefficients by number";
    table.sort(InbreedingTable::Known);
    EXPECT_EQ(column(InbreedingTable::Known), u"50 100 100");
    EXPECT_EQ(table.summary(), u"3 animals, average COI 18.75%, highest 25.00%");
}

TEST(StudInbreeding, TheCommandLineWritesTheTableOrTellsWhyNot)
{
    FamilyStud stud;
    const QString file = stud.session.databasePath();
    QString out, err;
    QTextStream o(&out), e(&err);
    EXPECT_EQ(Coi_Command(file, kAllGenerations, o, e), 0);
    EXPECT_TRUE(err.isEmpty());
    EXPECT_EQ(out.count(u'\n'), 7);
    EXPECT_TRUE(out.contains(u"\n%1,Enoch,25.00,2,100\n"_s.arg(stud.enoch))) << out.toStdString();

    const QString junk = QDir(stud.session.DataFolder).filePath(u"Letters.mdb"_s);
    QFile f(junk);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("Dear breeder,\n");
    f.close();
    out.clear();
    EXPECT_EQ(Coi_Command(junk, kAllGenerations, o, e), 1);
    EXPECT_TRUE(out.isEmpty());
    EXPECT_EQ(err, u"Cannot Open Database : Letters.mdb\nError:3343  Unrecognized database format '%1'.\n"_s.arg(junk));

    // A loop stops the table and names an animal on it.
    stud.db().execute(u"UPDATE Stock SET Sire = ? WHERE Number = ?"_s, {stud.enoch, stud.adam});
    out.clear();
    err.clear();
    EXPECT_EQ(Coi_Command(file, kAllGenerations, o, e), 1);
    EXPECT_TRUE(out.isEmpty());
    EXPECT_TRUE(err.contains(u" is its own ancestor: "_s)) << err.toStdString();
}

} // namespace
