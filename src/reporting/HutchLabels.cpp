#include "HutchLabels.h"

#include "SearchResultsSheet.h"
#include "SheetPrint.h"

#include "core/Options.h"
#include "core/Session.h"
#include "store/StockLookup.h"
#include "store/StudDatabase.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

// Labels start a little in from the page's corner, and their text a little in from the
// label's edge.
constexpr double kPageInset = 0.0625;
constexpr double kTextInsetX = 0.2;
constexpr double kTextInsetY = 0.125;
// The details of a label are cut this much short of its width.
constexpr double kTextMargin = 0.4;
// The compact size: the gap between labels and where its second column starts.
constexpr double kCompactGap = 0.35;
constexpr double kCompactColumn = 6;
constexpr double kGap = 0.5;
// The name prints this much larger than the other details, and bold.
constexpr double kNameLarger = 4;
constexpr double kTwipsPerCm = 567;
const QString kInclude = u"Include"_s;

void box(PrintSurface &page, double left, double top, double right, double bottom)
{
    page.line(left, top, right, top);
    page.line(right, top, right, bottom);
    page.line(right, bottom, left, bottom);
    page.line(left, bottom, left, top);
}

// How many of a length go into the room; a page measured in twips may come a hair short of
// a whole number of labels it holds exactly.
int wholeTimes(double room, double length)
{
    return length > 0 ? std::max(0, int(std::floor(room / length + 1e-9))) : 0;
}

int validSize(int size)
{
    return size >= 0 && size < kLabelSizeCount ? size : 0;
}

} // namespace

QStringList labelItemTexts(const Session &session)
{
    return {u"Name"_s,          session.IdWord,     u"Sex"_s,           u"Breed"_s,       session.ColourWord,
            u"Date Of Birth"_s, session.MotherWord, session.FatherWord, u"Comments Box"_s};
}

bool labelsLandscape(int size)
{
    return validSize(size) != kCompactLabelSize;
}

LabelGrid labelGrid(int size, double pageWidth, double pageHeight)
{
    const LabelSize &s = kLabelSizes[validSize(size)];
    LabelGrid g;
    g.width = s.width;
    g.height = s.height;
    g.fontSize = s.fontSize;
    g.compact = validSize(size) == kCompactLabelSize;
    g.gap = g.compact ? kCompactGap : kGap;
    g.columnOffset = g.compact ? kCompactColumn : 0;
    g.columns = wholeTimes(pageWidth, g.gap + g.width);
    g.rows = wholeTimes(pageHeight, g.gap + g.height);
    // The compact labels go two across: paper on which the second would run off the edge
    // (A4 less a printer's margins) does not take them.
    if (g.compact)
        g.columns = 2 * g.width + g.gap + kPageInset <= pageWidth ? 2 : 0;
    return g;
}

LabelPlace labelPlace(const LabelGrid &grid, int counter)
{
    LabelPlace p;
    const int perPage = grid.perPage();
    if (perPage <= 0 || counter < 1)
        return p;
    const int onPage = (counter - 1) % perPage + 1;
    // The first label of every page after the first begins it; the first label of all
    // prints on the page the document begins with.
    p.newPage = counter > perPage && onPage == 1;
    p.row = (onPage - 1) / grid.columns + 1;
    p.column = (onPage - 1) % grid.columns + 1;
    p.left = (p.column - 1) * (grid.width + grid.gap) + kPageInset;
    p.top = (p.row - 1) * (grid.height + grid.gap) + kPageInset;
    p.right = p.left + grid.width;
    p.bottom = p.top + grid.height;
    return p;
}

LabelOptions readLabelOptions(const Options &options, const QStringList &itemTexts)
{
    LabelOptions o;
    for (int i = 0; i < kLabelItemCount && i < itemTexts.size(); ++i)
        o.include[i] = options.text(Opt::LabelInclude, itemTexts.at(i)) == kInclude;
    o.size = validSize(options.number(Opt::LabelSize));
    for (int sex = 0; sex < 2; ++sex)
        o.colours[sex] = options.number(Opt::LabelColour, QString::number(sex));
    return o;
}

