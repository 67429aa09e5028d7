// Lists copied to spreadsheets: the files are real .xlsx workbooks, read back as any
// spreadsheet program would read them.
#include "support/ScriptedPrompts.h"

#include "platform/XlsxSheetWriter.h"
#include "reporting/ListSheet.h"
#include "ui/ListSort.h"
#include "ui/FileChooser.h"
#include "ui/ListToSheet.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHeaderView>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QUrl>

#include <gtest/gtest.h>
#include <pugixml.hpp>
#include <zip.h>

#include <csignal>
#include <map>
#include <sys/resource.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

QByteArray zipEntry(const QString &path, const char *name)
{
    int error = 0;
    zip_t *zip = zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY, &error);
    if (!zip)
        return {};
    QByteArray data;
    zip_stat_t stat;
    zip_stat_init(&stat);
    if (zip_stat(zip, name, 0, &stat) == 0) {
        if (zip_file_t *file = zip_fopen(zip, name, 0)) {
            data.resize(qsizetype(stat.size));
            if (zip_fread(file, data.data(), stat.size) != zip_int64_t(stat.size))
                data.clear();
            zip_fclose(file);
        }
    }
    zip_discard(zip);
    return data;
}

struct CellLook
{
    bool bold = false;
    double points = 0;
    QString pattern;
    QString fill;
};

/// One workbook as a spreadsheet program reads it: the first sheet's cells by reference
/// ("A1"), their looks, and the widths set on columns.
class Workbook
{
public:
    explicit Workbook(const QString &path)
    {
        const QByteArray sheetXml = zipEntry(path, "xl/worksheets/sheet1.xml");
        const QByteArray stringsXml = zipEntry(path, "xl/sharedStrings.xml");
        const QByteArray stylesXml = zipEntry(path, "xl/styles.xml");
        valid = !sheetXml.isEmpty() && !stylesXml.isEmpty() &&
                m_sheet.load_buffer(sheetXml.constData(), sheetXml.size()) &&
                m_styles.load_buffer(stylesXml.constData(), stylesXml.size());
        pugi::xml_document strings;
        if (!stringsXml.isEmpty())
            strings.load_buffer(stringsXml.constData(), stringsXml.size());
        QStringList shared;
        for (pugi::xml_node si : strings.child("sst").children("si"))
            shared << joinedText(si);
        const pugi::xml_node root = m_sheet.child("worksheet");
        for (pugi::xml_node row : root.child("sheetData").children("row")) {
            ++rowCount;
            for (pugi::xml_node c : row.children("c")) {
                const QString ref = QString::fromUtf8(c.attribute("r").value());
                const QString type = QString::fromUtf8(c.attribute("t").value());
                QString text;
                if (type == u"s")
                    text = shared.value(c.child("v").text().as_int(-1));
                else if (type == u"inlineStr")
                    text = joinedText(c.child("is"));
                else
                    text = QString::fromUtf8(c.child("v").text().get());
                cells[ref] = text;
                m_style[ref] = c.attribute("s").as_int(0);
            }
        }
        for (pugi::xml_node col : root.child("cols").children("col"))
            for (int n = col.attribute("min").as_int(); n <= col.attribute("max").as_int(); ++n)
                widths[n] = col.attribute("width").as_double();
    }

    QString text(const QString &ref) const
    {
        const auto it = cells.find(ref);
        return it == cells.end() ? QString() : it->second;
    }

    CellLook look(const QString &ref) const
    {
        const pugi::xml_node styles = m_styles.child("styleSheet");
        const auto nth = [](pugi::xml_node parent, const char *name, int index) {
            pugi::xml_node n = parent.child(name);
            for (int i = 0; i < index && n; ++i)
                n = n.next_sibling(name);
            return n;
        };
        const auto it = m_style.find(ref);
        const pugi::xml_node xf = nth(styles.child("cellXfs"), "xf", it == m_style.end() ? 0 : it->second);
        const pugi::xml_node font = nth(styles.child("fonts"), "font", xf.attribute("fontId").as_int());
        const pugi::xml_node fill =
            nth(styles.child("fills"), "fill", xf.attribute("fillId").as_int()).child("patternFill");
        CellLook look;
        look.bold = bool(font.child("b"));
        look.points = font.child("sz").attribute("val").as_double();
        look.pattern = QString::fromUtf8(fill.attribute("patternType").value());
        look.fill = QString::fromUtf8(fill.child("fgColor").attribute("rgb").value());
        return look;
    }

