#pragma once

#include "BrowseFilter.h"
#include "Litter.h"
#include "Relatives.h"
#include "StockValidation.h"

#include "core/Prompts.h"
#include "core/Session.h"

#include <functional>
#include <optional>

namespace tarvex {

/// What the record screen shows for the animal in hand.
struct RecordView
{
    qint64 number = 0;
    QString name, id1, id2, id3, breed, colour, breeder, status, archive, sex, dob, dod, age, weight, genotype,
        health, notes;
    int sireIndex = -1, damIndex = -1; // positions in the stud's sire and dam lists
    bool sireButton = false, damButton = false;
    bool litterEnabled = false, matingsEnabled = false;
    QVariant sire, dam;
};

/// The record screen's work on the stud's animals: browsing in name order with the browse
/// filter, adding and changing animals through Validate_Stock, removing them with all that
/// hangs on them. The screen shows what this returns and moves the focus it names.
class StockRecords
{
public:
    /// What a save of a new animal led to: within a litter entered by hand, the next young
    /// is begun, or the litter is ended after its last.
    enum class Save { Refused, Saved, NextOffspring, LitterEnded };
    enum class LitterStart { Refused, Created, OneByOne };
    enum class Removed { Kept, Removed, StockEmpty };

    StockRecords(Session &session, Prompts &prompts);

    BrowseFilter &filter() { return m_filter; }

    /// Starts browsing at the first animal by name that the filter lets through; false
    /// (after "No Records to Browse") when there is none.
    bool CmdBrowse();
    /// Puts an animal found by the search in hand, whatever the browse filter; false when it
    /// is no longer in the stud.
    bool showAnimal(qint64 number);
    /// Moves to the next or previous animal the filter lets through; false at either end,
    /// where the animal in hand stays.
    bool moveNext() { return move(true); }
    bool movePrevious() { return move(false); }
    /// What the record screen shows of the animal the cursor stands on, after each move: its
    /// fields formatted, its age, and a sire or dam that is not in the lists (an archived
    /// one) shown at the end of its list for as long as this animal is in hand.
    RecordView Stock_Reposition();
    void RestoreParentLists();
    /// Puts an animal picked by the quick search into the sire or dam list while this
    /// animal is in hand; returns its position there.
    int addParentChoice(bool sire, const QString &name, qint64 number);
    /// The stud's sire or dam list, and the animal shown at its end while this animal is in
    /// hand (an archived parent, or one picked by the quick search).
    std::shared_ptr<const ParentList> parentList(bool sire);
    const std::optional<ParentEntry> &parentAddition(bool sire) const { return sire ? m_sireAddition : m_damAddition; }
    bool HasOffspring();
    RelativesCache relatives();

    /// Begins a new animal; its number is taken at once. Returns the defaults to show.
    StockForm CmdNew();
    qint64 currentNumber() const { return m_currentNumber; }
    bool newInProgress() const { return m_newInProgress; }
    /// Saves the new animal; on Saved the cursor stands on it.
    Save CmdNewUpdate(StockForm &form, QString *focus);
    void CmdNewCancel();

    /// Ok on the litter panel: after the checks, the whole litter is created at once, or
    /// the first young is begun for entering by hand (Next_Litter_Offspring).
    LitterStart CmdNLOK(LitterForm &form, QString *focus);
    /// Begins the next young of a litter entered by hand; returns its values to show. Its
    /// day of birth and parents are the litter's and stay as they are.
    StockForm Next_Litter_Offspring();
    /// The young of the litter in hand still to be entered, the one being entered included.
    int litterRemaining() const { return m_litterRemaining; }
    /// Ends the litter in hand; what was saved of it stays.
    void End_Litter();

    /// Puts the animal in hand into editing.
    void CmdBrowseModify();
    Save CmdModifyOK(StockForm &form, QString *focus);
    void cmdModifyCancel();

    /// Asks, then removes the animal in hand with its diary, awards, genes, pictures and
    /// matings; its offspring keep their reference and show "Not Found".
    Removed CmdBrowseRemove();

    /// What follows when the name or the first identification of a new animal is left for
    /// the control named next: the duplicate check the stud's options ask for there runs
    /// (not when the user is cancelling); when the user gives the animal up, the new animal
    /// is cancelled; when the warning was shown on the way to Save, whose press it
    /// swallowed, the animal is saved.
    enum class NameLeft { Stay, CancelNew, SaveNew };
    NameLeft nameLeft(const QString &name, const QString &id1, const QString &nextControl);
    NameLeft idLeft(const QString &name, const QString &id1, const QString &nextControl);

    /// Reads the current animal again, after a screen of its own wrote to it.
    void refreshCurrent();

private:
    NameLeft boxLeft(bool nameBox, const QString &name, const QString &id1, const QString &nextControl);
    bool move(bool forward);
    Table &stock();
    bool save(const StockForm &form, bool withGenes, QString *focus);
    void refillParentList(const QString &sex);
    void updateGenes(const StockForm &form);
    bool filtered(bool forward, std::optional<qint64> bookmark);

    Session &m_session;
    Prompts &m_prompts;
    BrowseFilter m_filter;
    qint64 m_currentNumber = 0;
    bool m_newInProgress = false;
    int m_litterRemaining = 0;
    LitterForm m_litter;
    std::optional<ParentEntry> m_sireAddition, m_damAddition;
    std::optional<qint64> m_currentBookmark;
    QString m_rememberedName, m_rememberedArchive, m_rememberedSex, m_rememberedColour, m_rememberedBreeder,
        m_rememberedStatus, m_rememberedType;
};

} // namespace tarvex
