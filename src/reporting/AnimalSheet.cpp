#include "AnimalSheet.h"

#include "SearchResultsSheet.h"
#include "SheetPrint.h"

#include "images/DefaultImage.h"
#include "store/DaySerial.h"
#include "store/StockRow.h"
#include "store/StudDatabase.h"

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

constexpr const OptionKey *kSectionKeys[kSheetSections] = {
    &Opt::PrintGeneral, &Opt::PrintHealth,        &Opt::PrintNotes,   &Opt::PrintAwards,
    &Opt::PrintDiary,   &Opt::PrintAwardComments, &Opt::PrintMatings, &Opt::PrintImage};

bool ticked(const SheetSections &sections, SheetSection s)
{
    return sections[static_cast<int>(s)];
}

class AnimalSheet
{
public:
    AnimalSheet(PrintSurface &page, Session &session, const StockRow &animal, const SheetSections &sections)
        : m_page(page), m_session(session), m_db(session.Stud->handle()), m_animal(animal), m_sections(sections),
          m_sheet(page, [this](bool continued) {
              PrintSheetHeader(m_page, m_session.StudName, m_animal.name, continued);
          })
    {
    }

    void image()
    {
        const QString path = GetDefaultImagePath(m_db, m_animal.number);
        if (!path.isEmpty())
            m_sheet.PrintDefaultImage(path);
    }

    void general()
    {
        const Session &s = m_session;
        const StockRow &a = m_animal;
        m_page.CurrentY += 1;
        m_sheet.PrintDetailRow(u"Breed"_s, a.type, s.IdWord, a.ringNo);
        if (!s.Id2Word.isEmpty() && !s.Id3Word.isEmpty()) {
            m_sheet.PrintDetailRow(u"Sex"_s, a.sex, s.Id2Word, a.id2);
            m_sheet.PrintDetailRow(s.ColourWord, a.colour, s.Id3Word, a.id3);
        } else if (!s.Id2Word.isEmpty()) {
            m_sheet.PrintDetailRow(u"Sex"_s, a.sex, s.Id2Word, a.id2);
        } else {
            m_sheet.PrintDetailRow(s.ColourWord, a.colour, u"Sex"_s, a.sex);
        }
        const QString sire = a.sire ? Get_Stock_Name(m_db, *a.sire) : QString();
        const QString dam = a.dam ? Get_Stock_Name(m_db, *a.dam) : QString();
        const double rowTop = m_page.CurrentY;
        m_sheet.PrintDetailRow(s.FatherWord, sire, u"Date of Birth"_s, date(a.dob));
        if (a.dod && m_page.CurrentY > rowTop) {
            // The day of death follows the day of birth on its row.
            m_page.setFontSize(12);
            m_page.CurrentX = 168;
            m_page.CurrentY = rowTop;
            m_page.printInline(u"To "_s);
            m_page.setBold(true);
            m_page.printInline(date(a.dod));
            m_page.setBold(false);
            m_page.CurrentX = 0;
            m_page.CurrentY = rowTop + m_page.textHeight(u"X"_s);
        }
        m_sheet.PrintDetailRow(s.MotherWord, dam, u"Status"_s, a.status);
        m_sheet.PrintDetailRow(u"Breeder"_s, a.breeder, a.genotype.isEmpty() ? QString() : u"Genotype"_s,
                               a.genotype);
        m_sheet.rule();
    }

    void wrapped(const QString &label, const QString &text)
    {
        if (text.isEmpty())
            return;
        m_page.CurrentY += 1;
        m_page.setFontSize(12);
        m_sheet.PrintWrappedSection(label, text);
        m_sheet.rule();
    }

    void awards()
    {
        const bool stars = m_session.PointsOn;
        bool headed = false;
        m_db.eachRow(u"SELECT * FROM Awards WHERE Number = ? ORDER BY Number, Date, \"Unique\""_s, {m_animal.number},
                     [&](const Row &row) {
                         if (!headed || m_page.CurrentY >= 273) {
                             if (headed)
                                 m_sheet.continuation();
                             Print_Awards_Heading(stars);
                             headed = true;
                         }
                         award(row, stars);
                     });
    }