    bool valid = false;
    int rowCount = 0;
    std::map<QString, QString> cells;
    std::map<int, double> widths; // by column number, A = 1

private:
    static QString joinedText(pugi::xml_node node)
    {
        QString text;
        for (pugi::xpath_node t : node.select_nodes(".//t"))
            text += QString::fromUtf8(t.node().text().get());
        return text;
    }

    pugi::xml_document m_sheet, m_styles;
    std::map<QString, int> m_style;
};

QStringList row(std::initializer_list<const char16_t *> texts)
{
    QStringList r;
    for (const char16_t *t : texts)
        r << QString::fromUtf16(t);
    return r;
}

ListSheet stockList()
{
    ListSheet list;
    list.title = u"Search Results"_s;
    list.headings = row({u"Name v", u"Sex", u"Colour"});
    list.rows = {row({u"Ash", u"Buck", u"Black"}), row({u"Briar", u"Doe", u""}),
                 row({u"Clover", u"Doe", u"Fawn"})};
    return list;
}

class ListSheetFile : public ::testing::Test
{
protected:
    QString pathOf(const QString &name) const { return QDir(dir.path()).filePath(name); }

    std::optional<QString> write(const ListSheet &list, const QString &name = u"list.xlsx"_s)
    {
        XlsxSheetWriter writer;
        return writeListSheet(list, writer, pathOf(name));
    }

