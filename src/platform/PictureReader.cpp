#include "PictureReader.h"

#include <QFileInfo>
#include <QImageIOHandler>
#include <QImageReader>

using namespace Qt::StringLiterals;

namespace tarvex::PictureReader {

namespace {

// Whether the picture stands on its side in the file, to be turned a quarter when shown.
bool onItsSide(const QImageReader &reader)
{
    return reader.transformation() & QImageIOHandler::TransformationRotate90;
}

// Opens the file's heading. A path that is no file at all is missing; a file that exists
// but that no format reads (a text file named .jpg, a file the breeder may not read) is
// not a picture.
PictureRead heading(QImageReader &reader, const QString &path)
{
    PictureRead r;
    const QFileInfo file(path);
    if (path.isEmpty() || !file.exists() || !file.isFile()) {
        r.found = PictureFound::Missing;
        return r;
    }
    reader.setFileName(path);
    reader.setAutoTransform(true);
    const QSize stored = reader.size();
    if (!stored.isValid() || stored.isEmpty()) {
        r.found = PictureFound::NotAPicture;
        return r;
    }
    r.found = PictureFound::Picture;
    r.size = onItsSide(reader) ? stored.transposed() : stored;
    return r;
}

} // namespace

PictureRead probe(const QString &path)
{
    QImageReader reader;
    return heading(reader, path);
}

PictureRead read(const QString &path, const QSize &box)
{
    QImageReader reader;
    PictureRead r = heading(reader, path);
    if (r.found != PictureFound::Picture)
        return r;
    if (box.isValid() && !box.isEmpty() && (r.size.width() > box.width() || r.size.height() > box.height())) {
        // The scaled size is the file's own way up: the turn comes after decoding.
        const QSize upright = r.size.scaled(box, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
        reader.setScaledSize(onItsSide(reader) ? upright.transposed() : upright);
    }
    r.image = reader.read();
    if (r.image.isNull()) {
        r.found = QFileInfo::exists(path) ? PictureFound::NotAPicture : PictureFound::Missing;
        r.size = QSize();
    }
    return r;
}

QStringList patterns()
{
    const QList<QByteArray> formats = QImageReader::supportedImageFormats();
    QStringList lower, upper;
    const std::pair<const char *, QStringList> kinds[] = {{"jpeg", {u"jpg"_s, u"jpeg"_s}},
                                                          {"png", {u"png"_s}},
                                                          {"bmp", {u"bmp"_s}},
                                                          {"gif", {u"gif"_s}},
                                                          {"webp", {u"webp"_s}}};
    for (const auto &[format, suffixes] : kinds) {
        if (!formats.contains(QByteArray(format)))
            continue;
        for (const QString &suffix : suffixes) {
            lower << u"*."_s + suffix;
            upper << u"*."_s + suffix.toUpper();
        }
    }
    return lower + upper;
}

QString fileFilter()
{
    return u"Images (%1)"_s.arg(patterns().join(u' '));
}

} // namespace tarvex::PictureReader
