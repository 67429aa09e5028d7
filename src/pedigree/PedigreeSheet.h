#pragma once

#include "PedigreeLayout.h"
#include "PedigreeTable.h"

#include "core/PrintSurface.h"
#include "core/Progress.h"
#include "core/Prompts.h"
#include "core/Session.h"

#include <QHash>

#include <functional>

namespace tarvex {

/// True when a name carries a champion title: "CH." or "CH" or "CHAMPION" as a word.
bool Is_Champion_Name(const QString &name);
/// True when an award has BEST or CHAMPION as a word followed by a blank.
bool Is_Champion_Award(const QString &award);

/// Prints a text cut to a width limit, on one line, at (x, y).
void PrintFitted(PrintSurface &page, QString text, double x, double y, double limit);
/// Prints a text at (x, y), broken once at a blank when it is too wide; a text without
/// blanks is cut instead.
void Print_Wrapped(PrintSurface &page, const QString &text, double x, double y, double limit);

/// What a pedigree sheet is printed from.
struct PedigreeSheetJob
{
    PedigreeTable *table = nullptr;
    int style = 1;
    int generations = 5;
    PedigreeCaptions captions;
    QString certifyLine;       // from the report titles
    QString subjectType;       // the breed whose own watermark is used first
    bool keepSubject = false;  // the reports print their own subject
    bool blank = false;        // a form to fill in by hand: no subject, every place empty
    /// The coefficient of inbreeding (and the parents' relationship) under the grid, and a
    /// frame of its colour (0xRRGGBB) round each common ancestor's places; empty for the
    /// plain sheet.
    QStringList inbreedingLines;
    QHash<qint64, quint32> marks;
};

/// Prints the one-page pedigree or stud certificate: heading, watermark and logo, the
/// subject's particulars, the grid and the 62 ancestors (champions in red), the signature
/// block, telling progress 68 steps. False, after "Requested Stock Not Found", when the
/// subject has gone since the pedigree was read; the document is then abandoned.
bool printPedigreeSheet(PrintSurface &page, Session &session, Prompts &prompts, const PedigreeSheetJob &job,
                        Progress &progress = noProgress());

} // namespace tarvex
