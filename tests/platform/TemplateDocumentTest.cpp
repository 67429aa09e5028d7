// Filling a breeder's own pedigree template: the placeholders are found where word processors
// keep text (split over runs, in tables, text boxes, headers and footers), in order, and the
// merged copy is a document both kinds of word processor read; the template is never written.
#include "platform/TemplateDocument.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <zip.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

QString fixture(const QString &name)
{
    return QStringLiteral(TARVEX_SOURCE_DIR) + u"/tests/fixtures/templates/"_s + name;
}

/// A part of a saved package, as stored.
QByteArray partOf(const QString &file, const char *name)
{
    int error = 0;
    zip_t *zip = zip_open(QFile::encodeName(file).constData(), ZIP_RDONLY, &error);
    if (!zip)
        return {};
    QByteArray data;
    zip_stat_t stat;
    if (zip_stat(zip, name, 0, &stat) == 0) {
        zip_file_t *entry = zip_fopen(zip, name, 0);
        data.resize(qsizetype(stat.size));
        zip_fread(entry, data.data(), stat.size);
        zip_fclose(entry);
    }
    zip_discard(zip);
    return data;
}

/// The words of a part with its markup taken away, as a reader sees them.
QString wordsOf(const QByteArray &xml)
{
    return QString::fromUtf8(xml).remove(QRegularExpression(u"<[^>]*>"_s));
}

QByteArray digest(const QString &file)
{
    QFile f(file);
    f.open(QIODevice::ReadOnly);
    return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256);
}

struct Layout
{
    const char *suffix;
    const char *body;   // the part with the body text
    const char *header; // the part with the header
    const char *footer;
};

void PrintTo(const Layout &layout, std::ostream *out)
{
    *out << layout.suffix;
}

class TemplateDocumentTest : public ::testing::TestWithParam<Layout>
{
protected:
    QString templ() const { return fixture(u"pedigree"_s + QString::fromLatin1(GetParam().suffix)); }
    QString merged() const { return dir.filePath(u"merged"_s + QString::fromLatin1(GetParam().suffix)); }
    QString body() const { return wordsOf(partOf(merged(), GetParam().body)); }

    QTemporaryDir dir;
};

TEST_P(TemplateDocumentTest, EachReplacementTakesTheNextOccurrenceWhereverTheWordProcessorKeptIt)
{
    const QByteArray before = digest(templ());
    auto doc = TemplateDocument::open(templ());

    // Split over three runs, one of them bold: still one word.
    EXPECT_TRUE(doc->contains(u"Gen0.Name"_s));
    EXPECT_TRUE(doc->replaceNext(u"Gen0.Name"_s, u"Thistle"_s));
    EXPECT_FALSE(doc->replaceNext(u"Gen0.Name"_s, u"Again"_s));
    // Twice in the table: the sire, then the dam; nothing is left for a third.
    EXPECT_TRUE(doc->replaceNext(u"Gen1.Name"_s, u"Jet"_s));
    EXPECT_TRUE(doc->replaceNext(u"gen1.name"_s, u"Sooty"_s)) << "letter case is not compared";
    EXPECT_FALSE(doc->replaceNext(u"Gen1.Name"_s, u"Nobody"_s));
    // Six places for four grandparents: two stay as written.
    for (const QString &name : {u"Ash"_s, u"Bramble"_s, u"Clover"_s, u"Dusk"_s})
        EXPECT_TRUE(doc->replaceNext(u"Gen2.Name"_s, name));
    // "Gen1.Id" is not the start of "Gen1.Id2".
    EXPECT_TRUE(doc->replaceNext(u"Gen1.Id"_s, u"R101"_s));
    EXPECT_TRUE(doc->replaceNext(u"Gen1.Id"_s, u"R102"_s));
    EXPECT_FALSE(doc->replaceNext(u"Gen1.Id"_s, u"R103"_s));
    EXPECT_TRUE(doc->replaceNext(u"Gen0.Colour"_s, u"Black Otter"_s)) << "in the text box";
    EXPECT_TRUE(doc->replaceNext(u"Header.StudName"_s, u"Warren End"_s));
    EXPECT_TRUE(doc->replaceNext(u"Footer.Line"_s, u"Bred with care"_s));
    EXPECT_TRUE(doc->replaceNext(u"Gen0.DOB"_s, QString()));
    doc->save(merged());

    const QString words = body();
    EXPECT_TRUE(words.contains(u"Pedigree of Thistle bred by us")) << words.toStdString();
    EXPECT_TRUE(words.contains(u"Born , colour")) << "an empty field leaves nothing of its place";
    EXPECT_LT(words.indexOf(u"Jet R101"_s), words.indexOf(u"Sooty R102"_s)) << "in the order of the document";
    EXPECT_EQ(words.count(u"Gen2.Name"_s), 2);
    EXPECT_LT(words.indexOf(u"Ash"_s), words.indexOf(u"Dusk"_s));
    EXPECT_EQ(words.count(u"Gen1.Id2"_s), 6);
    EXPECT_TRUE(words.contains(u"Colour: Black Otter"));
    EXPECT_FALSE(words.contains(u"Gen0.Colour")) << "every copy of the text box";
    EXPECT_TRUE(wordsOf(partOf(merged(), GetParam().header)).contains(u"Warren End"));
    EXPECT_TRUE(wordsOf(partOf(merged(), GetParam().footer)).contains(u"Bred with care"));
    EXPECT_EQ(digest(templ()), before) << "the template is never written";

    // The merged copy opens again as a document, with its placeholders gone.
    auto again = TemplateDocument::open(merged());
    EXPECT_FALSE(again->contains(u"Gen1.Name"_s));
    EXPECT_TRUE(again->contains(u"Header.Line1"_s));
}

