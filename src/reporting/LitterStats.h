#pragma once

#include "core/Prompts.h"
#include "core/Session.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

namespace tarvex {

class PrintSurface;

/// One young of the animal, as far as its statistics need it.
struct Offspring
{
    QString type, colour, status, sex;
    std::optional<QDate> dob;
    std::optional<qint64> sire, dam;
};

/// The young born on one day, or those with no day of birth: how many, how many of each
/// sex, and the other parent of the first of them (when known).
struct Litter
{
    std::optional<QDate> date;
    int young = 0, males = 0, females = 0;
    std::optional<qint64> partner;
    QList<qsizetype> members; // positions in the offspring
};

/// The views of the statistics, by the index of their option.
enum class StatsView { Sex = 0, Breed = 1, Colour = 2, Status = 3, Summary = 4 };

/// A view as a grid shows it and a print lays it out: its caption, the heads of its
/// columns and its rows of texts, the last summaryRows of them totals and averages.
struct StatsTable
{
    QString caption;
    QStringList heads;
    QList<QStringList> rows;
    int summaryRows = 0;
    QList<bool> rightAligned; // per column: counts and averages
};

/// The caption and tip of each view's option, by index; the colour's takes the stud's term.
struct StatsOption
{
    QString caption, tip;
};
std::array<StatsOption, 5> statsOptions(const QString &colourWord);

/// "Litter Statistics for : " and the animal's name.
QString statsTitle(const QString &name);

/// The query of the young of a sire and a dam, -1 standing for neither; empty when both are.
QString offspringQuery(qint64 sire, qint64 dam);

/// Groups the young by day of birth (those with none in one group), in order of date with
/// that group last, counting each group's young of the male and female word. The partner
/// is the other parent: the dam when partnerIsDam, else the sire.
QList<Litter> Load_litter_Dates(const QList<Offspring> &offspring, const QString &maleWord,
                                const QString &femaleWord, bool partnerIsDam);

/// What an animal has produced: its young, read once, and its litters.
class LitterStats
{
public:
    LitterStats(Session &session, Prompts &prompts);

    /// Reads the young of the sire or of the dam (-1 for neither) and groups them into
    /// litters. False, after "No stock Found", when there are none. Throws StoreError when
    /// the stud cannot be read.
    bool load(qint64 sire, qint64 dam);

    const QList<Offspring> &offspring() const { return m_offspring; }
    const QList<Litter> &litters() const { return m_litters; }

    /// The view of an option: the summary of the litters, or the young counted by the
    /// values of one field.
    StatsTable table(StatsView view) const;
    /// "Litter Summary": per litter its date, young, males, females and the other parent,
    /// then a "Total" row.
    StatsTable summary() const;
    /// The young of each litter counted by each value of the field ("Unknown" where there
    /// is none), the values in order of their first appearance, with "Totals" per litter and
    /// per value and an "Average" per litter of the grid.
    StatsTable byValue(StatsView view) const;

private:
    QString dateText(const Litter &litter) const;

    Session &m_session;
    Prompts &m_prompts;
    QList<Offspring> m_offspring;
    QList<Litter> m_litters;
    QStringList m_partnerNames; // per litter
    bool m_partnerIsDam = true;
};

/// Prints a view under its title: the columns that do not fit the page's width continue
/// in further bands below, each starting again with the first column; a band that runs
/// past the page's foot goes on over the next page under its heads again.
void printStatsTable(PrintSurface &page, const QString &title, const StatsTable &table);

} // namespace tarvex