    QStringList leftInFolder() const
    {
        return QDir(dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    QTemporaryDir dir;
};

TEST_F(ListSheetFile, TheTableStandsBelowTheTitleOrFromRowOne)
{
    ASSERT_EQ(write(stockList()), std::nullopt);
    const Workbook book(pathOf(u"list.xlsx"_s));
    ASSERT_TRUE(book.valid);
    EXPECT_EQ(book.text(u"A1"_s), u"Search Results");
    EXPECT_EQ(book.cells.count(u"A2"_s), 0u) << "row 2 stays empty";
    EXPECT_EQ(book.text(u"A3"_s), u"Name v") << "the sort mark goes with the heading";
    EXPECT_EQ(book.text(u"C3"_s), u"Colour");
    EXPECT_EQ(book.text(u"A4"_s), u"Ash");
    EXPECT_EQ(book.text(u"C4"_s), u"Black");
    EXPECT_EQ(book.text(u"B5"_s), u"Doe");
    EXPECT_EQ(book.text(u"C5"_s), QString());
    EXPECT_EQ(book.text(u"C6"_s), u"Fawn");
    EXPECT_EQ(book.rowCount, 5) << "title, headings and three rows";
    EXPECT_EQ(leftInFolder(), QStringList({u"list.xlsx"_s})) << "no part-written file stays";

    ListSheet untitled = stockList();
    untitled.title.clear();
    ASSERT_EQ(write(untitled, u"untitled.xlsx"_s), std::nullopt);
    const Workbook plain(pathOf(u"untitled.xlsx"_s));
    EXPECT_EQ(plain.text(u"A1"_s), u"Name v");
    EXPECT_EQ(plain.text(u"A2"_s), u"Ash");
    EXPECT_EQ(plain.text(u"A4"_s), u"Clover");
    EXPECT_EQ(plain.rowCount, 4);

    ListSheet empty = stockList();
    empty.rows.clear();
    ASSERT_EQ(write(empty, u"empty.xlsx"_s), std::nullopt);
    const Workbook headingsOnly(pathOf(u"empty.xlsx"_s));
    EXPECT_EQ(headingsOnly.rowCount, 2) << "the title and the headings only";
    EXPECT_EQ(headingsOnly.text(u"C3"_s), u"Colour");
    EXPECT_EQ(headingsOnly.cells.size(), 4u);
}

TEST_F(ListSheetFile, HeadingsAreBoldOnAFillAndTheTitleLargerAndBold)
{
    ASSERT_EQ(write(stockList()), std::nullopt);
    const Workbook book(pathOf(u"list.xlsx"_s));
    const CellLook title = book.look(u"A1"_s), heading = book.look(u"B3"_s), cell = book.look(u"B4"_s);
    EXPECT_TRUE(title.bold);
    EXPECT_GT(title.points, cell.points) << "the title is larger than the rest";
    EXPECT_EQ(title.pattern, u"none");
    for (const QString &ref : {u"A3"_s, u"B3"_s, u"C3"_s}) {
        const CellLook h = book.look(ref);
        EXPECT_TRUE(h.bold) << ref.toStdString();
        EXPECT_EQ(h.pattern, u"solid") << ref.toStdString();
        EXPECT_FALSE(h.fill.isEmpty()) << ref.toStdString();
    }
    EXPECT_EQ(heading.points, cell.points);
    EXPECT_FALSE(cell.bold);
    EXPECT_EQ(cell.pattern, u"none");
}

TEST_F(ListSheetFile, ColumnsAToZAreFittedToTheirTextsAndTheRestKeepTheStandardWidth)
{
    ListSheet list;
    const QString longText = QString(200, u'x');
    QStringList first;
    for (int c = 0; c < 30; ++c) {
        list.headings << u"H%1"_s.arg(c + 1);
        first << u"r1c%1"_s.arg(c + 1);
    }
    first[1] = longText;
    first[2] = u"Zoë Ñandú"_s;
    first[3] = u"日本の兎"_s;
    first[27] = longText; // beyond Z: no width of its own
    list.rows = {first, QStringList(30, QString())};
    ASSERT_EQ(write(list), std::nullopt);
    const Workbook book(pathOf(u"list.xlsx"_s));

    EXPECT_EQ(book.text(u"AD1"_s), u"H30");
    EXPECT_EQ(book.text(u"B2"_s), longText);
    EXPECT_EQ(book.text(u"C2"_s), u"Zoë Ñandú");
    EXPECT_EQ(book.text(u"D2"_s), u"日本の兎");
    EXPECT_EQ(book.text(u"AB2"_s), longText);

    ASSERT_EQ(book.widths.size(), 26u) << "only A to Z get a width";
    EXPECT_EQ(book.widths.begin()->first, 1);
    EXPECT_EQ(book.widths.rbegin()->first, 26);
    EXPECT_GE(book.widths.at(2), 200) << "the 200-character text fits";
    EXPECT_LE(book.widths.at(2), 210);
    EXPECT_LT(book.widths.at(1), 10) << "a short column is not left wide";
    EXPECT_GE(book.widths.at(3), 9) << "9 characters, accents included";
    EXPECT_LT(book.widths.at(3), 14);
    EXPECT_GE(book.widths.at(4), 8) << "wide characters take two places each";
}

TEST_F(ListSheetFile, TheTitleWidensColumnAAndAnEmptyColumnKeepsTheStandardWidth)
{
    ListSheet list;
    list.title = u"Testmate Results : Jet and Ivory"_s;
    list.headings = row({u"", u"Sex"});
    list.rows = {row({u"", u"Doe"})};
    ASSERT_EQ(write(list), std::nullopt);
    const Workbook book(pathOf(u"list.xlsx"_s));
    EXPECT_GT(book.widths.at(1), 32) << "as a spreadsheet program fits a column, the title counts";
    EXPECT_EQ(book.widths.count(2), 1u);
    EXPECT_EQ(book.widths.count(3), 0u);
}

TEST_F(ListSheetFile, AnEarlierFileOfTheNameIsReplacedWhole)
{
    ASSERT_EQ(write(stockList()), std::nullopt);
    ListSheet second = stockList();
    second.title = u"Second"_s;
    second.rows.removeLast();
    ASSERT_EQ(write(second), std::nullopt);
    const Workbook book(pathOf(u"list.xlsx"_s));
    EXPECT_EQ(book.text(u"A1"_s), u"Second");
    EXPECT_EQ(book.rowCount, 4);
    EXPECT_EQ(leftInFolder(), QStringList({u"list.xlsx"_s}));
}

TEST_F(ListSheetFile, AFolderThatCannotBeWrittenGivesAClearMessageAndLeavesNothing)
{
    const QString locked = pathOf(u"locked"_s);
    ASSERT_TRUE(QDir().mkdir(locked));
    QFile::setPermissions(locked, QFile::ReadOwner | QFile::ExeOwner);
    const auto unlock = qScopeGuard(
        [&] { QFile::setPermissions(locked, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner); });
    if (::access(QFile::encodeName(locked).constData(), W_OK) == 0)
        GTEST_SKIP() << "this user writes even into read-only folders";

    const QString target = locked + u"/list.xlsx"_s;
    XlsxSheetWriter writer;
    EXPECT_EQ(writeListSheet(stockList(), writer, target),
              u"Cannot save the spreadsheet \""_s + target + u"\": Permission denied."_s);
    EXPECT_TRUE(QDir(locked).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).isEmpty());
}

TEST_F(ListSheetFile, AFolderThatIsNotThereGivesAClearMessageAndLeavesNothing)
{
    const QString target = pathOf(u"gone/list.xlsx"_s);
    XlsxSheetWriter writer;
    EXPECT_EQ(writeListSheet(stockList(), writer, target),
              u"Cannot save the spreadsheet \""_s + target + u"\": No such file or directory."_s);
    EXPECT_TRUE(leftInFolder().isEmpty());
}

TEST_F(ListSheetFile, AFullDiskLeavesAnEarlierFileWholeAndNothingElse)
{
    ASSERT_EQ(write(stockList()), std::nullopt);
    QFile earlier(pathOf(u"list.xlsx"_s));
    ASSERT_TRUE(earlier.open(QIODevice::ReadOnly));
    const QByteArray before = earlier.readAll();
    earlier.close();
    ListSheet big = stockList();
    for (int i = 0; i < 20000; ++i)
        big.rows << QStringList{u"Animal %1"_s.arg(i), u"Doe"_s, u"Colour %1"_s.arg(i)};

    // A limit on file size stands in for a full disk: a write past it fails the same way,
    // in the temporary files the sheet passes through as in the workbook itself.
    rlimit old{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &old), 0);
    const auto oldSignal = std::signal(SIGXFSZ, SIG_IGN);
    rlimit small = old;
    small.rlim_cur = 16384;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const std::optional<QString> failure = write(big);
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, oldSignal);

    ASSERT_TRUE(failure.has_value());
    EXPECT_EQ(*failure, u"Cannot save the spreadsheet \""_s + pathOf(u"list.xlsx"_s) +
                            u"\": the sheet came out incomplete; the disk may be full."_s);
    ASSERT_TRUE(earlier.open(QIODevice::ReadOnly));
    EXPECT_EQ(earlier.readAll(), before) << "the earlier sheet is untouched";
    EXPECT_EQ(leftInFolder(), QStringList({u"list.xlsx"_s})) << "no part-written file stays";
}

