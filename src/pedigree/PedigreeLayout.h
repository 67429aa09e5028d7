#pragma once

#include "PedigreeTable.h"

#include <QList>
#include <QString>

namespace tarvex {

/// One box of the pedigree window, laid out on a surface one unit wide per generation
/// and 32 units high. A box whose left is at or beyond the generations shown lies off the
/// surface and is not seen.
struct PedigreeBox
{
    enum Back { ButtonFace, Yellow, Red };

    int index = 0;
    int generation = 0;
    int position = 0;
    double left = 0, top = 0, width = 1, height = 0;
    QString fontName;
    int fontSize = 8;
    QString caption; // lines end with a single carriage return
    QString tag;     // the animal's number as text, "-1" for an empty place
    QString hint;
    Back back = ButtonFace;
};

/// The words that open each box: the sire and dam terms followed by ": ".
struct PedigreeCaptions
{
    QString sire, dam;
};

/// The font of a box of a generation, from the base size of the window.
void boxFont(int generation, int baseSize, QString *name, int *size);

/// The text of a place in a style (1 to 5), opening with its role.
QString boxText(const PedigreeCell &cell, int generation, int position, int style, const PedigreeCaptions &captions);

/// Sets the font, caption, hint and tag of a box from its place of the table.
void Fill_Box(PedigreeBox &box, const PedigreeTable &table, int style, int baseFontSize,
              const PedigreeCaptions &captions);

/// All 62 boxes of the window for a style.
QList<PedigreeBox> GetStockDetails(const PedigreeTable &table, int style, int baseFontSize,
                                   const PedigreeCaptions &captions);

/// Create mode: the empty places whose child is on file (or the subject's parents) turn
/// yellow with "Click Here To Create"; every other box loses its hint.
void markCreatable(const PedigreeTable &table, QList<PedigreeBox> &boxes);

/// The summary shown while the right mouse button is held on a box.
QString summaryText(const PedigreeCell &cell, int index, const PedigreeCaptions &captions);

} // namespace tarvex
