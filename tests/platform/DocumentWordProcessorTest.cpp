// The machine's word processor for merges: the program's own for .docx and .odt, LibreOffice
// where it is installed for the other formats; a closed document says so.
#include "platform/DocumentWordProcessor.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

QString fixture(const QString &name)
{
    return QStringLiteral(TARVEX_SOURCE_DIR) + u"/tests/fixtures/templates/"_s + name;
}

TEST(DocumentWordProcessor, SavesInItsOwnFormatAndOthersOnlyThroughLibreOffice)
{
    QTemporaryDir dir;
    DocumentWordProcessor word;
    word.open(fixture(u"pedigree.odt"_s));
    EXPECT_EQ(word.fileTypes().value(0), u"OpenDocument Text (*.odt)") << "the template's own format first";
    EXPECT_TRUE(word.replace(u"Gen0.Name"_s, u"Thistle"_s));
    word.save(dir.filePath(u"merged.odt"_s), u"odt"_s);
    EXPECT_TRUE(QFile::exists(dir.filePath(u"merged.odt"_s)));

    const QString pdf = dir.filePath(u"merged.pdf"_s);
    if (DocumentWordProcessor::officeSuite().isEmpty()) {
        EXPECT_EQ(word.fileTypes().size(), 2);
        try {
            word.save(pdf, u"pdf"_s);
            ADD_FAILURE() << "saved a PDF with nothing to make it";
        } catch (const WordError &e) {
            EXPECT_EQ(e.number(), WordError::FileAccess);
            EXPECT_EQ(e.description(), u"Saving as .pdf needs LibreOffice, which is not installed.");
        }
    } else {
        EXPECT_TRUE(word.fileTypes().contains(u"PDF Document (*.pdf)"_s));
        word.save(pdf, u"pdf"_s);
        QFile made(pdf);
        ASSERT_TRUE(made.open(QIODevice::ReadOnly));
        EXPECT_TRUE(made.read(5) == "%PDF-");
    }

    // Closed, the document can no longer be printed or saved.
    word.quit();
    try {
        word.print();
        ADD_FAILURE() << "printed a closed document";
    } catch (const WordError &e) {
        EXPECT_TRUE(e.gone());
    }
}

TEST(DocumentWordProcessor, AnOldWordTemplateIsReadThroughLibreOffice)
{
    const QString office = DocumentWordProcessor::officeSuite();
    if (office.isEmpty())
        GTEST_SKIP() << "LibreOffice is not installed";
    QTemporaryDir dir;
    QProcess convert;
    convert.start(office, {u"--headless"_s, u"-env:UserInstallation=file://"_s + dir.filePath(u"profile"_s),
                           u"--convert-to"_s, u"doc"_s, u"--outdir"_s, dir.path(), fixture(u"pedigree.docx"_s)});
    ASSERT_TRUE(convert.waitForFinished(120000));
    const QString doc = dir.filePath(u"pedigree.doc"_s);
    ASSERT_TRUE(QFile::exists(doc));
    DocumentWordProcessor word;
    word.open(doc);
    EXPECT_TRUE(word.find(u"Gen1.Name"_s));
    EXPECT_TRUE(word.replace(u"Gen1.Name"_s, u"Jet"_s));
}

} // namespace
