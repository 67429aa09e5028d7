#include "BenchSupport.h"

#include "StudGenerator.h"

#include "core/DateFormat.h"
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
    CRegSettings settings = session.settings();
    settings.SaveSetting(u"Databases"_s, type, QString());
    settings.SaveSetting(type, u"StudName"_s, u"Bench Stud"_s);
    settings.SaveSetting(type, u"Male"_s, u"Buck"_s);
    settings.SaveSetting(type, u"Female"_s, u"Doe"_s);
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
    CRegSettings settings = session.settings();
    const QString options = file.completeBaseName() + u"\\Options"_s;
    settings.SaveSetting(options, u"Genetics"_s, u"1"_s);
    settings.SaveSetting(options, u"GeneticsFile"_s, u"Rabbits"_s);
    Load_Stud_Details(session, prompts);
    Ensure_Genetics_Loaded(session, prompts);
}

} // namespace tarvex::bench