    void diary()
    {
        bool headed = false;
        m_db.eachRow(u"SELECT Date, Notes FROM BreedNote WHERE Number = ? ORDER BY Number, Date, \"Unique\""_s,
                     {m_animal.number}, [&](const Row &row) {
                         if (!headed || m_page.CurrentY >= 274) {
                             if (headed)
                                 m_sheet.continuation();
                             Print_Diary_Heading();
                             headed = true;
                         }
                         m_page.setFontSize(10);
                         m_page.setBold(false);
                         m_page.CurrentX = 2;
                         const double y = m_page.CurrentY;
                         PrintDate(m_page, serialDate(row, u"Date"_s), 17);
                         m_page.CurrentY = y;
                         m_sheet.PrintWrappedSection(QString(), row.text(u"Notes"_s), false);
                         m_sheet.rule();
                     });
    }

    void matings()
    {
        const bool male = m_animal.sex.compare(m_session.MaleWord, Qt::CaseInsensitive) == 0 &&
                          !m_session.MaleWord.isEmpty();
        const QString own = male ? u"Sire"_s : u"Dam"_s;
        const QString partner = male ? u"Dam"_s : u"Sire"_s;
        bool headed = false;
        m_db.eachRow(u"SELECT MatingDate, Birthdate, "_s + partner + u" AS Partner FROM Matings WHERE "_s + own +
                         u" = ? ORDER BY "_s + own + u", rowid"_s,
                     {m_animal.number}, [&](const Row &row) {
                         if (!headed || m_page.CurrentY >= 274) {
                             if (headed)
                                 m_sheet.continuation();
                             Print_Matings_Heading(male);
                             headed = true;
                         }
                         m_page.setFontSize(10);
                         m_page.setBold(false);
                         const double y = m_page.CurrentY;
                         PrintDateCell(m_page, 2, y, serialDate(row, u"MatingDate"_s), 20);
                         PrintDateCell(m_page, 32, y, serialDate(row, u"Birthdate"_s), 20);
                         PrintCell(m_page, 62, y,
                                   row.isNull(u"Partner"_s) ? QString() : Get_Stock_Name(m_db, row.number(u"Partner"_s)),
                                   160);
                         m_page.CurrentX = 0;
                         m_page.CurrentY = y + m_page.textHeight(u"X"_s);
                     });
    }

private:
    QString date(const std::optional<QDate> &d) const { return d ? m_session.Dates.format(*d) : QString(); }
    QString serialDate(const Row &row, const QString &field) const
    {
        return row.isNull(field) ? QString() : m_session.Dates.format(DaySerial::toDate(row.value(field)));
    }

    // A section's title: a new page first when less than a seventh of this one is left.
    void sectionTitle(const QString &title)
    {
        m_sheet.breakAt(240);
        m_page.setFontSize(12);
        m_page.setBold(true);
        m_page.setItalic(false);
        m_page.CurrentX = 2;
        m_page.print(title);
        m_page.setBold(false);
    }

    void heads(std::initializer_list<std::pair<double, QString>> at, double size = 10)
    {
        m_page.setFontSize(size);
        m_page.setBold(false);
        const double y = m_page.CurrentY;
        for (const auto &[x, text] : at) {
            m_page.CurrentX = x;
            m_page.CurrentY = y;
            m_page.printInline(text);
        }
        m_page.CurrentX = 0;
        m_page.CurrentY = y + m_page.textHeight(u"X"_s);
    }

    void Print_Matings_Heading(bool male)
    {
        m_sheet.breakAt(240);
        m_page.CurrentY += 1;
        sectionTitle(u"Matings"_s);
        heads({{2, u"Mating Date"_s}, {32, u"Birth Date"_s}, {62, male ? m_session.MotherWord : m_session.FatherWord}});
    }

    void Print_Awards_Heading(bool stars)
    {
        sectionTitle(u"Awards"_s);
        m_page.setFontSize(10);
        const double y = m_page.CurrentY;
        heads({{2, u"Date"_s}, {18, u"Club"_s}, {90, u"Judge/Secretary"_s}, {150, u"Award"_s}});
        const double below = m_page.CurrentY;
        m_page.CurrentY = y;
        if (stars)
            m_sheet.PrintRightJustify(m_session.PointsName, 87);
        m_sheet.PrintRightJustify(u"Entered"_s, 136);
        m_sheet.PrintRightJustify(u"Shown"_s, 148);
        if (stars)
            m_sheet.PrintRightJustify(u"Awarded"_s, 197);
        m_page.CurrentX = 0;
        m_page.CurrentY = below;
    }