/// Keeps what it was asked to write; for lists that must be refused before any writing.
class RecordingWriter : public SheetWriter
{
public:
    std::optional<QString> open(const QString &path) override
    {
        opened << path;
        return std::nullopt;
    }
    void write(int row, int column, const QString &text, Style style) override
    {
        cells[{row, column}] = {text, style};
    }
    void setColumnWidth(int column, double width) override { widths[column] = width; }
    std::optional<QString> close() override { return std::nullopt; }

    QStringList opened;
    std::map<std::pair<int, int>, std::pair<QString, Style>> cells;
    std::map<int, double> widths;
};

TEST(ListSheetLimits, ListsASheetCannotHoldAreRefusedBeforeAnythingIsWritten)
{
    RecordingWriter writer;
    ListSheet list = stockList();
    list.rows = QList<QStringList>(kSheetMaxRows - 3, QStringList());
    EXPECT_EQ(writeListSheet(list, writer, u"x.xlsx"_s), std::nullopt) << "a full sheet still fits";
    EXPECT_EQ(writer.opened.size(), 1);

    RecordingWriter second;
    list.rows << QStringList();
    EXPECT_EQ(writeListSheet(list, second, u"x.xlsx"_s),
              u"The list has 1048574 rows, more than the 1048573 a spreadsheet can hold."_s);
    list.title.clear();
    EXPECT_EQ(writeListSheet(list, second, u"x.xlsx"_s), std::nullopt) << "without a title two more rows fit";
    list.rows << QStringList() << QStringList();
    EXPECT_EQ(writeListSheet(list, second, u"x.xlsx"_s),
              u"The list has 1048576 rows, more than the 1048575 a spreadsheet can hold."_s);
    EXPECT_EQ(second.opened.size(), 1);

    RecordingWriter tooLong;
    list = stockList();
    list.rows[2][1] = QString(kSheetMaxCellText, u'a');
    EXPECT_EQ(writeListSheet(list, tooLong, u"x.xlsx"_s), std::nullopt);
    list.rows[2][1] += u'a';
    EXPECT_EQ(
        writeListSheet(list, tooLong, u"x.xlsx"_s),
        u"The text in row 3, column 2 of the list is longer than the 32767 characters a spreadsheet cell "
        u"can hold."_s);
    list = stockList();
    list.title = QString(kSheetMaxCellText + 1, u't');
    EXPECT_EQ(writeListSheet(list, tooLong, u"x.xlsx"_s),
              u"The title is longer than the 32767 characters a spreadsheet cell can hold."_s);
    list = stockList();
    list.headings[1] = QString(kSheetMaxCellText + 1, u'h');
    EXPECT_EQ(
        writeListSheet(list, tooLong, u"x.xlsx"_s),
        u"The heading of column 2 of the list is longer than the 32767 characters a spreadsheet cell can "
        u"hold."_s);
    EXPECT_EQ(tooLong.opened.size(), 1);
}

