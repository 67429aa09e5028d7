#include "PedigreeStyles.h"

#include "core/Options.h"

using namespace Qt::StringLiterals;

namespace tarvex {

QList<PedigreeStyle> pedigreeStyles(const QString &colourWord)
{
    return {{colourWord + u" Based"_s, 1},
            {u"Name Based"_s, 2},
            {u"Name Based Without ID"_s, 3},
            {colourWord + u" Based Without ID"_s, 4},
            {u"Genotype and Name"_s, 5}};
}

int defaultPedigreeStyle(const Session &s)
{
    const int value = Options(s).number(Opt::DefaultPedigreeType);
    return (value <= 0 || value >= 6) ? 1 : value;
}

int Default_Generations(const Session &s)
{
    // The number is kept in a byte, as it always was.
    const quint8 value = quint8(Options(s).number(Opt::DefaultGenerations));
    return value < 3 ? value + 3 : value;
}

ReportTitles Set_Report_Titles(int printType, const QString &pedigreeWord, const QString &currentName,
                               bool testMating)
{
    ReportTitles t;
    t.title = printType == 1 ? u"Stud Certificate"_s : pedigreeWord;
    t.certify = u"I certify this "_s + t.title + u" to be correct to the best of my knowledge"_s;
    t.caption = t.title + (testMating ? u" For Test Mating"_s : u" For "_s + currentName);
    return t;
}

} // namespace tarvex
