#include "TemplateDocument.h"

#include "care/StudCopy.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QScopeGuard>

#include <pugixml.hpp>
#include <zip.h>

#include <deque>
#include <filesystem>
#include <map>
#include <vector>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

// The largest side of a merged picture: 4 cm, in the units of each format.
constexpr double kPictureCm = 4.0;
constexpr qint64 kEmuPerCm = 360000;

/// The names of the elements a format keeps its text in.
struct Vocabulary
{
    QList<QByteArray> paragraphs; // elements holding one paragraph
    QByteArray text;              // element whose character data is text ("" when any is)
    QList<QByteArray> breaks;     // elements standing for a tab, a space or a line break
    QByteArray box;               // a text frame or text box: a story of its own
    QList<QByteArray> skipped;    // elements whose text is not the document's
};

const Vocabulary kDocx{{"w:p"}, "w:t", {"w:tab", "w:br", "w:cr", "w:ptab"}, "w:txbxContent", {"mc:Fallback"}};
const Vocabulary kOdt{{"text:p", "text:h"},
                      {},
                      {"text:s", "text:tab", "text:line-break"},
                      "draw:text-box",
                      {"office:annotation", "text:note-citation", "text:tracked-changes", "svg:title", "svg:desc"}};

/// One piece of a paragraph's text: the character data it lives in, or none for a tab or
/// break, which no placeholder can run across.
struct Segment
{
    pugi::xml_node data;
    QString text;
};

struct Paragraph
{
    pugi::xml_node node;
    struct Part *part = nullptr;
    QString text;
    std::vector<Segment> segments;
    std::vector<int> segmentOf; // per character of text
    std::vector<int> offsetOf;
};

struct Part
{
    QByteArray name;
    pugi::xml_document xml;
    bool changed = false;
};

QString stringOf(const pugi::char_t *s)
{
    return QString::fromUtf8(s);
}

bool named(const pugi::xml_node &node, const QList<QByteArray> &names)
{
    return names.contains(QByteArray(node.name()));
}

pugi::xml_node firstNamed(pugi::xml_node under, const char *name)
{
    return under.find_node([name](const pugi::xml_node &n) { return QByteArray(n.name()) == name; });
}

void alignFallbacks(pugi::xml_node node)
{
    for (pugi::xml_node child = node.first_child(); child; child = child.next_sibling()) {
        if (QByteArray(child.name()) != "mc:AlternateContent") {
            alignFallbacks(child);
            continue;
        }
        const pugi::xml_node merged = firstNamed(child.child("mc:Choice"), "w:txbxContent");
        pugi::xml_node older = firstNamed(child.child("mc:Fallback"), "w:txbxContent");
        if (!merged || !older)
            continue;
        while (older.first_child())
            older.remove_child(older.first_child());
        for (pugi::xml_node c = merged.first_child(); c; c = c.next_sibling())
            older.append_copy(c);
    }
}

} // namespace

struct TemplateDocument::Impl
{
    QString path;
    Format format = Format::Docx;
    const Vocabulary *words = &kDocx;
    QList<QByteArray> order;                // the package's entries, in their order
    std::map<QByteArray, QByteArray> bytes; // entries as read, or as added
    std::deque<Part> parts;
    std::vector<Paragraph> paragraphs; // every story, in the order placeholders are taken
    int pictures = 0;

    void read(const QString &file);
    Part &parse(const QByteArray &name);
    void collect(Part &part, pugi::xml_node root);
    void collectStory(Part &part, pugi::xml_node root, std::vector<pugi::xml_node> &boxes);
    void segment(Paragraph &p) const;
    void segmentNode(Paragraph &p, pugi::xml_node node) const;
    /// The next occurrence: its paragraph and first and last character.
    bool find(const QString &text, int &paragraph, qsizetype &from, qsizetype &to) const;
    /// Puts value where the characters from..to were; returns the character data that now
    /// ends with the value (so a picture can follow it).
    pugi::xml_node replace(int paragraph, qsizetype from, qsizetype to, const QString &value);
    QByteArray serialized(const Part &part) const;
    QString addPicture(const QString &picturePath, const QByteArray &partName, QSize *size);
    QByteArray relsOf(const QByteArray &partName) const;
};

