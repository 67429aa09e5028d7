#include "Startup.h"

#include "Options.h"

#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace tarvex::Startup {

QString appNameFor(const QStringList &arguments)
{
    return arguments.join(u' ') == u"/DEV" ? u"Tarvex Development"_s : u"Tarvex"_s;
}

std::optional<QString> importFolder(const QStringList &arguments)
{
    const QString option = u"--import-from="_s;
    for (const QString &a : arguments)
        if (a.startsWith(option) && a.size() > option.size())
            return a.mid(option.size());
    return std::nullopt;
}

bool detectWordProcessor(Session &session, const std::function<bool()> &probe)
{
    Options options(session);
    QString detected = options.text(Opt::WordDetected);
    if (detected.isEmpty()) {
        detected = probe() ? u"1"_s : u"0"_s;
        options.set(Opt::WordDetected, detected);
    }
    session.WordAvailable = detected == u"1";
    return session.WordAvailable;
}

bool wordProcessorOnPath()
{
    for (const QString &program : {u"soffice"_s, u"libreoffice"_s, u"lowriter"_s, u"abiword"_s})
        if (!QStandardPaths::findExecutable(program).isEmpty())
            return true;
    return false;
}

} // namespace tarvex::Startup
