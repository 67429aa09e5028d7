#include "LitterStats.h"

#include "core/PrintSurface.h"
#include "store/Recordset.h"
#include "store/StockRow.h"
#include "store/StudDatabase.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

QString unknownIfEmpty(const QString &value)
{
    return value.isEmpty() ? u"Unknown"_s : value;
}

QString valueOf(const Offspring &young, StatsView view)
{
    switch (view) {
    case StatsView::Sex:
        return unknownIfEmpty(young.sex);
    case StatsView::Breed:
        return unknownIfEmpty(young.type);
    case StatsView::Colour:
        return unknownIfEmpty(young.colour);
    case StatsView::Status:
    case StatsView::Summary:
        break;
    }
    return unknownIfEmpty(young.status);
}

QString average(int total, qsizetype rows)
{
    return QString::number(rows > 0 ? double(total) / double(rows) : 0.0, 'f', 2);
}

} // namespace

std::array<StatsOption, 5> statsOptions(const QString &colourWord)
{
    return {{{u"&Sex"_s, u"Show Statistics by Sex"_s},
             {u"&Breed"_s, u"Show Statistics by Breed"_s},
             {u"&"_s + colourWord, u"Show Statistics by Colour"_s},
             {u"S&tatus"_s, u"Show Statistics by Status"_s},
             {u"S&ummary"_s, u"Show Statistics Summary"_s}}};
}

QString statsTitle(const QString &name)
{
    return u"Litter Statistics for : "_s + name;
}

QString offspringQuery(qint64 sire, qint64 dam)
{
    QStringList terms;
    if (sire != -1)
        terms << u"Sire = "_s + QString::number(sire);
    if (dam != -1)
        terms << u"Dam = "_s + QString::number(dam);
    if (terms.isEmpty())
        return {};
    return u"Select * From Stock Where "_s + terms.join(u" AND "_s);
}

QList<Litter> Load_litter_Dates(const QList<Offspring> &offspring, const QString &maleWord,
                                const QString &femaleWord, bool partnerIsDam)
{
    QList<Litter> litters;
    for (qsizetype i = 0; i < offspring.size(); ++i) {
        const Offspring &young = offspring.at(i);
        auto litter = std::find_if(litters.begin(), litters.end(),
                                   [&](const Litter &l) { return l.date == young.dob; });
        if (litter == litters.end()) {
            Litter added;
            added.date = young.dob;
            const std::optional<qint64> partner = partnerIsDam ? young.dam : young.sire;
            if (partner && *partner >= 1)
                added.partner = partner;
            litters.append(added);
            litter = litters.end() - 1;
        }
        ++litter->young;
        if (young.sex == maleWord)
            ++litter->males;
        else if (young.sex == femaleWord)
            ++litter->females;
        litter->members.append(i);
    }
    // The young with no day of birth come after every dated litter.
    std::stable_sort(litters.begin(), litters.end(), [](const Litter &a, const Litter &b) {
        if (a.date.has_value() != b.date.has_value())
            return a.date.has_value();
        return a.date && *a.date < *b.date;
    });
    return litters;
}

LitterStats::LitterStats(Session &session, Prompts &prompts) : m_session(session), m_prompts(prompts) {}

bool LitterStats::load(qint64 sire, qint64 dam)
{
    m_offspring.clear();
    m_litters.clear();
    m_partnerNames.clear();
    const QString query = offspringQuery(sire, dam);
    Database &db = m_session.Stud->handle();
    if (!query.isEmpty()) {
        Recordset rows(db, query + u" ORDER BY Number"_s);
        for (; !rows.eof(); rows.moveNext()) {
            const StockRow r = stockRowOf(rows);
            m_offspring.append({r.type, r.colour, r.status, r.sex, r.dob, r.sire, r.dam});
        }
    }
    if (m_offspring.isEmpty()) {
        m_prompts.show(u"No stock Found"_s);
        return false;
    }
    m_partnerIsDam = sire != -1;
    m_litters = Load_litter_Dates(m_offspring, m_session.MaleWord, m_session.FemaleWord, m_partnerIsDam);
    for (const Litter &l : std::as_const(m_litters))
        m_partnerNames << (l.partner ? Get_Stock_Name(db, *l.partner) : QString());
    return true;
}

QString LitterStats::dateText(const Litter &litter) const
{
    return litter.date ? m_session.Dates.format(*litter.date) : u"Unknown"_s;
}

StatsTable LitterStats::table(StatsView view) const
{
    return view == StatsView::Summary ? summary() : byValue(view);
}

StatsTable LitterStats::summary() const
{
    StatsTable t;
    t.caption = u"Litter Summary"_s;
    t.heads = {u"Date"_s, u"Number"_s, m_session.MaleWord + u's', m_session.FemaleWord + u's',
               m_partnerIsDam ? m_session.MotherWord : m_session.FatherWord};
    t.rightAligned = {false, true, true, true, false};
    int young = 0, males = 0, females = 0;
    for (qsizetype i = 0; i < m_litters.size(); ++i) {
        const Litter &l = m_litters.at(i);
        t.rows.append({dateText(l), QString::number(l.young), QString::number(l.males), QString::number(l.females),
                       m_partnerNames.value(i)});
        young += l.young;
        males += l.males;
        females += l.females;
    }
    t.rows.append({u"Total"_s, QString::number(young), QString::number(males), QString::number(females), QString()});
    t.summaryRows = 1;
    return t;
}