void TemplateDocument::Impl::read(const QString &file)
{
    const QString notDocument =
        u"The file '%1' is not a Word or OpenDocument text document (.docx or .odt), or it is protected by a "
        u"password."_s.arg(file);
    int error = 0;
    zip_t *zip = zip_open(QFile::encodeName(file).constData(), ZIP_RDONLY, &error);
    if (!zip)
        throw DocumentError(QFileInfo(file).isFile() ? notDocument
                                                     : u"The template '%1' cannot be found."_s.arg(file));
    const auto close = qScopeGuard([zip] { zip_discard(zip); });
    const zip_int64_t entries = zip_get_num_entries(zip, 0);
    for (zip_int64_t i = 0; i < entries; ++i) {
        zip_stat_t stat;
        if (zip_stat_index(zip, zip_uint64_t(i), 0, &stat) != 0)
            throw DocumentError(notDocument);
        zip_file_t *entry = zip_fopen_index(zip, zip_uint64_t(i), 0);
        if (!entry)
            throw DocumentError(notDocument);
        QByteArray data(qsizetype(stat.size), Qt::Uninitialized);
        const zip_int64_t got = zip_fread(entry, data.data(), stat.size);
        zip_fclose(entry);
        if (got != zip_int64_t(stat.size))
            throw DocumentError(notDocument);
        order << QByteArray(stat.name);
        bytes[stat.name] = data;
    }
    if (bytes.count("word/document.xml")) {
        format = Format::Docx;
        words = &kDocx;
    } else if (bytes.count("content.xml") && bytes.count("mimetype") &&
               bytes["mimetype"].startsWith("application/vnd.oasis.opendocument.text")) {
        format = Format::Odt;
        words = &kOdt;
    } else {
        throw DocumentError(notDocument);
    }
}

Part &TemplateDocument::Impl::parse(const QByteArray &name)
{
    Part &part = parts.emplace_back();
    part.name = name;
    const QByteArray &data = bytes[name];
    const pugi::xml_parse_result result =
        part.xml.load_buffer(data.constData(), size_t(data.size()),
                             pugi::parse_default | pugi::parse_ws_pcdata | pugi::parse_declaration, pugi::encoding_utf8);
    if (!result)
        throw DocumentError(u"The template '%1' is damaged: its part %2 cannot be read (%3)."_s.arg(
            path, QString::fromUtf8(name), QString::fromUtf8(result.description())));
    return part;
}

void TemplateDocument::Impl::collectStory(Part &part, pugi::xml_node root, std::vector<pugi::xml_node> &boxes)
{
    for (pugi::xml_node child = root.first_child(); child; child = child.next_sibling()) {
        if (child.type() != pugi::node_element)
            continue;
        if (QByteArray(child.name()) == words->box) {
            boxes.push_back(child);
            continue;
        }
        if (named(child, words->skipped))
            continue;
        if (named(child, words->paragraphs)) {
            Paragraph p;
            p.node = child;
            p.part = &part;
            paragraphs.push_back(std::move(p));
        }
        // A paragraph may hold a frame or box, whose paragraphs are a story of their own.
        collectStory(part, child, boxes);
    }
}

void TemplateDocument::Impl::collect(Part &part, pugi::xml_node root)
{
    // The text of the part itself first, then each of its frames and boxes in turn.
    std::vector<pugi::xml_node> boxes;
    collectStory(part, root, boxes);
    for (std::size_t i = 0; i < boxes.size(); ++i)
        collectStory(part, boxes[i], boxes);
}

void TemplateDocument::Impl::segmentNode(Paragraph &p, pugi::xml_node node) const
{
    for (pugi::xml_node child = node.first_child(); child; child = child.next_sibling()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            if (words->text.isEmpty() || QByteArray(node.name()) == words->text)
                p.segments.push_back({child, stringOf(child.value())});
            continue;
        }
        if (child.type() != pugi::node_element)
            continue;
        const QByteArray name(child.name());
        if (name == words->box || named(child, words->skipped) || named(child, words->paragraphs))
            continue;
        if (named(child, words->breaks)) {
            p.segments.push_back({pugi::xml_node(), u"\t"_s});
            continue;
        }
        segmentNode(p, child);
    }
}

