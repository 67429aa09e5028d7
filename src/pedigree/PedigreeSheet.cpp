#include "PedigreeSheet.h"

#include "core/Options.h"
#include "store/LikePattern.h"

#include <QList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

constexpr double kTopY = 1200;
constexpr double kBottomY = 4200;
const QString kSignedLine = QStringLiteral("Signed ..............................................  Date ...../...../.....");
constexpr double kBandHeight = 150;
constexpr int kRed = 255;
constexpr int kBlack = 0;

bool matchesAny(const QString &text, std::initializer_list<QString> patterns)
{
    const QString upper = text.toUpper();
    for (const QString &p : patterns)
        if (LikePattern(p).matches(upper))
            return true;
    return false;
}

// The particulars above the grid: each field has the room from its place to the next
// field's, less a gap; the last one to the page's edge, less a margin.
constexpr double kFieldGap = 4;
constexpr double kPageMargin = 5;
constexpr double kSmallestFieldSize = 8;

// The width of a bold label followed by an italic value in the current size.
double fieldWidth(PrintSurface &page, const QString &label, const QString &value)
{
    page.setBold(true);
    const double labelWidth = page.textWidth(label);
    page.setBold(false);
    page.setItalic(true);
    const double valueWidth = page.textWidth(value);
    page.setItalic(false);
    return labelWidth + valueWidth;
}

// Prints a bold label and its italic value at x so that they end before limit: in the
// current size when they fit, else a point smaller at a time down to 8 points, and then
// with the value cut short, ending in "...". The size is back as it was afterwards.
void printField(PrintSurface &page, QString label, QString value, double x, double limit)
{
    const double size = page.fontSize();
    const double room = limit - x;
    while (fieldWidth(page, label, value) > room && page.fontSize() > kSmallestFieldSize)
        page.setFontSize(std::max(page.fontSize() - 1, kSmallestFieldSize));
    if (fieldWidth(page, label, value) > room) {
        const QString dots = u"..."_s;
        while (!value.isEmpty() && fieldWidth(page, label, value + dots) > room)
            value.chop(1);
        while (value.endsWith(u' '))
            value.chop(1);
        value += dots;
        // A label too long for its room even alone (a stud's own words) is cut instead.
        if (fieldWidth(page, label, value) > room) {
            value.clear();
            while (!label.isEmpty() && fieldWidth(page, label, value) > room)
                label.chop(1);
        }
    }
    page.CurrentX = x;
    page.setBold(true);
    page.printInline(label);
    page.setBold(false);
    page.setItalic(true);
    page.printInline(value);
    page.setItalic(false);
    page.setFontSize(size);
}

// One field of the particulars: its label, its value and where it starts.
struct SubjectField
{
    QString label;
    QString value;
    double x;
};

// Prints one row of the particulars, each field fitted to its room.
void printFieldRow(PrintSurface &page, const QList<SubjectField> &fields)
{
    for (qsizetype i = 0; i < fields.size(); ++i) {
        const double limit =
            i + 1 < fields.size() ? fields[i + 1].x - kFieldGap : page.scaleWidth() - kPageMargin;
        printField(page, fields[i].label, fields[i].value, fields[i].x, limit);
    }
}

void setDefaults(PrintSurface &page)
{
    page.setFontName(u"Arial"_s);
    page.setBold(false);
    page.setItalic(false);
    page.setForeColor(kBlack);
}

