#include "StockTypes.h"

#include "TextFile.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace tarvex::StockTypes {

namespace {
FileError fileError(const QFile &f)
{
    if (!f.exists())
        return {53, u"File not found"_s};
    if (f.error() == QFileDevice::PermissionsError || f.error() == QFileDevice::OpenError)
        return {75, u"Path/File access error"_s};
    return {57, u"Device I/O error"_s};
}
} // namespace

QString locate(const QString &folder)
{
    const QDir dir(folder);
    for (const QString &name : dir.entryList(QDir::Files | QDir::Hidden)) {
        if (name.compare(u"stocktypes.txt"_s, Qt::CaseInsensitive) == 0)
            return dir.filePath(name);
    }
    return dir.filePath(u"stocktypes.txt"_s);
}

StockTypeEntry parseLine(const QString &line)
{
    QStringList f = line.split(u',');
    for (QString &field : f) {
        field = field.trimmed();
        field.remove(u'"');
        field = field.trimmed();
    }
    while (f.size() < 8)
        f << QString();
    return {f[0], f[1], f[2], f[3], f[4], f[5], f[6], f[7]};
}

QString formatLine(const StockTypeEntry &e)
{
    QStringList fields{e.stockType, e.femaleWord, e.maleWord, e.motherWord,
                       e.fatherWord, e.id1,       e.id2,      e.id3};
    // The quotes are the only markup of the file, so a field cannot hold one of its own.
    for (QString &f : fields)
        f = u'"' + QString(f).remove(u'"') + u'"';
    return fields.join(u',');
}

std::optional<QList<StockTypeEntry>> read(const QString &path, FileError *error)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) {
        if (error)
            *error = fileError(f);
        return std::nullopt;
    }
    const QByteArray bytes = f.readAll();
    if (f.error() != QFileDevice::NoError) {
        if (error)
            *error = fileError(f);
        return std::nullopt;
    }
    // A line edited by hand, or written with a stray quote by earlier versions, is read by
    // the same rule as any other: one bad line must not keep the user from every stud.
    QList<StockTypeEntry> entries;
    for (const QString &line : TextFile::lines(TextFile::decode(bytes))) {
        if (line.trimmed().isEmpty())
            continue;
        const StockTypeEntry entry = parseLine(line);
        if (!entry.stockType.isEmpty())
            entries << entry;
    }
    return entries;
}

bool append(const QString &path, const StockTypeEntry &entry, FileError *error)
{
    QByteArray existing;
    {
        QFile in(path);
        if (in.open(QIODevice::ReadOnly))
            existing = in.readAll();
    }
    bool utf8 = true;
    TextFile::decode(existing, &utf8);
    const QByteArray lineEnd = existing.contains("\r\n") ? QByteArray("\r\n") : QByteArray("\n");
    QByteArray out;
    if (!existing.isEmpty() && !existing.endsWith('\n'))
        out += lineEnd;
    const QString line = formatLine(entry);
    out += (utf8 ? line.toUtf8() : TextFile::encodeWindows1252(line)) + lineEnd;

    QFile f(path);
    if (!f.open(QIODevice::Append) || f.write(out) != out.size() || !f.flush()) {
        if (error)
            *error = fileError(f);
        return false;
    }
    return true;
}

} // namespace tarvex::StockTypes
