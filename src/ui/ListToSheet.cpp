#include "ListToSheet.h"

#include "FileChooser.h"

#include "core/Prompts.h"
#include "platform/XlsxSheetWriter.h"
#include "ui/Hourglass.h"

#include <QAbstractItemModel>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QUrl>

#include <utility>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

const QString kXlsxType = u"application/vnd.openxmlformats-officedocument.spreadsheetml.sheet"_s;
const QString kMessageTitle = u"Copy to Excel"_s;
// A desktop that has not answered in this time has no program worth waiting for.
constexpr int kQueryWaitMs = 3000;

bool desktopHasProgram()
{
    const QMimeType type = QMimeDatabase().mimeTypeForFile(u"list.xlsx"_s, QMimeDatabase::MatchExtension);
    const QString name = type.isValid() && !type.isDefault() ? type.name() : kXlsxType;
    QProcess query;
    query.start(u"xdg-mime"_s, {u"query"_s, u"default"_s, name});
    if (!query.waitForStarted(kQueryWaitMs))
        return false;
    if (!query.waitForFinished(kQueryWaitMs)) {
        query.kill();
        query.waitForFinished(kQueryWaitMs);
        return false;
    }
    return query.exitStatus() == QProcess::NormalExit && query.exitCode() == 0 &&
           !query.readAllStandardOutput().trimmed().isEmpty();
}

// A name not yet taken in the folder: a sheet already open in the spreadsheet program is
// never written over, and opening the same name twice would only bring the old one forward.
QString freePath(const QString &folder, const QString &fileName)
{
    const QDir dir(folder);
    const QFileInfo name(fileName);
    QString path = dir.filePath(fileName);
    for (int n = 2; QFileInfo::exists(path); ++n)
        path = dir.filePath(u"%1 (%2).%3"_s.arg(name.completeBaseName()).arg(n).arg(name.suffix()));
    return path;
}

} // namespace

clslvtoExcel &clslvtoExcel::shared()
{
    static clslvtoExcel instance;
    return instance;
}

void clslvtoExcel::Heading(const QString &title)
{
    m_sheet.title = title;
}

void clslvtoExcel::listviewA(const QTreeWidget *list)
{
    // A tree widget's model holds its items in the order shown, sorted or not.
    listviewA(list ? list->model() : nullptr);
}

void clslvtoExcel::listviewA(const QAbstractItemModel *list)
{
    m_sheet.headings.clear();
    m_sheet.rows.clear();
    if (!list)
        return;
    const int columns = list->columnCount();
    for (int c = 0; c < columns; ++c)
        m_sheet.headings << list->headerData(c, Qt::Horizontal).toString();
    const int count = list->rowCount();
    m_sheet.rows.reserve(count);
    for (int i = 0; i < count; ++i) {
        QStringList row;
        row.reserve(columns);
        for (int c = 0; c < columns; ++c)
            row << list->index(i, c).data().toString();
        m_sheet.rows << std::move(row);
    }
}

bool clslvtoExcel::ExcelExists()
{
    if (!m_programFound)
        m_programFound = m_query ? m_query() : desktopHasProgram();
    return *m_programFound;
}

void clslvtoExcel::CreateExcel(QWidget *parent, Prompts &prompts)
{
    m_last = std::exchange(m_sheet, ListSheet());
    if (ExcelExists()) {
        const QString folder = workFolder(prompts);
        if (folder.isEmpty())
            return;
        const QString path = freePath(folder, sheetFileName(m_last.title));
        if (!write(m_last, path, parent, prompts))
            return;
        const QUrl url = QUrl::fromLocalFile(path);
        if (m_opener ? m_opener(url) : QDesktopServices::openUrl(url))
            return;
        // The program would not start: the breeder can still keep the sheet.
        QFile::remove(path);
    }
    offerToSave(m_last, parent, prompts);
}

void clslvtoExcel::setOpener(Opener opener)
{
    m_opener = std::move(opener);
}

void clslvtoExcel::setProgramQuery(ProgramQuery query)
{
    m_query = std::move(query);
    m_programFound.reset();
}


void clslvtoExcel::setWorkFolder(const QString &folder)
{
    m_folder = folder;
}

QString clslvtoExcel::workFolder(Prompts &prompts)
{
    if (!m_folder.isEmpty())
        return m_folder;
    QTemporaryDir dir(QDir(QDir::tempPath()).filePath(u"tarvex-XXXXXX"_s));
    if (!dir.isValid()) {
        prompts.show(u"Cannot make a folder for the spreadsheet in \"%1\": %2."_s.arg(
                         QDir::toNativeSeparators(QDir::tempPath()), dir.errorString()),
                     kMessageTitle, Prompts::Icon::Exclamation);
        return {};
    }
    dir.setAutoRemove(false);
    m_folder = dir.path();
    return m_folder;
}

bool clslvtoExcel::write(const ListSheet &sheet, const QString &path, QWidget *parent, Prompts &prompts)
{
    std::optional<QString> failure;
    {
        HourglassScope wait(parent ? parent->window() : nullptr);
        XlsxSheetWriter writer;
        failure = writeListSheet(sheet, writer, path);
    }
    if (failure)
        prompts.show(*failure, kMessageTitle, Prompts::Icon::Exclamation);
    return !failure;
}

void clslvtoExcel::offerToSave(const ListSheet &sheet, QWidget *parent, Prompts &prompts)
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (folder.isEmpty() || !QFileInfo(folder).isDir())
        folder = QDir::homePath();
    const QString suggested = QDir(folder).filePath(sheetFileName(sheet.title));
    const QString chosen =
        FileChooser::save(parent, u"Save List as Spreadsheet"_s, suggested, {u"Spreadsheets (*.xlsx)"_s}).path;
    if (!chosen.isEmpty())
        write(sheet, chosen, parent, prompts);
}

} // namespace tarvex