void TemplateDocument::Impl::segment(Paragraph &p) const
{
    p.segments.clear();
    segmentNode(p, p.node);
    p.text.clear();
    p.segmentOf.clear();
    p.offsetOf.clear();
    for (int s = 0; s < int(p.segments.size()); ++s) {
        const QString &t = p.segments[std::size_t(s)].text;
        p.text += t;
        for (int i = 0; i < t.size(); ++i) {
            p.segmentOf.push_back(s);
            p.offsetOf.push_back(i);
        }
    }
}

bool TemplateDocument::Impl::find(const QString &text, int &paragraph, qsizetype &from, qsizetype &to) const
{
    if (text.isEmpty())
        return false;
    for (int i = 0; i < int(paragraphs.size()); ++i) {
        const Paragraph &p = paragraphs[std::size_t(i)];
        qsizetype at = 0;
        while ((at = p.text.indexOf(text, at, Qt::CaseInsensitive)) >= 0) {
            const qsizetype end = at + text.size();
            // A whole placeholder: "Gen1.Id" is not the start of "Gen1.Id2".
            if (end < p.text.size() && p.text.at(end).isLetterOrNumber()) {
                ++at;
                continue;
            }
            paragraph = i;
            from = at;
            to = end - 1;
            return true;
        }
    }
    return false;
}

pugi::xml_node TemplateDocument::Impl::replace(int paragraph, qsizetype from, qsizetype to, const QString &value)
{
    Paragraph &p = paragraphs[std::size_t(paragraph)];
    const int first = p.segmentOf[std::size_t(from)];
    const int last = p.segmentOf[std::size_t(to)];
    const int start = p.offsetOf[std::size_t(from)];
    const int end = p.offsetOf[std::size_t(to)];
    for (int s = first; s <= last; ++s) {
        Segment &seg = p.segments[std::size_t(s)];
        QString now;
        if (s == first)
            now = seg.text.left(start) + value + (s == last ? seg.text.mid(end + 1) : QString());
        else if (s == last)
            now = seg.text.mid(end + 1);
        seg.data.set_value(now.toUtf8().constData());
        // Word drops the blanks at the ends of a text unless told to keep them.
        if (format == Format::Docx) {
            pugi::xml_node t = seg.data.parent();
            if (!t.attribute("xml:space"))
                t.append_attribute("xml:space") = "preserve";
        }
    }
    p.part->changed = true;
    pugi::xml_node kept = p.segments[std::size_t(first)].data;
    segment(p);
    return kept;
}

QByteArray TemplateDocument::Impl::serialized(const Part &part) const
{
    struct Writer : pugi::xml_writer
    {
        QByteArray out;
        void write(const void *data, size_t size) override { out.append(static_cast<const char *>(data), qsizetype(size)); }
    } writer;
    part.xml.save(writer, "", pugi::format_raw, pugi::encoding_utf8);
    return writer.out;
}

QByteArray TemplateDocument::Impl::relsOf(const QByteArray &partName) const
{
    const qsizetype slash = partName.lastIndexOf('/');
    return partName.left(slash + 1) + "_rels/" + partName.mid(slash + 1) + ".rels";
}