    void Print_Diary_Heading() { sectionTitle(u"Diary"_s); }

    void award(const Row &row, bool stars)
    {
        m_page.setFontSize(10);
        m_page.setBold(false);
        m_page.setItalic(false);
        const double y = m_page.CurrentY;
        const double line = m_page.textHeight(u"X"_s);
        int lines = 1;
        const auto at = [&](double x) {
            m_page.CurrentX = x;
            m_page.CurrentY = y;
        };
        at(2);
        // The club follows at 18: the date keeps clear of it, in a smaller font if need be.
        PrintDate(m_page, serialDate(row, u"Date"_s), 15.5);
        at(18);
        const double venueWidth = stars ? 63 : 68;
        const QString venue = row.text(u"Venue"_s).trimmed();
        if (m_page.textWidth(venue) > venueWidth)
            lines = 2;
        m_sheet.Print2LineWrap(venue, 18, venueWidth, venueWidth);
        if (stars) {
            at(0);
            m_sheet.PrintRightJustify(row.text(u"Stars"_s), 87);
        }
        const QString judge = row.text(u"Judge"_s);
        const QString secretary = row.text(u"Secretary"_s);
        at(90);
        PrintFitted(m_page, judge, 44);
        if (!secretary.isEmpty()) {
            m_page.CurrentX = 90;
            m_page.CurrentY = judge.isEmpty() ? y : y + line;
            PrintFitted(m_page, secretary, 44);
            if (!judge.isEmpty())
                lines = 2;
        }
        at(0);
        m_sheet.PrintRightJustify(row.text(u"NoEntered"_s), 136);
        m_sheet.PrintRightJustify(row.text(u"NoShown"_s), 148);
        at(150);
        if (stars) {
            const QString cc = row.text(u"CCStars"_s);
            PrintFitted(m_page, row.text(u"Award"_s), 197 - 150 - m_page.textWidth(cc) - 1);
            at(0);
            m_sheet.PrintRightJustify(cc, 197);
        } else {
            PrintFitted(m_page, row.text(u"Award"_s), 199 - 150 - 1);
        }
        m_page.CurrentX = 0;
        m_page.CurrentY = y + lines * line;
        const QString comments = row.text(u"Comments"_s);
        if (ticked(m_sections, SheetSection::AwardComments) && !comments.trimmed().isEmpty())
            m_sheet.PrintWrappedSection(u"Critique"_s, comments, false);
        m_sheet.rule();
    }

    PrintSurface &m_page;
    Session &m_session;
    Database &m_db;
    const StockRow &m_animal;
    const SheetSections &m_sections;
    SheetPrinter m_sheet;
};

} // namespace

SheetSections readSheetSections(const Options &options)
{
    SheetSections sections{};
    for (int i = 0; i < kSheetSections; ++i)
        sections[i] = options.flag(*kSectionKeys[i]);
    return sections;
}

void saveSheetSections(Options &options, const SheetSections &sections)
{
    for (int i = 0; i < kSheetSections; ++i)
        options.setFlag(*kSectionKeys[i], sections[i]);
}

bool printAnimalSheet(PrintSurface &page, Session &session, qint64 number, const SheetSections &sections)
{
    const std::optional<StockRow> animal = readAnimal(session.Stud->handle(), number);
    if (!animal) {
        page.killDoc();
        return false;
    }
    SetPrinterDefaults(page);
    SetSheetScale(page);
    PrintSheetHeader(page, session.StudName, animal->name, false);
    AnimalSheet sheet(page, session, *animal, sections);
    if (ticked(sections, SheetSection::Image))
        sheet.image();
    if (ticked(sections, SheetSection::General))
        sheet.general();
    if (ticked(sections, SheetSection::Health))
        sheet.wrapped(u"Health"_s, animal->health);
    if (ticked(sections, SheetSection::Notes))
        sheet.wrapped(u"Notes"_s, animal->notes);
    if (ticked(sections, SheetSection::Awards))
        sheet.awards();
    if (ticked(sections, SheetSection::Diary))
        sheet.diary();
    if (ticked(sections, SheetSection::Matings))
        sheet.matings();
    page.endDoc();
    return true;
}

} // namespace tarvex