TEST(ListSheetLimits, AVeryLongTextGivesAColumnNoWiderThanASheetAllows)
{
    RecordingWriter writer;
    ListSheet list;
    list.headings = row({u"Notes"});
    list.rows = {QStringList{QString(1000, u'n')}};
    ASSERT_EQ(writeListSheet(list, writer, u"x.xlsx"_s), std::nullopt);
    EXPECT_EQ(writer.widths.at(0), kSheetMaxColumnWidth);
}

TEST(ListSheetFileName, FileNamesFollowTheTitle)
{
    EXPECT_EQ(sheetFileName(u"hello"_s), u"hello.xlsx");
    EXPECT_EQ(sheetFileName(u"Testmate Results : Jet and Ivory"_s), u"Testmate Results - Jet and Ivory.xlsx");
    EXPECT_EQ(sheetFileName(u"Find Colour Results : Black/Tan (Rex)"_s),
              u"Find Colour Results - Black_Tan (Rex).xlsx");
    EXPECT_EQ(sheetFileName(u"a*b?c\"d<e>f|g\\h\ti"_s), u"a_b_c_d_e_f_g_h_i.xlsx");
    EXPECT_EQ(sheetFileName(u"..hidden.  "_s), u"hidden.xlsx");
    EXPECT_EQ(sheetFileName(QString()), u"List.xlsx");
    EXPECT_EQ(sheetFileName(u" : "_s), u"-.xlsx");
    EXPECT_EQ(sheetFileName(u"Zoë"_s), u"Zoë.xlsx");
    const QString longName = sheetFileName(QString(300, u'兎'));
    EXPECT_LE(longName.toUtf8().size(), 255) << "within what a file system takes";
    EXPECT_TRUE(longName.endsWith(u".xlsx"_s));
}

// The shared exporter with the desktop replaced: whether a program exists, opening a file,
// and the save dialog. Restores the desktop's own afterwards.
class ListToSheetExport : public ::testing::Test
{
protected:
    void SetUp() override
    {
        clslvtoExcel &excel = clslvtoExcel::shared();
        excel.setProgramQuery([this] {
            ++queries;
            return programFound;
        });
        excel.setOpener([this](const QUrl &url) {
            opened << url.toLocalFile();
            return opens;
        });
        FileChooser::setHook([this](QWidget *, const FileChooser::Request &request) {
            suggestions << request.start;
            return FileChooser::Answer{chosen, request.filters.value(0)};
        });
        excel.setWorkFolder(work.path());

        list.setHeaderLabels({u"Name"_s, u"Colour"_s, u"Percent"_s});
        for (const auto &[name, colour, share] :
             {std::tuple{u"Jet", u"Black", u"25.00%"}, std::tuple{u"Ash", u"Grey", u"50.00%"},
              std::tuple{u"Ivory", u"Ruby-Eyed White", u"25.00%"}})
            list.addTopLevelItem(new QTreeWidgetItem(
                {QString::fromUtf16(name), QString::fromUtf16(colour), QString::fromUtf16(share)}));
        enableColumnSort(&list, 2);
    }

    void TearDown() override
    {
        clslvtoExcel &excel = clslvtoExcel::shared();
        excel.setProgramQuery({});
        excel.setOpener({});
        FileChooser::setHook({});
        excel.setWorkFolder({});
    }

    void copy(const QString &title)
    {
        clslvtoExcel &excel = clslvtoExcel::shared();
        excel.Heading(title);
        excel.listviewA(&list);
        excel.CreateExcel(nullptr, prompts);
    }

    QTemporaryDir work, elsewhere;
    QTreeWidget list;
    ScriptedPrompts prompts;
    bool programFound = true;
    bool opens = true;
    QString chosen;
    int queries = 0;
    QStringList opened, suggestions;
};

