#include "BenchSupport.h"

#include "StudGenerator.h"

#include "core/DateFormat.h"
#include "core/Options.h"
#include "core/StudLoader.h"
#include "genetics/Genotypes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tarvex::bench {

void catalogueStud(Session &session, const QString &path)
{
    const QFileInfo file(path);
    session.DataFolder = file.absolutePath() + u'/';
    const QString type = file.completeBaseName();
    Options options(session.AppName, type);
    options.setEntry(OptionSection::Catalogue, type, QString());
    options.set(Opt::StudName, u"Bench Stud"_s);
    options.set(Opt::Male, u"Buck"_s);
    options.set(Opt::Female, u"Doe"_s);
}

LargeStud::LargeStud()
{
    const QString file = dir.filePath(u"Bench.mdb"_s);
    generateStud(file, {100000, 40, 60});
    qputenv("XDG_CONFIG_HOME", dir.filePath(u"config"_s).toUtf8());
    catalogueStud(session, file);
    session.Dates = *Detect_Date_Format([](const QDate &d) { return d.toString(u"dd/MM/yyyy"_s); });
    Load_Stud_Details(session, prompts);
}

void openGeneticsStud(Session &session, Prompts &prompts, const QString &path)
{
    const QFileInfo file(path);
    for (const QString &name : {u"Rabbits Genetics.Gen"_s, u"Rabbits Colours.Gen"_s})
        QFile::copy(QStringLiteral(TARVEX_PROGRAM_FOLDER) + name, file.absoluteDir().filePath(name));
    catalogueStud(session, path);
    Options options(session.AppName, file.completeBaseName());
    options.set(Opt::Genetics, u"1"_s);
    options.set(Opt::GeneticsFile, u"Rabbits"_s);
    Load_Stud_Details(session, prompts);
    Ensure_Genetics_Loaded(session, prompts);
}

} // namespace tarvex::bench
