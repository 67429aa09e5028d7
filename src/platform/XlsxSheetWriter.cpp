#include "XlsxSheetWriter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QtGlobal>

#include <xlsxwriter.h>
#include <zip.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

// A light grey, as behind the column heads of the lists on screen.
constexpr lxw_color_t kHeadingFill = 0xD9D9D9;

// Faults of the file itself, where the system's own words ("No space left on device")
// say more than the library's.
bool isFileFault(lxw_error error)
{
    switch (error) {
    case LXW_ERROR_CREATING_XLSX_FILE:
    case LXW_ERROR_CREATING_TMPFILE:
    case LXW_ERROR_READING_TMPFILE:
    case LXW_ERROR_ZIP_FILE_OPERATION:
    case LXW_ERROR_ZIP_FILE_ADD:
    case LXW_ERROR_ZIP_CLOSE:
        return true;
    default:
        return false;
    }
}

QString libraryReason(lxw_error error)
{
    return QString::fromUtf8(lxw_strerror(error));
}

// The library passes each part of the workbook through a temporary file and does not look
// at those writes: with the temporary folder or the disk full it saves a sheet cut short
// and reports success. So the finished workbook is read back, and every part must end
// with the closing tag of the element it opened with. Returns why not, or nothing.
std::optional<QString> incompletePart(const QString &file)
{
    const QString cutShort = u"the sheet came out incomplete; the disk may be full"_s;
    int error = 0;
    zip_t *zip = zip_open(QFile::encodeName(file).constData(), ZIP_RDONLY | ZIP_CHECKCONS, &error);
    if (!zip)
        return cutShort;
    const auto closeZip = qScopeGuard([zip] { zip_discard(zip); });
    const zip_int64_t entries = zip_get_num_entries(zip, 0);
    QByteArray chunk(1 << 16, Qt::Uninitialized);
    for (zip_int64_t i = 0; i < entries; ++i) {
        const QByteArray name = zip_get_name(zip, zip_uint64_t(i), 0);
        if (!name.endsWith(".xml") && !name.endsWith(".rels"))
            continue;
        zip_file_t *part = zip_fopen_index(zip, zip_uint64_t(i), 0);
        if (!part)
            return cutShort;
        QByteArray head, tail;
        zip_int64_t got = 0;
        while ((got = zip_fread(part, chunk.data(), zip_uint64_t(chunk.size()))) > 0) {
            const QByteArrayView read(chunk.constData(), qsizetype(got));
            if (head.size() < 512)
                head += read.first(std::min(read.size(), 512 - head.size()));
            tail.append(read.last(std::min<qsizetype>(read.size(), 256)));
            tail = tail.right(256);
        }
        zip_fclose(part);
        if (got < 0)
            return cutShort;
        // The root element: the first tag after the declaration.
        qsizetype open = head.indexOf("?>");
        open = head.indexOf('<', open < 0 ? 0 : open);
        qsizetype end = open + 1;
        while (end < head.size() && !QChar::isSpace(head.at(end)) && head.at(end) != '>' &&
               head.at(end) != '/')
            ++end;
        if (open < 0 || end <= open + 1 ||
            !tail.trimmed().endsWith("</" + head.mid(open + 1, end - open - 1) + '>'))
            return cutShort;
    }
    return std::nullopt;
}

} // namespace

XlsxSheetWriter::~XlsxSheetWriter()
{
    abandon();
}

QString XlsxSheetWriter::failure(const QString &reason) const
{
    QString why = reason.trimmed();
    while (why.endsWith(u'.'))
        why.chop(1);
    return u"Cannot save the spreadsheet \"%1\": %2."_s.arg(QDir::toNativeSeparators(m_path), why);
}

void XlsxSheetWriter::abandon()
{
    if (m_book)
        lxw_workbook_free(m_book);
    m_book = nullptr;
    m_sheet = nullptr;
    m_title = m_heading = nullptr;
    if (!m_partial.isEmpty())
        QFile::remove(m_partial);
    m_partial.clear();
}

std::optional<QString> XlsxSheetWriter::open(const QString &path)
{
    abandon();
    m_fault.reset();
    const QFileInfo target(path);
    m_path = target.absoluteFilePath();
    const QString partial = u"%1/.%2.%3.part"_s.arg(target.absolutePath(), target.fileName())
                                .arg(QCoreApplication::applicationPid());
    // Made here first, so that a folder that cannot be written to is known before any work
    // is done, and in the system's own words.
    QFile probe(partial);
    if (!probe.open(QIODevice::WriteOnly))
        return failure(probe.errorString());
    probe.close();
    m_partial = partial;

    m_book = workbook_new(QFile::encodeName(m_partial).constData());
    if (m_book)
        m_sheet = workbook_add_worksheet(m_book, nullptr);
    if (!m_sheet) {
        abandon();
        return failure(libraryReason(LXW_ERROR_MEMORY_MALLOC_FAILED));
    }
    m_title = workbook_add_format(m_book);
    format_set_bold(m_title);
    format_set_font_size(m_title, kSheetTitlePoints);
    m_heading = workbook_add_format(m_book);
    format_set_bold(m_heading);
    format_set_pattern(m_heading, LXW_PATTERN_SOLID);
    format_set_bg_color(m_heading, kHeadingFill);
    return std::nullopt;
}

void XlsxSheetWriter::write(int row, int column, const QString &text, Style style)
{
    if (!m_sheet || m_fault)
        return;
    lxw_format *format = style == Style::Title ? m_title : style == Style::Heading ? m_heading : nullptr;
    if (text.isEmpty() && !format)
        return;
    const QByteArray utf8 = text.toUtf8();
    const lxw_error error =
        worksheet_write_string(m_sheet, lxw_row_t(row), lxw_col_t(column), utf8.constData(), format);
    if (error != LXW_NO_ERROR)
        m_fault = failure(u"%1 (row %2, column %3)"_s.arg(libraryReason(error)).arg(row + 1).arg(column + 1));
}

void XlsxSheetWriter::setColumnWidth(int column, double width)
{
    if (!m_sheet || m_fault)
        return;
    const lxw_error error =
        worksheet_set_column(m_sheet, lxw_col_t(column), lxw_col_t(column), width, nullptr);
    if (error != LXW_NO_ERROR)
        m_fault = failure(u"%1 (column %2)"_s.arg(libraryReason(error)).arg(column + 1));
}

std::optional<QString> XlsxSheetWriter::close()
{
    if (!m_book)
        return m_fault ? m_fault : std::optional<QString>(u"No spreadsheet was begun."_s);
    if (m_fault) {
        abandon();
        return m_fault;
    }
    errno = 0;
    // The workbook is gone after this, whatever the result.
    const lxw_error result = workbook_close(m_book);
    const int cause = errno;
    m_book = nullptr;
    m_sheet = nullptr;
    m_title = m_heading = nullptr;
    if (result != LXW_NO_ERROR) {
        abandon();
        return failure(isFileFault(result) && cause != 0 ? qt_error_string(cause) : libraryReason(result));
    }
    if (const auto cutShort = incompletePart(m_partial)) {
        abandon();
        return failure(*cutShort);
    }
    // Put in place in one step: an earlier file of the name stays whole until then.
    if (std::rename(QFile::encodeName(m_partial).constData(), QFile::encodeName(m_path).constData()) != 0) {
        const int renameCause = errno;
        abandon();
        return failure(qt_error_string(renameCause));
    }
    m_partial.clear();
    return std::nullopt;
}

} // namespace tarvex