void printOutline(PrintSurface &page, Session &s, const PedigreeSheetJob &job, const std::function<void()> &step)
{
    const Options options(s);
    setDefaults(page);
    page.setFontName(options.text(Opt::PedigreeFont));
    page.setFontSize(14);

    // Pictures are placed in the page's own unit, before any scale is set.
    page.setScale(0, 0);
    const QSizeF pageSize = page.pageSize();
    QString watermark = options.text(Opt::BreedWatermark, job.subjectType);
    if (watermark.isEmpty())
        watermark = options.text(Opt::Watermark);
    if (!watermark.isEmpty()) {
        const QSizeF picture = page.pictureSize(watermark);
        if (!picture.isEmpty()) {
            double width = picture.width();
            double height = picture.height();
            if (options.flag(Opt::WatermarkStretch)) {
                const double r = picture.width() / picture.height();
                height = pageSize.height() - 10;
                width = height * r;
                if (width > pageSize.width()) {
                    width = pageSize.width() - 10;
                    height = width / r;
                }
            }
            page.drawPicture(watermark, (pageSize.width() - width) / 2, (pageSize.height() - height) / 2, width,
                             height);
        }
    }
    step();
    const QString logo = options.text(Opt::Logo);
    if (!logo.isEmpty()) {
        const QSizeF picture = page.pictureSize(logo);
        if (!picture.isEmpty()) {
            const double r = picture.width() / picture.height();
            double height = 450;
            double width = 450 * r;
            if (width > 1500) {
                width = 1500;
                height = 1500 / r;
            }
            page.drawPicture(logo, pageSize.width() - width, 0, width, height);
        }
    }
    step();

    page.setScale(500, 4500);
    page.CurrentX = 0;
    page.CurrentY = 0;
    page.setBold(true);
    page.setItalic(true);
    page.setFontSize(32);
    page.print(s.StudName);
    page.setFontSize(12);
    for (int i = 0; i < 4; ++i)
        page.print(options.text(Opt::Header, QString::number(i)));
    page.CurrentX = 0;
    page.CurrentY = kBottomY + 50;
    page.setFontSize(12);
    page.print(options.text(Opt::Footer));
    step();

    page.setBold(false);
    page.setItalic(false);
    page.setFontSize(12);
    const QString signedLine = kSignedLine;
    const double x = page.scaleWidth() - std::max(page.textWidth(job.certifyLine), page.textWidth(signedLine)) - 5;
    page.CurrentX = x;
    page.CurrentY = kBottomY + 10;
    page.print(job.certifyLine);
    // Printing leaves the position on the next line; the signature goes 30 units below it.
    page.CurrentX = x;
    page.CurrentY += 30;
    page.print(signedLine);
    step();

    const double w = job.generations * 100.0;
    page.setScale(w, 4500);
    page.line(1, kTopY, 1, kBottomY);
    page.line(w - 1, kTopY, w - 1, kBottomY);
    page.line(1, kBottomY, w - 1, kBottomY);
    page.line(1, kTopY - kBandHeight, w, kTopY - kBandHeight);
    page.line(1, kTopY, w, kTopY);
    page.line(1, (kTopY + kBottomY) / 2, w, (kTopY + kBottomY) / 2);
    for (int c = 1; c <= 4; ++c) {
        page.line(100.0 * c, kTopY - kBandHeight, 100.0 * c, kBottomY);
        const int rows = 1 << (c + 1);
        for (int k = 1; k < rows; ++k) {
            const double y = kTopY + k * (kBottomY - kTopY) / rows;
            page.line(100.0 * c, y, w, y);
        }
    }
    const std::pair<double, QString> titles[] = {{2, u"Parents"_s},
                                                 {102, u"Grandparents"_s},
                                                 {202, u"Great GrandParents"_s},
                                                 {302, u"G. G. GrandParents"_s},
                                                 {402, u"G.G.G. GrandParents"_s}};
    for (const auto &[tx, title] : titles) {
        page.CurrentX = tx;
        page.CurrentY = kTopY - kBandHeight;
        page.print(title);
    }
    step();
}

bool printAnimalDetails(PrintSurface &page, Session &s, Prompts &prompts, const PedigreeSheetJob &job)
{
    page.setScale(500, 4500);
    PedigreeCell &subject = job.table->cell(0, 1);
    for (QString *f : {&subject.Name, &subject.RingNo, &subject.Sex, &subject.DOB, &subject.Type, &subject.Colour})
        f->clear();
    if (job.blank) {
        // The particulars are written in by hand.
    } else if (s.CurrentStockNo == 0) {
        subject.Name = u"Result of Test Mating"_s;
    } else if (!job.keepSubject && !Get_Animal_Details(s, s.CurrentStockNo, subject)) {
        prompts.show(u"Requested Stock Not Found"_s, QString(), Prompts::Icon::Stop);
        page.killDoc();
        return false;
    }
    if (!s.PrintName && !job.blank)
        subject.Name = QString(40, u'_');
    page.setFontSize(12);
    page.CurrentY = kTopY - 400;
    printFieldRow(page, {{s.PedigreeWord + u" of: "_s, subject.Name, 2},
                         {u"Date of Birth: "_s, subject.DOB, 246},
                         {u"Breed: "_s, subject.Type, 357}});
    page.print(QString());
    if (job.style != 3 && job.style != 4) {
        printFieldRow(page, {{s.IdWord + u": "_s, subject.RingNo, 2},
                             {u"Sex: "_s, subject.Sex, 246},
                             {s.ColourWord + u": "_s, subject.Colour, 357}});
    }
    return true;
}