QString TemplateDocument::Impl::addPicture(const QString &picturePath, const QByteArray &partName, QSize *size)
{
    QImageReader reader(picturePath);
    reader.setAutoTransform(true);
    QImage image = reader.read();
    if (image.isNull())
        return {};
    // Kept as it was when the word processors all read it, else as PNG.
    QByteArray data;
    QByteArray extension = reader.format().toLower();
    if (extension == "jpg")
        extension = "jpeg";
    const bool asItIs = (extension == "jpeg" || extension == "png" || extension == "gif") &&
                        reader.transformation() == QImageIOHandler::TransformationNone;
    if (asItIs) {
        QFile file(picturePath);
        if (!file.open(QIODevice::ReadOnly))
            return {};
        data = file.readAll();
    } else {
        QBuffer buffer(&data);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "PNG");
        extension = "png";
    }
    *size = image.size();
    ++pictures;
    const QByteArray mediaType = "image/" + extension;
    if (format == Format::Docx) {
        const QByteArray target = "media/tarvex_picture" + QByteArray::number(pictures) + '.' + extension;
        bytes["word/" + target] = data;
        order << "word/" + target;
        // The part's relationships: the picture is one of them.
        const QByteArray relsName = relsOf(partName);
        Part *rels = nullptr;
        for (Part &part : parts)
            if (part.name == relsName)
                rels = &part;
        if (!rels) {
            if (!bytes.count(relsName)) {
                bytes[relsName] = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>"
                                  "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"/>";
                order << relsName;
            }
            rels = &parse(relsName);
        }
        const QString id = u"rIdTarvex%1"_s.arg(pictures);
        pugi::xml_node relation = rels->xml.child("Relationships").append_child("Relationship");
        relation.append_attribute("Id") = id.toUtf8().constData();
        relation.append_attribute("Type") = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/image";
        relation.append_attribute("Target") = target.constData();
        rels->changed = true;
        // The package says what kind of file the picture is.
        Part *types = nullptr;
        for (Part &part : parts)
            if (part.name == "[Content_Types].xml")
                types = &part;
        if (!types)
            types = &parse("[Content_Types].xml");
        pugi::xml_node root = types->xml.child("Types");
        bool known = false;
        for (pugi::xml_node d : root.children("Default"))
            known = known || QByteArray(d.attribute("Extension").value()).toLower() == extension;
        if (!known) {
            pugi::xml_node d = root.prepend_child("Default");
            d.append_attribute("Extension") = extension.constData();
            d.append_attribute("ContentType") = mediaType.constData();
            types->changed = true;
        }
        return id;
    }
    const QByteArray target = "Pictures/tarvex_picture" + QByteArray::number(pictures) + '.' + extension;
    bytes[target] = data;
    order << target;
    Part *manifest = nullptr;
    for (Part &part : parts)
        if (part.name == "META-INF/manifest.xml")
            manifest = &part;
    if (!manifest && bytes.count("META-INF/manifest.xml"))
        manifest = &parse("META-INF/manifest.xml");
    if (manifest) {
        pugi::xml_node entry = manifest->xml.child("manifest:manifest").append_child("manifest:file-entry");
        entry.append_attribute("manifest:full-path") = target.constData();
        entry.append_attribute("manifest:media-type") = mediaType.constData();
        manifest->changed = true;
    }
    return QString::fromUtf8(target);
}

TemplateDocument::TemplateDocument() : d(std::make_unique<Impl>()) {}
TemplateDocument::~TemplateDocument() = default;

std::unique_ptr<TemplateDocument> TemplateDocument::open(const QString &path)
{
    std::unique_ptr<TemplateDocument> doc(new TemplateDocument);
    Impl &d = *doc->d;
    d.path = path;
    d.read(path);
    if (d.format == Format::Docx) {
        Part &main = d.parse("word/document.xml");
        d.collect(main, main.xml.document_element());
        // Headers, then footers, each in the order of their parts.
        for (const char *kind : {"word/header", "word/footer"}) {
            for (const QByteArray &name : d.order) {
                if (name.startsWith(kind) && name.endsWith(".xml") && !name.contains("/_rels/")) {
                    Part &part = d.parse(name);
                    d.collect(part, part.xml.document_element());
                }
            }
        }
    } else {
        Part &content = d.parse("content.xml");
        d.collect(content, content.xml.document_element().child("office:body"));
        // Headers and footers live with the page styles.
        if (d.bytes.count("styles.xml")) {
            Part &styles = d.parse("styles.xml");
            d.collect(styles, styles.xml.document_element().child("office:master-styles"));
        }
    }
    for (Paragraph &p : d.paragraphs)
        d.segment(p);
    return doc;
}

TemplateDocument::Format TemplateDocument::format() const
{
    return d->format;
}