TEST_P(TemplateDocumentTest, APictureIsEmbeddedInItsPlaceAndAMissingOneLeavesABlank)
{
    QImage photo(60, 30, QImage::Format_RGB32);
    photo.fill(Qt::darkGreen);
    const QString png = dir.filePath(u"thistle.png"_s);
    ASSERT_TRUE(photo.save(png));

    auto doc = TemplateDocument::open(templ());
    EXPECT_TRUE(doc->pictureNext(u"Gen0.Image"_s, png));
    EXPECT_FALSE(doc->pictureNext(u"Gen0.Image"_s, png));
    doc->save(merged());
    EXPECT_TRUE(body().contains(u"Photo:  taken at home")) << body().toStdString();
    const QByteArray xml = partOf(merged(), GetParam().body);
    if (QByteArray(GetParam().suffix) == ".docx") {
        EXPECT_EQ(partOf(merged(), "word/media/tarvex_picture1.png").size(), QFile(png).size());
        EXPECT_TRUE(xml.contains("r:embed=\"rIdTarvex1\""));
        EXPECT_TRUE(partOf(merged(), "word/_rels/document.xml.rels").contains("Target=\"media/tarvex_picture1.png\""));
        EXPECT_TRUE(partOf(merged(), "[Content_Types].xml").contains("Extension=\"png\""));
        // Four centimetres wide, half as high, as the photograph is.
        EXPECT_TRUE(xml.contains("<wp:extent cx=\"1440000\" cy=\"720000\"/>")) << xml.toStdString();
    } else {
        EXPECT_EQ(partOf(merged(), "Pictures/tarvex_picture1.png").size(), QFile(png).size());
        EXPECT_TRUE(xml.contains("xlink:href=\"Pictures/tarvex_picture1.png\""));
        EXPECT_TRUE(xml.contains("svg:width=\"4.000cm\" svg:height=\"2.000cm\""));
        EXPECT_TRUE(partOf(merged(), "META-INF/manifest.xml").contains("Pictures/tarvex_picture1.png"));
        EXPECT_EQ(partOf(merged(), "mimetype"), "application/vnd.oasis.opendocument.text");
    }

    auto gone = TemplateDocument::open(templ());
    EXPECT_TRUE(gone->pictureNext(u"Gen0.Image"_s, dir.filePath(u"moved away.jpg"_s)));
    gone->save(merged());
    EXPECT_TRUE(body().contains(u"Photo:   taken at home")) << body().toStdString();
}

TEST_P(TemplateDocumentTest, ALetterWithNoPlaceholdersIsLeftAsItWas)
{
    const QString letter = fixture(u"letter"_s + QString::fromLatin1(GetParam().suffix));
    auto doc = TemplateDocument::open(letter);
    EXPECT_FALSE(doc->contains(u"Gen"_s + u"0."_s));
    EXPECT_FALSE(doc->replaceNext(u"Header.StudName"_s, u"Warren End"_s));
    doc->save(merged());
    EXPECT_TRUE(body().contains(u"Dear fellow breeder, thank you for the doe."));
}