void saveLabelOptions(Options &options, const QStringList &itemTexts, const LabelOptions &labels)
{
    for (int i = 0; i < kLabelItemCount && i < itemTexts.size(); ++i)
        options.set(Opt::LabelInclude, labels.include[i] ? kInclude : QString(), itemTexts.at(i));
    options.setNumber(Opt::LabelSize, labels.size);
    for (int sex = 0; sex < 2; ++sex)
        options.setNumber(Opt::LabelColour, labels.colours[sex], QString::number(sex));
}

QStringList labelTexts(Database &db, const LabelSheet &sheet, const StockRow &animal)
{
    QStringList texts(kLabelItemCount);
    texts[ItemName] = animal.name;
    texts[ItemId] = animal.ringNo;
    texts[ItemSex] = animal.sex;
    texts[ItemBreed] = animal.type;
    texts[ItemColour] = animal.colour;
    if (animal.dob)
        texts[ItemBirth] = u"DOB: "_s + sheet.dates.format(*animal.dob);
    // Names are read only for the details that print.
    if (sheet.options.include[ItemDam])
        if (const auto dam = animal.knownDam())
            texts[ItemDam] = sheet.damWord + u": "_s + Get_Stock_Name(db, *dam);
    if (sheet.options.include[ItemSire])
        if (const auto sire = animal.knownSire())
            texts[ItemSire] = sheet.sireWord + u": "_s + Get_Stock_Name(db, *sire);
    return texts;
}

int labelColour(const LabelSheet &sheet, const QString &sex)
{
    if (sex.isEmpty())
        return 0;
    if (sex == sheet.maleWord)
        return sheet.options.colours[0];
    if (sex == sheet.femaleWord)
        return sheet.options.colours[1];
    return 0;
}

void PrintLabel(PrintSurface &page, const LabelSheet &sheet, int counter, const QStringList &texts,
                int colour)
{
    const LabelGrid &g = sheet.grid;
    const LabelPlace at = labelPlace(g, counter);
    if (at.row == 0)
        return;
    if (at.newPage)
        page.newPage();

    // The whole label, border and all, in its animal's colour.
    page.setForeColor(colour);
    setLineWidth(page, 10);
    box(page, at.left, at.top, at.right, at.bottom);

    page.setFontName(u"Arial"_s);
    page.setItalic(false);
    page.setFontSize(g.fontSize);
    page.setBold(false);
    page.CurrentY = at.top + kTextInsetY;
    const double textLeft = at.left + kTextInsetX;
    const double width = g.width - kTextMargin;
    // The top of the line printed last: the compact size's second column goes beside it.
    std::optional<double> lastLine;

    for (int item = 0; item < kLabelItemCount; ++item) {
        if (!sheet.options.include[item])
            continue;
        const bool name = item == ItemName;
        page.setBold(name);
        page.setFontSize(name ? g.fontSize + kNameLarger : g.fontSize);
        if (page.CurrentY + page.textHeight(u"A"_s) > at.bottom)
            break;
        page.CurrentX = textLeft;

        if (item == ItemCommentsBox) {
            setLineWidth(page, 4);
            box(page, textLeft, page.CurrentY + 0.2, at.right - 0.2, at.bottom - 0.2);
            break;
        }

        const bool secondColumn = g.compact && (item == ItemSex || item == ItemColour || item == ItemBirth);
        if (!secondColumn) {
            lastLine = page.CurrentY;
            PrintFitted(page, texts.value(item), width);
            page.CurrentX = 0;
            page.CurrentY = *lastLine + page.textHeight(texts.value(item));
            continue;
        }
        // The second column is cut at the label's edge as the first is.
        page.CurrentX = textLeft + g.columnOffset;
        if (item == ItemBirth) {
            // The date takes a line of its own in the second column, the last there is room for.
            PrintFitted(page, texts.value(item), width - g.columnOffset);
            break;
        }
        // The sex and the colour go beside the line before (on the first line when none
        // printed yet); the next detail still takes the next line.
        const double next = page.CurrentY;
        page.CurrentY = lastLine.value_or(next);
        PrintFitted(page, texts.value(item), width - g.columnOffset);
        page.CurrentY = next;
    }
    page.setBold(false);
    page.setFontSize(g.fontSize);
}