StatsTable LitterStats::byValue(StatsView view) const
{
    StatsTable t;
    switch (view) {
    case StatsView::Sex:
        t.caption = u"Sex"_s;
        break;
    case StatsView::Breed:
        t.caption = u"Breed"_s;
        break;
    case StatsView::Colour:
        t.caption = m_session.ColourWord;
        break;
    case StatsView::Status:
    case StatsView::Summary:
        t.caption = u"Status"_s;
        break;
    }

    // One column per value, the stud comparing its texts without regard to case: "black"
    // counts with the "Black" seen first.
    QStringList values;
    QList<qsizetype> column(m_offspring.size());
    for (qsizetype i = 0; i < m_offspring.size(); ++i) {
        const QString value = valueOf(m_offspring.at(i), view);
        const qsizetype at =
            std::find_if(values.cbegin(), values.cend(),
                         [&](const QString &v) { return v.compare(value, Qt::CaseInsensitive) == 0; }) -
            values.cbegin();
        if (at == values.size())
            values << value;
        column[i] = at;
    }

    t.heads << u"Date"_s << values << u"Totals"_s;
    t.rightAligned = QList<bool>(t.heads.size(), true);
    t.rightAligned[0] = false;
    QList<int> totals(values.size() + 1, 0);
    for (const Litter &l : m_litters) {
        QList<int> counts(values.size(), 0);
        for (const qsizetype young : l.members)
            ++counts[column.at(young)];
        QStringList row{dateText(l)};
        for (qsizetype c = 0; c < counts.size(); ++c) {
            row << QString::number(counts.at(c));
            totals[c] += counts.at(c);
        }
        row << QString::number(l.young);
        totals.last() += l.young;
        t.rows.append(row);
    }
    const qsizetype litterRows = m_litters.size();
    QStringList sums{u"Totals"_s}, averages{u"Average"_s};
    for (const int total : std::as_const(totals)) {
        sums << QString::number(total);
        averages << average(total, litterRows);
    }
    t.rows << sums << averages;
    t.summaryRows = 2;
    return t;
}

void printStatsTable(PrintSurface &page, const QString &title, const StatsTable &table)
{
    constexpr double kMargin = 720, kGap = 240;
    page.setScale(0, 0);
    const QSizeF size = page.pageSize();
    const double right = size.width() - kMargin;
    const double foot = size.height() - kMargin;
    page.setFontName(u"Arial"_s);

    page.CurrentX = kMargin;
    page.CurrentY = kMargin;
    page.setFontSize(14);
    page.setBold(true);
    page.print(title);
    page.CurrentX = kMargin;
    page.setFontSize(11);
    page.print(table.caption);
    page.setFontSize(10);

    // Each column as wide as its widest text, the heads being bold.
    const qsizetype columns = table.heads.size();
    QList<double> widths(columns, 0);
    for (qsizetype c = 0; c < columns; ++c) {
        page.setBold(true);
        widths[c] = page.textWidth(table.heads.at(c));
        for (qsizetype r = 0; r < table.rows.size(); ++r) {
            page.setBold(r >= table.rows.size() - table.summaryRows);
            widths[c] = std::max(widths[c], page.textWidth(table.rows.at(r).value(c)));
        }
    }
    page.setBold(false);
    const double lineHeight = page.textHeight(u"X"_s);

    // The bands of columns: the first column, then as many more as the width takes.
    QList<QList<qsizetype>> bands;
    double used = 0;
    for (qsizetype c = 1; c < columns; ++c) {
        if (bands.isEmpty() || (bands.last().size() > 1 && used + widths.at(c) > right)) {
            bands.append(QList<qsizetype>{0});
            used = kMargin + widths.at(0) + kGap;
        }
        bands.last().append(c);
        used += widths.at(c) + kGap;
    }
    if (bands.isEmpty())
        bands.append(QList<qsizetype>{0});

    const auto printRow = [&](const QList<qsizetype> &band, const QStringList &texts, bool bold) {
        page.setBold(bold);
        double x = kMargin;
        const double y = page.CurrentY;
        for (const qsizetype c : band) {
            const QString text = texts.value(c);
            page.CurrentY = y;
            page.CurrentX = table.rightAligned.value(c) ? x + widths.at(c) - page.textWidth(text) : x;
            page.printInline(text);
            x += widths.at(c) + kGap;
        }
        page.CurrentY = y + lineHeight;
    };
    const auto bandRight = [&](const QList<qsizetype> &band) {
        double x = kMargin;
        for (const qsizetype c : band)
            x += widths.at(c) + kGap;
        return x - kGap;
    };
    const auto printHeads = [&](const QList<qsizetype> &band) {
        printRow(band, table.heads, true);
        page.line(kMargin, page.CurrentY, bandRight(band), page.CurrentY);
    };

    for (const QList<qsizetype> &band : std::as_const(bands)) {
        page.CurrentY += lineHeight / 2;
        if (page.CurrentY + 2 * lineHeight > foot) {
            page.newPage();
            page.CurrentY = kMargin;
        }
        printHeads(band);
        for (qsizetype r = 0; r < table.rows.size(); ++r) {
            if (page.CurrentY + lineHeight > foot) {
                page.newPage();
                page.CurrentY = kMargin;
                printHeads(band);
            }
            const bool summary = r >= table.rows.size() - table.summaryRows;
            if (r == table.rows.size() - table.summaryRows)
                page.line(kMargin, page.CurrentY, bandRight(band), page.CurrentY);
            printRow(band, table.rows.at(r), summary);
        }
    }
    page.setBold(false);
    page.endDoc();
}

} // namespace tarvex