bool TemplateDocument::contains(const QString &text) const
{
    int paragraph = 0;
    qsizetype from = 0, to = 0;
    return d->find(text, paragraph, from, to);
}

bool TemplateDocument::replaceNext(const QString &text, const QString &value)
{
    int paragraph = 0;
    qsizetype from = 0, to = 0;
    if (!d->find(text, paragraph, from, to))
        return false;
    d->replace(paragraph, from, to, value);
    return true;
}

bool TemplateDocument::pictureNext(const QString &text, const QString &picturePath)
{
    int paragraph = 0;
    qsizetype from = 0, to = 0;
    if (!d->find(text, paragraph, from, to))
        return false;
    Part *part = d->paragraphs[std::size_t(paragraph)].part;
    const qsizetype start = d->paragraphs[std::size_t(paragraph)].offsetOf[std::size_t(from)];
    // The text before the placeholder stays where it was, the picture follows it, and the
    // text after it goes on after the picture.
    pugi::xml_node before = d->replace(paragraph, from, to, QString());
    QSize size;
    const QString picture = picturePath.isEmpty() ? QString() : d->addPicture(picturePath, part->name, &size);
    const QString text_ = stringOf(before.value());
    if (picture.isEmpty()) {
        before.set_value((text_.left(start) + u' ' + text_.mid(start)).toUtf8().constData());
        d->segment(d->paragraphs[std::size_t(paragraph)]);
        return true;
    }
    const double longest = std::max(size.width(), size.height());
    const double widthCm = kPictureCm * size.width() / longest;
    const double heightCm = kPictureCm * size.height() / longest;
    before.set_value(text_.left(start).toUtf8().constData());
    const QString after = text_.mid(start);
    pugi::xml_document snippet;
    if (d->format == Format::Docx) {
        const qint64 cx = qint64(widthCm * kEmuPerCm);
        const qint64 cy = qint64(heightCm * kEmuPerCm);
        const QString xml =
            u"<w:r xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\"><w:drawing>"
            u"<wp:inline xmlns:wp=\"http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing\" "
            u"distT=\"0\" distB=\"0\" distL=\"0\" distR=\"0\"><wp:extent cx=\"%1\" cy=\"%2\"/>"
            u"<wp:docPr id=\"%3\" name=\"Tarvex Picture %4\"/>"
            u"<a:graphic xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\">"
            u"<a:graphicData uri=\"http://schemas.openxmlformats.org/drawingml/2006/picture\">"
            u"<pic:pic xmlns:pic=\"http://schemas.openxmlformats.org/drawingml/2006/picture\">"
            u"<pic:nvPicPr><pic:cNvPr id=\"%3\" name=\"Tarvex Picture %4\"/><pic:cNvPicPr/></pic:nvPicPr>"
            u"<pic:blipFill><a:blip xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\" "
            u"r:embed=\"%5\"/><a:stretch><a:fillRect/></a:stretch></pic:blipFill>"
            u"<pic:spPr><a:xfrm><a:off x=\"0\" y=\"0\"/><a:ext cx=\"%1\" cy=\"%2\"/></a:xfrm>"
            u"<a:prstGeom prst=\"rect\"><a:avLst/></a:prstGeom></pic:spPr></pic:pic></a:graphicData></a:graphic>"
            u"</wp:inline></w:drawing></w:r>"_s.arg(cx)
                .arg(cy)
                .arg(30000 + d->pictures)
                .arg(d->pictures)
                .arg(picture);
        snippet.load_string(xml.toUtf8().constData());
        // The run of the placeholder is split round the picture, each half keeping its look.
        pugi::xml_node run = before.parent().parent();
        pugi::xml_node drawing = run.parent().insert_copy_after(snippet.first_child(), run);
        drawing.remove_attribute("xmlns:w");
        if (!after.isEmpty()) {
            pugi::xml_node rest = run.parent().insert_copy_after(run, drawing);
            for (pugi::xml_node c = rest.first_child(); c;) {
                const pugi::xml_node next = c.next_sibling();
                if (QByteArray(c.name()) != "w:rPr")
                    rest.remove_child(c);
                c = next;
            }
            pugi::xml_node t = rest.append_child("w:t");
            t.append_attribute("xml:space") = "preserve";
            t.append_child(pugi::node_pcdata).set_value(after.toUtf8().constData());
        }
    } else {
        const QString xml =
            u"<draw:frame xmlns:draw=\"urn:oasis:names:tc:opendocument:xmlns:drawing:1.0\" "
            u"xmlns:svg=\"urn:oasis:names:tc:opendocument:xmlns:svg-compatible:1.0\" "
            u"xmlns:text=\"urn:oasis:names:tc:opendocument:xmlns:text:1.0\" "
            u"xmlns:xlink=\"http://www.w3.org/1999/xlink\" draw:name=\"Tarvex Picture %1\" "
            u"text:anchor-type=\"as-char\" svg:width=\"%2cm\" svg:height=\"%3cm\" draw:z-index=\"0\">"
            u"<draw:image xlink:href=\"%4\" xlink:type=\"simple\" xlink:show=\"embed\" xlink:actuate=\"onLoad\"/>"
            u"</draw:frame>"_s.arg(d->pictures)
                .arg(widthCm, 0, 'f', 3)
                .arg(heightCm, 0, 'f', 3)
                .arg(picture);
        snippet.load_string(xml.toUtf8().constData());
        pugi::xml_node frame = before.parent().insert_copy_after(snippet.first_child(), before);
        if (!after.isEmpty())
            before.parent().insert_child_after(pugi::node_pcdata, frame).set_value(after.toUtf8().constData());
    }
    d->segment(d->paragraphs[std::size_t(paragraph)]);
    return true;
}