// Where LibreOffice is installed, the merged copy must open in it and show what was merged:
// it is turned into a PDF and its words read back.
TEST_P(TemplateDocumentTest, AWordProcessorReadsTheMergedCopy)
{
    const QString office = QStandardPaths::findExecutable(u"soffice"_s);
    const QString reader = QStandardPaths::findExecutable(u"pdftotext"_s);
    if (office.isEmpty() || reader.isEmpty())
        GTEST_SKIP() << "LibreOffice or pdftotext is not installed";
    QImage photo(60, 30, QImage::Format_RGB32);
    photo.fill(Qt::darkGreen);
    photo.save(dir.filePath(u"thistle.png"_s));
    auto doc = TemplateDocument::open(templ());
    doc->replaceNext(u"Gen0.Name"_s, u"Thistle"_s);
    doc->replaceNext(u"Gen0.Colour"_s, u"Black Otter"_s);
    doc->replaceNext(u"Header.StudName"_s, u"Warren End"_s);
    doc->pictureNext(u"Gen0.Image"_s, dir.filePath(u"thistle.png"_s));
    doc->save(merged());

    QProcess convert;
    convert.start(office, {u"--headless"_s, u"-env:UserInstallation=file://"_s + dir.filePath(u"profile"_s),
                           u"--convert-to"_s, u"pdf"_s, u"--outdir"_s, dir.path(), merged()});
    ASSERT_TRUE(convert.waitForFinished(120000));
    const QString pdf = dir.filePath(u"merged.pdf"_s);
    ASSERT_TRUE(QFile::exists(pdf)) << convert.readAllStandardError().toStdString();
    QProcess text;
    text.start(reader, {u"-layout"_s, pdf, u"-"_s});
    ASSERT_TRUE(text.waitForFinished(30000));
    const QString words = QString::fromUtf8(text.readAllStandardOutput());
    for (const QString &word : {u"Pedigree of Thistle bred by us"_s, u"Black Otter"_s, u"Warren End"_s})
        EXPECT_TRUE(words.contains(word)) << word.toStdString() << " in\n" << words.toStdString();
}

INSTANTIATE_TEST_SUITE_P(BothFormats, TemplateDocumentTest,
                         ::testing::Values(Layout{".docx", "word/document.xml", "word/header1.xml",
                                                  "word/footer1.xml"},
                                           Layout{".odt", "content.xml", "styles.xml", "styles.xml"}),
                         [](const auto &info) { return std::string(info.param.suffix + 1); });

TEST(TemplateDocumentFaults, WhatIsNoDocumentIsToldAndNothingIsLeftBehind)
{
    QTemporaryDir dir;
    const auto refusal = [](const QString &file) {
        try {
            TemplateDocument::open(file);
        } catch (const DocumentError &e) {
            return e.message();
        }
        return QString();
    };
    const QString bytes = dir.filePath(u"noise.docx"_s);
    {
        QFile f(bytes);
        f.open(QIODevice::WriteOnly);
        f.write(QByteArray(5000, '\x7f'));
    }
    EXPECT_EQ(refusal(bytes), u"The file '"_s + bytes +
                                  u"' is not a Word or OpenDocument text document (.docx or .odt), or it is "
                                  u"protected by a password."_s);
    // A document protected by a password is kept encrypted in a compound file, not a zip.
    const QString locked = dir.filePath(u"locked.docx"_s);
    {
        QFile f(locked);
        f.open(QIODevice::WriteOnly);
        f.write(QByteArray("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8) + QByteArray(4088, '\0'));
    }
    EXPECT_TRUE(refusal(locked).endsWith(u"or it is protected by a password."_s));
    // A zip of other things.
    const QString zipped = dir.filePath(u"photos.odt"_s);
    {
        int error = 0;
        zip_t *zip = zip_open(QFile::encodeName(zipped).constData(), ZIP_CREATE, &error);
        const char text[] = "not a document";
        zip_file_add(zip, "notes.txt", zip_source_buffer(zip, text, sizeof text - 1, 0), 0);
        zip_close(zip);
    }
    EXPECT_TRUE(refusal(zipped).startsWith(u"The file '"_s + zipped + u"' is not a Word"_s));
    EXPECT_EQ(refusal(dir.filePath(u"gone.docx"_s)), u"The template '"_s + dir.filePath(u"gone.docx"_s) +
                                                       u"' cannot be found."_s);

    auto doc = TemplateDocument::open(fixture(u"letter.docx"_s));
    const QString nowhere = dir.filePath(u"no such folder/merged.docx"_s);
    try {
        doc->save(nowhere);
        ADD_FAILURE() << "saved into a folder that is not there";
    } catch (const DocumentError &e) {
        EXPECT_TRUE(e.message().startsWith(u"The merged document could not be saved as '"_s + nowhere + u"' ("_s))
            << e.message().toStdString();
    }
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 3)
        << "nothing half-written is left";
}

} // namespace
