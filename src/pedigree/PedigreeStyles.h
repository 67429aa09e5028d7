#pragma once

#include "core/Session.h"

#include <QList>
#include <QString>

namespace tarvex {

/// One entry of the pedigree style list: its text and its style code (1 to 5).
struct PedigreeStyle
{
    QString text;
    int code = 1;
    bool operator==(const PedigreeStyle &) const = default;
};

/// The five pedigree styles in list order; the colour term is the stud's own word.
QList<PedigreeStyle> pedigreeStyles(const QString &colourWord);

/// The stud's default style code: "Default Pedigree Type", 0 or 6 and above taken as 1.
int defaultPedigreeStyle(const Session &session);

/// The stud's default generations: "Default Generations"; a stored 0, 1 or 2 is a list
/// index and means 3, 4 or 5.
int Default_Generations(const Session &session);

/// The words of the pedigree window and sheet for a print type (1 a stud certificate).
struct ReportTitles
{
    QString title;
    QString certify;
    QString caption;
};
ReportTitles Set_Report_Titles(int printType, const QString &pedigreeWord, const QString &currentName,
                               bool testMating);

} // namespace tarvex