void TemplateDocument::save(const QString &path)
{
    // Word keeps a second, older copy of each text box for programs that cannot read the
    // first; it is brought in line with the merged one.
    if (d->format == Format::Docx)
        for (Part &part : d->parts)
            if (part.changed)
                alignFallbacks(part.xml);
    const QString partial = StudCopy::partialName(path);
    const auto cannot = [&](const QString &why) {
        QFile::remove(partial);
        return DocumentError(u"The merged document could not be saved as '%1' (%2)."_s.arg(path, why));
    };
    // Parts changed by the merge are written anew; the rest go as they came.
    std::map<QByteArray, QByteArray> written;
    for (const Part &part : d->parts)
        if (part.changed)
            written[part.name] = d->serialized(part);
    int error = 0;
    zip_t *zip = zip_open(QFile::encodeName(partial).constData(), ZIP_CREATE | ZIP_TRUNCATE, &error);
    if (!zip) {
        zip_error_t why;
        zip_error_init_with_code(&why, error);
        const QString reason = QString::fromUtf8(zip_error_strerror(&why));
        zip_error_fini(&why);
        throw cannot(reason);
    }
    for (const QByteArray &name : d->order) {
        const auto changed = written.find(name);
        const QByteArray &data = changed != written.end() ? changed->second : d->bytes.at(name);
        zip_source_t *source = zip_source_buffer(zip, data.constData(), zip_uint64_t(data.size()), 0);
        const zip_int64_t index =
            source ? zip_file_add(zip, name.constData(), source, ZIP_FL_OVERWRITE | ZIP_FL_ENC_UTF_8) : -1;
        if (index < 0) {
            if (source)
                zip_source_free(source);
            const QString reason = QString::fromUtf8(zip_strerror(zip));
            zip_discard(zip);
            throw cannot(reason);
        }
        // An OpenDocument names its kind first, uncompressed, for the programs that look.
        if (name == "mimetype")
            zip_set_file_compression(zip, zip_uint64_t(index), ZIP_CM_STORE, 0);
    }
    if (zip_close(zip) != 0) {
        const QString reason = QString::fromUtf8(zip_strerror(zip));
        zip_discard(zip);
        throw cannot(reason);
    }
    std::error_code renamed;
    std::filesystem::rename(QFile::encodeName(partial).toStdString(), QFile::encodeName(path).toStdString(), renamed);
    if (renamed)
        throw cannot(QString::fromStdString(renamed.message()));
}

} // namespace tarvex
