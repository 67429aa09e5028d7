#pragma once

#include "core/Prompts.h"
#include "core/Session.h"
#include "store/StockLookup.h"

#include <QDate>
#include <QList>
#include <QString>

#include <memory>
#include <optional>

namespace tarvex {

/// One mating as the matings screen lists it for the animal in hand.
struct MatingRow
{
    qint64 unique = 0;
    QDate matingDate, birthDate;         // invalid when not stored
    std::optional<qint64> partner;       // the other animal's number; nothing when not stored
    QString partnerName;                 // its name, "Not Found" when it is gone, empty when not stored
};

/// What Ok on a mating's panel hands over.
struct MatingForm
{
    std::optional<qint64> unique;  // the mating amended; nothing for a new one
    std::optional<qint64> partner; // the partner chosen; nothing when none is
    QString partnerText;           // the partner as the list shows it, for the diary line
    QString matingDate, birthDate; // as typed
    bool updateDiary = false;
};

/// The matings of one animal: listed from its side (by Sire for a male, by Dam for a
/// female), with the partner, the mating day and the expected birth day, which is the
/// mating day plus the stud's gestation period.
class Matings
{
public:
    Matings(Session &session, Prompts &prompts, qint64 number);

    /// Reads the animal's sex. An animal of unknown sex cannot have matings: "Matings Cannot
    /// be Recorded" is shown under "Unknown Sex" and the result is false.
    bool open();
    bool isMale() const { return m_male; }
    QString name() const { return m_name; }
    /// The caption of the partner's list: the word for the dam of a male, for the sire of a
    /// female.
    QString partnerWord() const;
    /// The animals offered as partners: the stud's dam list for a male, its sire list for a
    /// female, without the blank entry. Read once for the screen; a large stud's list holds
    /// hundreds of thousands of names.
    std::shared_ptr<const ParentList> partners();
    /// Where the partner of a mating stands in partners(); nothing when it is not there (no
    /// partner stored, or the partner has been removed or archived since), and the list then
    /// shows notFoundPartner() for it.
    std::optional<qsizetype> partnerPlace(const MatingRow &row);
    /// The entry shown for a partner no longer listed. It has no number, so a mating cannot
    /// be saved with it chosen.
    static ParentEntry notFoundPartner();

    /// The animal's matings in the order of the stud's index of its side.
    QList<MatingRow> rows() const;
    std::optional<MatingRow> find(qint64 unique) const;
    /// The mating the selected row of the list stands for, to amend: "Nothing Selected" when
    /// no row is selected, "System Error - Could not find Mating" when it has gone.
    std::optional<MatingRow> amend(std::optional<qint64> selected);

    /// The gestation in days, asked for (and kept among the stud's options) until it is at
    /// least 1. Read once for the life of the screen.
    int gestation();
    /// What the mating day's field holds once the user leaves it: today when it was blank.
    /// birthDate is filled with the day plus the gestation when it is blank and the mating
    /// day is a date; a birth day already there stays.
    void matingDateLeft(QString &matingDate, QString &birthDate);

    /// Saves the panel: "A partner must be selected", then "A valid date must be entered" for
    /// each of the two days. A new mating with the diary ticked leaves a line in the diary of
    /// both animals. All in one change. False when refused; focus names the control.
    bool save(const MatingForm &form, QString *focus);
    /// Removes the mating of the selected row: "Nothing Selected" when none is, "Woops -
    /// could not find it!" when it has gone; otherwise asks "Remove This Mating" and on Yes
    /// the mating goes (its diary lines stay). False when nothing was removed.
    bool remove(std::optional<qint64> selected);

private:
    /// The matings meeting a condition on the table, with their partners' names.
    QList<MatingRow> read(const QString &condition, const QVariantList &params) const;
    QString sideField() const { return m_male ? QStringLiteral("Sire") : QStringLiteral("Dam"); }
    QString otherField() const { return m_male ? QStringLiteral("Dam") : QStringLiteral("Sire"); }

    Session &m_session;
    Prompts &m_prompts;
    qint64 m_number;
    QString m_name;
    bool m_male = false;
    int m_gestation = -1;
    std::shared_ptr<const ParentList> m_partners;
};

/// The expected birth day of a mating: the mating day plus the gestation in days.
QDate dueDate(const QDate &matingDate, int gestationDays);

} // namespace tarvex
