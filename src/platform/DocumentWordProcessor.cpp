#include "DocumentWordProcessor.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

// LibreOffice is given this long to turn or print one document.
constexpr int kOfficeMs = 120000;

QString extensionOf(TemplateDocument::Format format)
{
    return format == TemplateDocument::Format::Docx ? u"docx"_s : u"odt"_s;
}

} // namespace

DocumentWordProcessor::DocumentWordProcessor() = default;
DocumentWordProcessor::~DocumentWordProcessor() = default;

QString DocumentWordProcessor::officeSuite()
{
    for (const QString &program : {u"soffice"_s, u"libreoffice"_s})
        if (const QString found = QStandardPaths::findExecutable(program); !found.isEmpty())
            return found;
    return {};
}

TemplateDocument &DocumentWordProcessor::document()
{
    if (m_quit || !m_document)
        throw WordError(0, u"The merged document has been closed."_s, true);
    return *m_document;
}

void DocumentWordProcessor::runOffice(const QStringList &arguments, const QString &doing)
{
    const QString office = officeSuite();
    if (office.isEmpty())
        throw WordError(WordError::FileAccess, doing + u" needs LibreOffice, which is not installed."_s);
    QProcess run;
    // A profile of its own, so a LibreOffice the breeder has open is not disturbed.
    run.start(office, QStringList{u"--headless"_s, u"--norestore"_s,
                                  u"-env:UserInstallation="_s + QUrl::fromLocalFile(m_work->filePath(u"profile"_s)).toString()} +
                          arguments);
    if (!run.waitForFinished(kOfficeMs) || run.exitStatus() != QProcess::NormalExit || run.exitCode() != 0) {
        run.kill();
        throw WordError(WordError::FileAccess,
                        doing + u" through LibreOffice failed: "_s + QString::fromLocal8Bit(run.readAllStandardError()).trimmed());
    }
}

void DocumentWordProcessor::open(const QString &templatePath)
{
    m_work = std::make_unique<QTemporaryDir>();
    m_quit = false;
    m_templateName = QFileInfo(templatePath).completeBaseName();
    QString readable = templatePath;
    const QString suffix = QFileInfo(templatePath).suffix().toLower();
    // An old Word document is read through LibreOffice as the newer format.
    if (suffix != u"docx" && suffix != u"odt" && QFileInfo(templatePath).isFile() && !officeSuite().isEmpty()) {
        runOffice({u"--convert-to"_s, u"docx"_s, u"--outdir"_s, m_work->path(), templatePath},
                  u"Reading "_s + QFileInfo(templatePath).fileName());
        readable = m_work->filePath(m_templateName + u".docx"_s);
    }
    try {
        m_document = TemplateDocument::open(readable);
    } catch (const DocumentError &e) {
        throw WordError(QFileInfo(templatePath).isFile() ? WordError::NotADocument : WordError::FileNotFound,
                        e.message());
    }
}

bool DocumentWordProcessor::find(const QString &text)
{
    return document().contains(text);
}

bool DocumentWordProcessor::replace(const QString &text, const QString &value)
{
    return document().replaceNext(text, value);
}

bool DocumentWordProcessor::image(const QString &text, const QString &picturePath)
{
    return document().pictureNext(text, picturePath);
}

QString DocumentWordProcessor::workingCopy()
{
    const QString copy = m_work->filePath(m_templateName + u" (merged)."_s + extensionOf(document().format()));
    try {
        document().save(copy);
    } catch (const DocumentError &e) {
        throw WordError(WordError::FileAccess, e.message());
    }
    return copy;
}

void DocumentWordProcessor::save(const QString &path, const QString &extension)
{
    const QString wanted = extension.toLower();
    if (wanted.isEmpty() || wanted == extensionOf(document().format())) {
        try {
            document().save(path);
        } catch (const DocumentError &e) {
            throw WordError(WordError::FileAccess, e.message());
        }
        return;
    }
    // Another format: LibreOffice turns the merged document into it.
    const QString copy = workingCopy();
    const QString out = m_work->filePath(u"converted"_s);
    QDir().mkpath(out);
    runOffice({u"--convert-to"_s, wanted, u"--outdir"_s, out, copy}, u"Saving as ."_s + wanted);
    const QString made = out + u'/' + QFileInfo(copy).completeBaseName() + u'.' + wanted;
    QFile::remove(path);
    if (!QFile::rename(made, path) && !QFile::copy(made, path))
        throw WordError(WordError::FileAccess, u"The merged document could not be saved as '%1'."_s.arg(path));
}

void DocumentWordProcessor::print()
{
    runOffice({u"-p"_s, workingCopy()}, u"Printing"_s);
}

void DocumentWordProcessor::activate()
{
    // A copy of the document as it stands opens in the desktop's program for it; the
    // breeder can edit and save it from there under a name of their own.
    const QString copy = workingCopy();
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(copy)))
        throw WordError(WordError::FileAccess,
                        u"No program on this computer opens %1 documents."_s.arg(QFileInfo(copy).suffix()));
}

void DocumentWordProcessor::quit()
{
    document();
    m_quit = true;
    m_document.reset();
}

QStringList DocumentWordProcessor::fileTypes()
{
    QStringList types{u"Word Document (*.docx)"_s, u"OpenDocument Text (*.odt)"_s};
    if (m_document && m_document->format() == TemplateDocument::Format::Odt)
        types.swapItemsAt(0, 1);
    if (!officeSuite().isEmpty())
        types << u"Word 97-2003 Document (*.doc)"_s << u"PDF Document (*.pdf)"_s;
    return types;
}

} // namespace tarvex
