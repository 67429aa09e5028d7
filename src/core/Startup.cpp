#include "Startup.h"

#include "AppFolders.h"
#include "Options.h"
#include "StudLoader.h"


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
    // Asked again while nothing was found, so a way to merge that came since is seen.
    if (detected != u"1") {
        detected = probe() ? u"1"_s : u"0"_s;
        options.set(Opt::WordDetected, detected);
    }
    session.WordAvailable = detected == u"1";
    return session.WordAvailable;
}


bool Form_Load(Session &s, Prompts &prompts, const QStringList &arguments, const ShortDateFunction &shortDate,
               std::unique_ptr<SingleInstance> &instance)
{
    Shell &shell = s.shell();
    shell.showSplash();
    shell.repaintSplash();

    s.DataFolder = AppFolders::dataFolder();
    AppFolders::prepareDataFolder(s.DataFolder, s.ProgramFolder);
    if (const auto from = importFolder(arguments))
        AppFolders::importOldFiles(*from, s.DataFolder);

    instance = std::make_unique<SingleInstance>(s.DataFolder);
    if (!instance->acquire()) {
        shell.unloadSplash();
        prompts.show(u"Program already running"_s, QString(), Prompts::Icon::Stop);
        return false;
    }
    shell.repaintSplash();
    s.SpreadsheetAvailable = true;
    s.AppName = appNameFor(arguments);

    const auto dates = Detect_Date_Format(shortDate);
    if (!dates) {
        shell.unloadSplash();
        prompts.show(dateFormattingErrorText(), dateFormattingErrorTitle(), Prompts::Icon::Stop);
        return false;
    }
    s.Dates = *dates;
    shell.repaintSplash();

    if (Load_Stud_Details(s, prompts) == LoadResult::EndProgram) {
        shell.unloadSplash();
        return false;
    }
    // The program fills .docx and .odt templates itself, so a merge can always be made.
    detectWordProcessor(s, [] { return true; });
    return true;
}

} // namespace tarvex::Startup
