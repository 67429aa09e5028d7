#include "BenchSupport.h"

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

} // namespace tarvex::bench