void printCell(PrintSurface &page, const PedigreeCell &c, int g, int style, double y, double textX)
{
    const double limit = g > 2 ? 93 : 80;
    const auto red = [&](bool on) { page.setForeColor(on ? kRed : kBlack); };
    const auto afterName = [&] {
        page.setForeColor(kBlack);
        page.setBold(false);
    };
    const bool nameBased = style == 2 || style == 3;
    const bool colourBased = style == 1 || style == 4;
    if (g <= 2) {
        const bool first = g == 1;
        if (nameBased) {
            red(Is_Champion_Name(c.Name));
            Print_Wrapped(page, c.Name, textX, y + (first ? 600 : 110), limit);
            afterName();
            if (style == 2)
                PrintFitted(page, c.RingNo, textX, page.CurrentY, limit);
            PrintFitted(page, c.Colour, textX, y + (first ? 1250 : 520), limit);
        } else if (style == 5) {
            red(Is_Champion_Name(c.Name) || Is_Champion_Award(c.BestAward));
            Print_Wrapped(page, c.Name, textX, y + (first ? 550 : 110), limit);
            afterName();
            page.setFontSize(10);
            PrintFitted(page, c.GenoType, textX, page.CurrentY, limit);
        } else if (colourBased) {
            red(Is_Champion_Award(c.BestAward));
            Print_Wrapped(page, c.Name, textX, y + (first ? 550 : 110), limit);
            afterName();
            PrintFitted(page, c.BestAward, textX, page.CurrentY, limit);
            page.setItalic(true);
            PrintFitted(page, c.Type, textX, y + (first ? 1100 : 400), limit);
            PrintFitted(page, c.Colour, textX, page.CurrentY, limit);
            page.CurrentX = textX;
            page.print(c.Points);
        }
        return;
    }
    const double hereX = page.CurrentX;
    const double hereY = page.CurrentY;
    if (g == 3 || (g == 4 && !colourBased)) {
        if (nameBased) {
            red(Is_Champion_Name(c.Name));
            Print_Wrapped(page, c.Name, hereX, hereY, limit);
            afterName();
            if (g == 3) {
                if (style == 2)
                    PrintFitted(page, c.RingNo, textX, page.CurrentY, limit);
                PrintFitted(page, c.Colour, textX, y + 260, limit);
            } else {
                if (style == 2 && page.CurrentY < y + 95)
                    PrintFitted(page, c.RingNo, textX, page.CurrentY, limit);
                if (page.CurrentY < y + 95)
                    PrintFitted(page, c.Colour, textX, page.CurrentY, limit);
            }
        } else if (style == 5) {
            red(Is_Champion_Name(c.Name) || Is_Champion_Award(c.BestAward));
            Print_Wrapped(page, c.Name, hereX, hereY, limit);
            afterName();
            page.setFontSize(10);
            PrintFitted(page, c.GenoType, textX, page.CurrentY, limit);
        } else {
            red(Is_Champion_Award(c.BestAward));
            Print_Wrapped(page, c.Name, hereX, hereY, limit);
            afterName();
            page.setItalic(true);
            PrintFitted(page, c.Type, textX, page.CurrentY, limit);
            PrintFitted(page, c.Colour, textX, page.CurrentY, limit);
            // 300 is a limit, not a place: the points go in only while there is room.
            if (page.CurrentY < y + 300)
                PrintFitted(page, c.Points, textX, page.CurrentY, limit);
        }
        return;
    }
    if (g == 4) {
        page.setBold(true);
        page.setItalic(true);
        red(Is_Champion_Award(c.BestAward));
        PrintFitted(page, c.Name, hereX, hereY, limit);
        afterName();
        PrintFitted(page, c.Colour, textX, page.CurrentY, limit);
        return;
    }
    if (nameBased) {
        red(Is_Champion_Name(c.Name));
        PrintFitted(page, c.Name, hereX, hereY, limit);
        afterName();
    } else if (style == 5) {
        page.setFontSize(10);
        PrintFitted(page, c.GenoType, hereX, hereY, limit);
    } else {
        page.setBold(true);
        page.setItalic(true);
        PrintFitted(page, c.Colour, hereX, hereY, limit);
    }
}

