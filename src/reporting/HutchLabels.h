#pragma once

// Hutch labels: a label for each animal picked, tiled over the page in a grid that follows
// from the paper. The label size fixes the orientation: the tall sizes print landscape, the
// one wide, low size (10 cm by 3.5 cm) prints portrait, two across, with a second column of
// details at 6 cm. Every measure here is in centimetres.

#include "core/DateFormat.h"
#include "core/PrintSurface.h"
#include "core/Prompts.h"
#include "store/StockRow.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

namespace tarvex {

class Options;
struct Session;

/// One size of label: its caption in the size list, width and height in centimetres and the
/// font size its details print in.
struct LabelSize
{
    const char16_t *caption;
    double width, height;
    double fontSize;
};

inline constexpr int kLabelSizeCount = 5;
inline constexpr std::array<LabelSize, kLabelSizeCount> kLabelSizes{{
    {u"6cm X 9cm", 6, 9, 16},
    {u"8cm X 9cm", 8, 9, 16},
    {u"12cm X 9cm", 12, 9, 16},
    {u"6cm X 4cm", 6, 4, 11},
    {u"10cm X 3.5cm", 10, 3.5, 10},
}};
/// The wide, low label that prints two across on portrait paper.
inline constexpr int kCompactLabelSize = 4;

/// The details a label can carry, in the order they print.
enum LabelItem
{
    ItemName,
    ItemId,
    ItemSex,
    ItemBreed,
    ItemColour,
    ItemBirth,
    ItemDam,
    ItemSire,
    ItemCommentsBox,
    kLabelItemCount
};

/// The texts of the details as the list offers them, with the stud's own words for the
/// identifier, the colour and the parents; each text is also the name its tick is kept under.
QStringList labelItemTexts(const Session &session);

/// Whether a size prints on landscape paper (every size but the compact one).
bool labelsLandscape(int size);

/// The labels of one size laid out on one page.
struct LabelGrid
{
    double width = 0, height = 0; // of a label
    double gap = 0;               // between labels, across and down
    double columnOffset = 0;      // where the second column of details starts (compact only)
    bool compact = false;
    double fontSize = 0;
    int columns = 0, rows = 0;

    int perPage() const { return columns * rows; }
    /// False when not one label of the size fits on the page.
    bool fits() const { return columns > 0 && rows > 0; }
};

/// The grid of a size on a page of that width and height: as many labels across and down
/// as fit with their gaps. The compact size is always two across, on paper wide enough for
/// two.
LabelGrid labelGrid(int size, double pageWidth, double pageHeight);

/// Where the label with that number (from 1, counting on across the pages) goes.
struct LabelPlace
{
    int row = 0, column = 0; // from 1
    double left = 0, top = 0, right = 0, bottom = 0;
    /// The label is the first of a page after the first: a new page comes before it.
    bool newPage = false;
};
LabelPlace labelPlace(const LabelGrid &grid, int counter);

/// What the breeder chose for the labels, kept with the stud's settings.
struct LabelOptions
{
    std::array<bool, kLabelItemCount> include{};
    int size = 0;
    /// The print colour of males (0) and females (1), as 0xBBGGRR.
    std::array<int, 2> colours{};
};

/// The choices last saved; no detail ticked, the first size and black for both sexes when
/// none were.
LabelOptions readLabelOptions(const Options &options, const QStringList &itemTexts);
void saveLabelOptions(Options &options, const QStringList &itemTexts, const LabelOptions &labels);

/// Everything a label of any animal prints with: the layout, the details ticked, the colours
/// and the stud's words.
struct LabelSheet
{
    LabelGrid grid;
    LabelOptions options;
    QString maleWord, femaleWord, sireWord, damWord;
    DateSettings dates;
};

/// The texts of an animal's label, one per detail (the comments box has none): a parent or a
/// date of birth that is not known gives an empty text.
QStringList labelTexts(Database &db, const LabelSheet &sheet, const StockRow &animal);
/// The colour an animal's label prints in: the male colour for the male word, the female
/// colour for the female word, black for any other sex or none.
int labelColour(const LabelSheet &sheet, const QString &sex);

/// Draws the label with that number: its border, then each detail ticked, in order, a line
/// each, cut to the label's width, until the next line would pass the label's bottom; a
/// comments box fills what is left of the label. In the compact size the sex and the colour
/// print beside the line before, and the date of birth in the second column ends the label.
void PrintLabel(PrintSurface &page, const LabelSheet &sheet, int counter, const QStringList &texts,
                int colour);

/// The label of each animal in turn, read again from the stud: an animal that has gone is
/// told ("Stock not found") and passed over. The document is closed when a label was
/// printed; false when none was.
bool PrintAllLabels(PrintSurface &page, Database &db, Prompts &prompts, const LabelSheet &sheet,
                    const QList<qint64> &picked);

/// False, after telling the breeder, when no animal is ticked for a label.
bool checkLabelsPicked(const QList<qint64> &picked, Prompts &prompts);
QString noLivestockPickedText();

/// Told when not one label of the size chosen fits on the paper; nothing is printed then.
QString labelsDoNotFitText();
QString labelsTitle();

/// The whole printout on a page already turned the size's way: the page scale in
/// centimetres, the printer's defaults, the grid from the paper, then every label. False,
/// with nothing printed, when no label was printed (the size does not fit the paper, after
/// a message, or every animal picked has gone).
bool printHutchLabels(PrintSurface &page, Session &session, Prompts &prompts, const LabelOptions &options,
                      const QList<qint64> &picked);

/// The animals the labels are picked from: every animal of the stud, in the order of the
/// sire and dam lists (sex, archive, name). A list holds at most limit animals: beyond that
/// the breeder is told to archive some stock and the list stops there.
inline constexpr qsizetype kLabelListLimit = 10'000'000;
struct LabelStockList
{
    QList<qint64> numbers;
    bool cut = false; // the stud held more than the list takes
};
LabelStockList labelStockList(Database &db, Prompts &prompts, qsizetype limit = kLabelListLimit);
QString tooManyLivestockText();

/// The animals ticked in a list of a stud's animals, kept by number whatever the list's
/// length: all or none, and the numbers ticked otherwise.
class LabelTicks
{
public:
    bool ticked(qint64 number) const { return m_all != m_changed.contains(number); }
    void setTicked(qint64 number, bool on);
    /// Every animal ticked, or none.
    void setAll(bool on);
    /// The animals ticked, in the list's order.
    QList<qint64> picked(const QList<qint64> &list) const;

private:
    bool m_all = false;
    QSet<qint64> m_changed; // the animals whose tick differs from m_all
};

} // namespace tarvex
