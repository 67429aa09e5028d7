#pragma once

#include "core/Prompts.h"
#include "core/Session.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace tarvex {

/// One show result of an animal. Unique tells two awards of one day apart.
struct AwardRow
{
    qint64 unique = 0;
    QDate date;
    QString venue, secretary, judge, award, comments;
    std::optional<qint64> entered, shown;
    std::optional<QString> stars, ccStars; // as stored; nothing for null
};

/// What the award panel holds, as typed. The two numbers are the texts of their masks
/// ("___" when blank).
struct AwardForm
{
    QString date, venue, secretary, judge, award, stars, ccStars, entered, shown, comments;
};

/// A column of the award list: its head, the text whose width it is given, and whether its
/// texts stand at the right (the numbers). With the points system off, the columns marked
/// widened share the room of the two points columns.
struct AwardColumn
{
    QString head;
    QString widthPattern;
    bool rightAligned = false;
    bool widened = false;
};

/// The longest text each field of an award takes.
namespace AwardLimits {
inline constexpr int Venue = 50;
inline constexpr int Secretary = 20;
inline constexpr int Judge = 20;
inline constexpr int Award = 45;
inline constexpr int BestAward = 25;
} // namespace AwardLimits

/// The championship stars of show results added up as the program has always added them:
/// each text's leading number, the sum held to a whole number at each addition (halves to
/// the even number). The total beside an animal in its pedigree and on its awards list.
class StarTotal
{
public:
    void add(const QString &ccStars);
    qint16 value() const { return static_cast<qint16>(m_total); }

private:
    double m_total = 0;
};

/// The distinct awards, judges and clubs of every animal's show results, in index order,
/// each read with one seek.
QStringList Fill_Award_Names(Database &db);
QStringList Fill_Judge_Names(Database &db);
QStringList Fill_Venue_Names(Database &db);

/// The show results of one animal: the list with its columns and the total of championship
/// stars, the vocabularies the panel offers, new, amended and removed awards, and the best
/// award kept on the animal itself for its pedigree.
class Awards
{
public:
    Awards(Session &session, Prompts &prompts, qint64 number, const QString &name);

    /// The list's columns; with the points system on, the points' name and "Awarded" follow
    /// "Award". "Date v" names the column the list is in order of, although it is ascending.
    QList<AwardColumn> Build_Award_Columns() const;
    /// The width patterns of the points columns when the points system is off (their room
    /// goes to the widened columns); none when it is on.
    QStringList absentWidthPatterns() const;
    /// The animal's awards in date order (then the order entered), and the window's caption:
    /// "Awards For <name>", with " (Total CC Stars: n)" when the points system is on and the
    /// championship stars add up to other than 0.
    QList<AwardRow> Load_Award_List();
    QString caption() const { return m_caption; }
    /// The texts of a list row in column order; the date in its short form (two-digit year).
    QStringList rowTexts(const AwardRow &row) const;
    /// The date as the list's first column shows it.
    QString shortDate(const QDate &date) const;

    /// The star lists: an empty entry, then 1 up to the stud's highest points.
    QStringList Fill_Star_Lists() const;

    /// The award of the selected row, to amend: "Nothing Selected" when no row is selected,
    /// "System Error - Could not find Award" when it has gone.
    std::optional<AwardRow> amend(std::optional<qint64> selected);
    /// The panel's texts for an award, as amending fills them.
    AwardForm formOf(const AwardRow &row) const;

    /// When the award is left with the points system on: a challenge certificate ("CC",
    /// "C.C.", "CHALLENGE CERTIFICATE", "CHALLENGE" or "CERTIFICATE", the whole text in any
    /// case) that was changed takes the show's stars as its championship stars. The new
    /// championship stars, or nothing when they stay.
    std::optional<QString> AAward_LostFocus(const QString &award, const QString &awardOnFocus,
                                            const QString &stars) const;
    /// The club's name as it is kept: at most 50 characters, trimmed.
    static QString AVenue_LostFocus(const QString &venue);
    /// The secretaries of a club, the latest entered first: what the secretary list offers
    /// for a new award once the club is known.
    QStringList secretariesOf(const QString &venue) const;

    /// Saves the panel as a new award, or over the one amended (whose date change gives it a
    /// new Unique). A blank date gives "A valid date must be entered"; an invalid one the
    /// date check's box. The texts are cut to their fields and trimmed, written back into
    /// the form. False when refused; focus names the control.
    bool save(AwardForm &form, const std::optional<AwardRow> &amending, QString *focus);
    /// Removes the award of the selected row: "Nothing Selected" when none is, "Whoops -
    /// could not find it!" when it has gone; otherwise asks "Remove This Award". False when
    /// nothing was removed.
    bool remove(std::optional<qint64> selected);

    /// The choices of the best award: the one kept on the animal first, then each award of
    /// the animal once, in date order.
    QStringList bestAwardChoices() const;
    QString bestAward() const;
    /// Keeps the first 25 characters of the text as the animal's best award.
    void setBestAward(const QString &text);

private:
    std::optional<AwardRow> find(qint64 unique) const;

    Session &m_session;
    Prompts &m_prompts;
    qint64 m_number;
    QString m_name;
    QString m_caption;
};

} // namespace tarvex