/// A coloured frame just inside the place of a common ancestor.
void printMark(PrintSurface &page, int generation, int row, int rows, quint32 rgb)
{
    const double left = (generation - 1) * 100.0 + 2, right = generation * 100.0 - 2;
    const double height = (kBottomY - kTopY) / rows;
    const double top = kTopY + row * height + 6, bottom = kTopY + (row + 1) * height - 6;
    // The surface takes its colours as the old blue-green-red numbers.
    page.setForeColor(int(((rgb & 0xff) << 16) | (rgb & 0xff00) | ((rgb >> 16) & 0xff)));
    page.setDrawWidth(2);
    page.line(left, top, right, top);
    page.line(right, top, right, bottom);
    page.line(right, bottom, left, bottom);
    page.line(left, bottom, left, top);
    page.setDrawWidth(1);
    page.setForeColor(kBlack);
}

} // namespace

bool Is_Champion_Name(const QString &name)
{
    return matchesAny(name, {u"* CH.*"_s, u"CH *"_s, u"* CHAMPION *"_s, u"CH.*"_s, u"* CH *"_s, u"CHAMPION *"_s});
}

bool Is_Champion_Award(const QString &award)
{
    return matchesAny(award, {u"*BEST *"_s, u"*CHAMPION *"_s, u"CHAMPION *"_s, u"BEST *"_s});
}

void PrintFitted(PrintSurface &page, QString text, double x, double y, double limit)
{
    page.CurrentX = x;
    page.CurrentY = y;
    while (!text.isEmpty() && page.textWidth(text) >= limit)
        text.chop(1);
    page.print(text);
}

void Print_Wrapped(PrintSurface &page, const QString &text, double x, double y, double limit)
{
    page.CurrentX = x;
    page.CurrentY = y;
    if (page.textWidth(text) < limit) {
        page.print(text);
        return;
    }
    if (!text.contains(u' ')) {
        QString cut = text;
        while (!cut.isEmpty() && page.textWidth(cut) >= limit)
            cut.chop(1);
        page.print(cut);
        return;
    }
    // The longest leading part, ending before a blank, that fits; the rest goes below.
    qsizetype split = -1;
    for (qsizetype i = text.indexOf(u' '); i >= 0; i = text.indexOf(u' ', i + 1)) {
        if (page.textWidth(text.left(i)) < limit)
            split = i;
        else
            break;
    }
    if (split < 0)
        split = text.indexOf(u' ');
    page.print(text.left(split));
    page.CurrentX = x;
    page.print(text.mid(split + 1));
}

bool printPedigreeSheet(PrintSurface &page, Session &s, Prompts &prompts, const PedigreeSheetJob &job,
                        Progress &progress)
{
    progress.start(68, u"Printing "_s + s.PedigreeWord);
    qint64 steps = 0;
    const auto step = [&] { progress.step(++steps); };
    printOutline(page, s, job, step);
    step();
    if (!printAnimalDetails(page, s, prompts, job))
        return false;
    page.setScale(job.generations * 100.0, 4500);
    for (int i = 1; i <= 62; ++i) {
        step();
        const CellLocation at = Locate_Cell(i);
        const double cellX = (at.generation - 1) * 100.0 + 3;
        const double textX = cellX + 2;
        const double cellY = std::round(kTopY + (i - at.base) * ((kBottomY - kTopY) / at.cells) + 5);
        page.CurrentX = cellX;
        page.CurrentY = cellY;
        page.setBold(true);
        page.setItalic(true);
        static constexpr int sizes[] = {0, 14, 12, 10, 10, 8};
        page.setFontSize(sizes[at.generation]);
        page.setForeColor(kBlack);
        page.printInline(i % 2 == 0 ? job.captions.dam : job.captions.sire);
        const PedigreeCell &c = job.table->cell(at.generation, at.position(i));
        if (c.Number == -1)
            continue;
        printCell(page, c, at.generation, job.style, cellY, textX);
        if (const auto mark = job.marks.constFind(c.Number); mark != job.marks.cend())
            printMark(page, at.generation, i - at.base, at.cells, *mark);
    }
    if (!job.inbreedingLines.isEmpty()) {
        // Under the footer, left of the signature block.
        page.setScale(500, 4500);
        setDefaults(page);
        page.setFontSize(12);
        const double signature = page.scaleWidth() - std::max(page.textWidth(job.certifyLine),
                                                             page.textWidth(kSignedLine)) - 5;
        page.setFontSize(10);
        double y = kBottomY + 130;
        for (const QString &line : job.inbreedingLines) {
            PrintFitted(page, line, 0, y, signature - 10);
            y = page.CurrentY;
        }
    }
    page.endDoc();
    return true;
}

} // namespace tarvex
