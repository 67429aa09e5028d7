#pragma once

#include "core/Progress.h"
#include "core/Prompts.h"
#include "core/Session.h"

#include <functional>

namespace tarvex {

/// Fills in unknown alleles of the animal in hand (CurrentStockNo) from its parents: an
/// allele a homozygous parent must have passed on. Asks before storing a change unless
/// silent and free of conflicts; a gene in conflict keeps its alleles and is named.
void Examine_Parents(Session &session, Prompts &prompts, bool silent);

/// The same from the animal's offspring: a homozygous child, or a child's allele its other
/// parent cannot have given, must have come from this animal. Only for a male or female
/// animal (the stud's sex words).
void Examine_Offspring(Session &session, Prompts &prompts, const QString &sex, bool silent);

/// Gives every animal of the stud, in name order, a genotype from its colour when it has
/// none, and examines it against its parents and offspring, asking only where an answer
/// is needed. Tells progress each animal with its name and its parents' names. Stopped by
/// the user, it keeps the animals finished and gives false. Does nothing when the genetics
/// files cannot be read.
bool Check_All_Genotypes(Session &session, Prompts &prompts, Progress &progress = noProgress());

} // namespace tarvex
