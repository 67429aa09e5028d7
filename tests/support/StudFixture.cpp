#include "StudFixture.h"

#include "core/AppFolders.h"
#include "core/Options.h"
#include "core/StudLoader.h"
#include "store/StudDatabase.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace tarvex::test {

QString programFolder()
{
    return QStringLiteral(TARVEX_PROGRAM_FOLDER);
}

QString copyTemplate(const QString &folder, const QString &fileName)
{
    QDir().mkpath(folder);
    const QString path = QDir(folder).filePath(fileName);
    QFile::remove(path);
    EXPECT_TRUE(QFile::copy(programFolder() + u"EmptyStock.mdb"_s, path));
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    return path;
}

qint64 addAnimal(Database &db, const QVariantMap &fields)
{
    QStringList names;
    QStringList marks;
    QVariantList values;
    for (auto it = fields.cbegin(); it != fields.cend(); ++it) {
        names << Database::quoted(it.key());
        marks << u"?"_s;
        values << it.value();
    }
    db.execute(u"INSERT INTO Stock (%1) VALUES (%2)"_s.arg(names.join(u','), marks.join(u',')), values);
    return db.sql().getLastInsertRowid();
}

StudFixture::StudFixture()
{
    session.DataFolder = AppFolders::dataFolder();
    session.ProgramFolder = programFolder();
    session.setShell(&shell);
    QDir().mkpath(session.DataFolder);
    QFile::copy(programFolder() + u"stocktypes.txt"_s, session.DataFolder + u"stocktypes.txt"_s);
}

void StudFixture::registerStud(const QString &stockType, const QString &studName, bool copyDatabase)
{
    CRegSettings settings(session.AppName);
    settings.SaveSetting(u"Databases"_s, stockType, QString());
    const QList<QPair<QString, QString>> values = {
        {u"StudName"_s, studName}, {u"Telephone"_s, u"0123 456"_s}, {u"Male"_s, u"Buck"_s},
        {u"Female"_s, u"Doe"_s},   {u"Father"_s, u"Sire"_s},        {u"Mother"_s, u"Dam"_s},
        {u"Id"_s, u"Ring No."_s},  {u"Id2"_s, u"Tattoo"_s},         {u"Id3"_s, u"Tattoo"_s}};
    for (const auto &[key, value] : values)
        settings.SaveSetting(stockType, key, value);
    if (copyDatabase)
        copyTemplate(session.DataFolder, stockType + u".mdb"_s);
}

void StudFixture::writeGenetics(const QByteArray &genetics, const QByteArray &colours)
{
    for (const auto &[name, bytes] : {std::pair{QStringLiteral("Rabbits Genetics.Gen"), genetics},
                                      std::pair{QStringLiteral("Rabbits Colours.Gen"), colours}}) {
        QFile f(session.DataFolder + name);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
}

void StudFixture::useShippedGenetics()
{
    copyShippedGenetics();
    Options options(session);
    options.set(Opt::Genetics, u"1"_s);
    options.set(Opt::GeneticsFile, u"Rabbits"_s);
    session.GeneticsOn = true;
    session.GeneticsFile = u"Rabbits"_s;
}

void StudFixture::copyShippedGenetics()
{
    for (const QString &name :
         {QStringLiteral("Rabbits Genetics.Gen"), QStringLiteral("Rabbits Colours.Gen")}) {
        QFile::remove(session.DataFolder + name);
        QFile::copy(programFolder() + name, session.DataFolder + name);
    }
}

Database &StudFixture::open()
{
    registerStud(u"Rabbits"_s, u"Warren End"_s);
    session.Dates = *Detect_Date_Format([](const QDate &d) { return d.toString(u"dd/MM/yyyy"_s); });
    EXPECT_EQ(Load_Stud_Details(session, prompts), LoadResult::Opened);
    return session.Stud->handle();
}

qint64 StudFixture::add(const QVariantMap &fields)
{
    const qint64 n = addAnimal(session.Stud->handle(), fields);
    Refill_All_Lists(session);
    return n;
}

} // namespace tarvex::test