bool PrintAllLabels(PrintSurface &page, Database &db, Prompts &prompts, const LabelSheet &sheet,
                    const QList<qint64> &picked)
{
    int counter = 0;
    for (const qint64 number : picked) {
        const std::optional<StockRow> animal = readAnimal(db, number);
        if (!animal) {
            prompts.show(u"Stock not found"_s);
            continue;
        }
        ++counter;
        PrintLabel(page, sheet, counter, labelTexts(db, sheet, *animal), labelColour(sheet, animal->sex));
    }
    if (counter > 0)
        page.endDoc();
    return counter > 0;
}

bool checkLabelsPicked(const QList<qint64> &picked, Prompts &prompts)
{
    if (!picked.isEmpty())
        return true;
    prompts.show(noLivestockPickedText(), labelsTitle(), Prompts::Icon::Exclamation);
    return false;
}

QString noLivestockPickedText()
{
    return u"No Livestock Selected\nTick the animals to print labels for."_s;
}

QString labelsDoNotFitText()
{
    return u"The labels of this size do not fit on the paper.\n"
           u"Choose a smaller label size, or larger paper or narrower margins under Printer Setup."_s;
}

QString labelsTitle()
{
    return u"Hutch Labels"_s;
}

bool printHutchLabels(PrintSurface &page, Session &session, Prompts &prompts, const LabelOptions &options,
                      const QList<qint64> &picked)
{
    const QSizeF paper = page.pageSize();
    page.setScale(paper.width() / kTwipsPerCm, paper.height() / kTwipsPerCm);
    SetPrinterDefaults(page);

    LabelSheet sheet;
    sheet.grid = labelGrid(options.size, page.scaleWidth(), page.scaleHeight());
    if (!sheet.grid.fits()) {
        prompts.show(labelsDoNotFitText(), labelsTitle(), Prompts::Icon::Exclamation);
        return false;
    }
    sheet.options = options;
    sheet.maleWord = session.MaleWord;
    sheet.femaleWord = session.FemaleWord;
    sheet.sireWord = session.FatherWord;
    sheet.damWord = session.MotherWord;
    sheet.dates = session.Dates;
    return PrintAllLabels(page, session.Stud->handle(), prompts, sheet, picked);
}

QString tooManyLivestockText()
{
    return u"Too Many Livestock Items\nArchive Some Stock!"_s;
}

LabelStockList labelStockList(Database &db, Prompts &prompts, qsizetype limit)
{
    LabelStockList list{everyAnimal(db)};
    if (list.numbers.size() > limit) {
        list.numbers.resize(limit);
        list.cut = true;
        prompts.show(tooManyLivestockText(), u"Error"_s, Prompts::Icon::Exclamation);
    }
    return list;
}

void LabelTicks::setTicked(qint64 number, bool on)
{
    if (on != m_all)
        m_changed.insert(number);
    else
        m_changed.remove(number);
}

void LabelTicks::setAll(bool on)
{
    m_all = on;
    m_changed.clear();
}

QList<qint64> LabelTicks::picked(const QList<qint64> &list) const
{
    QList<qint64> numbers;
    if (!m_all && m_changed.isEmpty())
        return numbers;
    numbers.reserve(m_all ? list.size() : m_changed.size());
    for (const qint64 n : list)
        if (ticked(n))
            numbers.append(n);
    return numbers;
}

} // namespace tarvex