TEST_F(ListToSheetExport, TheListGoesOverInItsSortedOrderAndOpensInTheProgram)
{
    Q_EMIT list.header()->sectionClicked(0);
    Q_EMIT list.header()->sectionClicked(0);
    ASSERT_EQ(list.headerItem()->text(0), u"Name ^");
    copy(u"Testmate Results : Jet and Ivory"_s);

    ASSERT_EQ(opened.size(), 1);
    EXPECT_EQ(opened[0], QDir(work.path()).filePath(u"Testmate Results - Jet and Ivory.xlsx"_s));
    const Workbook book(opened[0]);
    EXPECT_EQ(book.text(u"A1"_s), u"Testmate Results : Jet and Ivory");
    EXPECT_EQ(book.text(u"A3"_s), u"Name ^");
    EXPECT_EQ(book.text(u"C3"_s), u"Percent");
    EXPECT_EQ(book.text(u"A4"_s), u"Jet");
    EXPECT_EQ(book.text(u"A5"_s), u"Ivory");
    EXPECT_EQ(book.text(u"B5"_s), u"Ruby-Eyed White");
    EXPECT_EQ(book.text(u"A6"_s), u"Ash");
    EXPECT_EQ(book.text(u"C6"_s), u"50.00%");
    EXPECT_TRUE(suggestions.isEmpty());
    EXPECT_TRUE(prompts.messages.isEmpty());

    // The first sheet may still be open in the program: the next one of the same title
    // gets a name of its own.
    copy(u"Testmate Results : Jet and Ivory"_s);
    ASSERT_EQ(opened.size(), 2);
    EXPECT_EQ(opened[1], QDir(work.path()).filePath(u"Testmate Results - Jet and Ivory (2).xlsx"_s));
    EXPECT_TRUE(QFileInfo::exists(opened[0]));
    EXPECT_EQ(queries, 1) << "the desktop is asked once";
    EXPECT_TRUE(clslvtoExcel::shared().ExcelExists());
    EXPECT_EQ(queries, 1);

    clslvtoExcel::shared().CreateExcel(nullptr, prompts);
    EXPECT_TRUE(clslvtoExcel::shared().lastSheet().title.isEmpty()) << "a copy uses up what it was handed";
    EXPECT_TRUE(clslvtoExcel::shared().lastSheet().rows.isEmpty());
}

TEST_F(ListToSheetExport, WithoutAProgramTheSheetIsOfferedForSaving)
{
    programFound = false;
    EXPECT_FALSE(clslvtoExcel::shared().ExcelExists());

    copy(u"hello"_s); // cancelled: nothing at all
    ASSERT_EQ(suggestions.size(), 1);
    EXPECT_EQ(QFileInfo(suggestions[0]).fileName(), u"hello.xlsx");

    chosen = QDir(elsewhere.path()).filePath(u"mating.xlsx"_s);
    copy(u"hello"_s);
    EXPECT_TRUE(opened.isEmpty()) << "nothing to open it with";
    EXPECT_TRUE(prompts.messages.isEmpty());
    const Workbook book(chosen);
    EXPECT_EQ(book.text(u"A1"_s), u"hello");
    EXPECT_EQ(book.text(u"A4"_s), u"Jet");
    EXPECT_TRUE(QDir(work.path()).isEmpty());

    chosen = QDir(elsewhere.path()).filePath(u"missing/mating.xlsx"_s);
    copy(u"hello"_s);
    ASSERT_EQ(prompts.messages.size(), 1);
    EXPECT_EQ(prompts.messages[0].text,
              u"Cannot save the spreadsheet \""_s + chosen + u"\": No such file or directory."_s);
    EXPECT_EQ(prompts.messages[0].title, u"Copy to Excel");
    EXPECT_EQ(prompts.messages[0].icon, Prompts::Icon::Exclamation);
    EXPECT_EQ(list.topLevelItemCount(), 3) << "the list stays for another try";
}

TEST_F(ListToSheetExport, AProgramThatWillNotStartFallsBackToSaving)
{
    opens = false;
    chosen = QDir(elsewhere.path()).filePath(u"kept.xlsx"_s);
    copy(u"Search Results"_s);
    EXPECT_EQ(opened.size(), 1);
    EXPECT_EQ(suggestions.size(), 1);
    EXPECT_TRUE(QDir(work.path()).isEmpty()) << "the sheet that could not be opened is not left lying";
    EXPECT_EQ(Workbook(chosen).text(u"A1"_s), u"Search Results");
}

} // namespace
