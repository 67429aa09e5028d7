#pragma once

#include "core/Prompts.h"
#include "core/Session.h"
#include "pedigree/PedigreeTable.h"
#include "reporting/Duplicate.h"

#include <optional>

#include <QString>

namespace tarvex {

/// The few details of an ancestor typed in from the pedigree.
struct NewAncestor
{
    QString name, ringNo, type, colour, breeder, status, archive;
};

/// Adds the ancestor as an animal of the sire's or dam's sex with both its parents
/// unknown (-1); returns its number. Throws StoreError when it cannot be saved.
qint64 addAncestor(Session &session, const NewAncestor &ancestor, bool sire);

/// Makes parent the sire (or dam) of the child. False, after "Offspring not Found", when
/// the child is gone.
bool Link_Offspring(Session &session, Prompts &prompts, qint64 child, qint64 parent, bool sire);

/// The place of the pedigree a new ancestor fills: its generation and position, the animal
/// whose parent it becomes, the breed it starts with, and whether it is the sire.
struct AncestorTarget
{
    int generation = 0;
    int position = 0;
    qint64 child = 0;
    QString breed;
    bool sire = false;
};

/// The target of box index (1 to 62) of a pedigree of subject (of breed subjectType): a
/// parent of the subject, or of the animal in the place it descends from. Nothing when that
/// place is itself empty.
std::optional<AncestorTarget> ancestorTarget(const PedigreeTable &table, int index, qint64 subject,
                                             const QString &subjectType);

/// Whether a new ancestor typed in is given up when its name or identification (left) is
/// left for the control named next: the duplicate check the stud's options ask for there
/// runs unless the user is adding or cancelling.
bool ancestorGivenUp(Session &session, DuplicateField left, const QString &name, const QString &id,
                     const QString &nextControl);

/// Adds the ancestor and links it to the child as one change: when the child is gone or
/// the save fails, neither happens. Returns the new number, or -1.
qint64 createAncestor(Session &session, Prompts &prompts, const NewAncestor &ancestor, qint64 child, bool sire);

} // namespace tarvex
