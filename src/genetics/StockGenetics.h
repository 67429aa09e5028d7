#pragma once

#include "GeneticsData.h"

#include "core/Prompts.h"
#include "core/Session.h"

#include <QList>
#include <QStringList>

namespace tarvex {

/// The items of an allele list on the genotype screen, so that an item's place is its
/// allele number: "Unknown", then each allele of slots 1 to 8 that has a symbol, as
/// "symbol - description" (the symbol alone when there is no description).
QStringList alleleItems(const GeneDef &gene);

/// What the genotype screen needs of the animal in hand.
struct AnimalInHand
{
    qint64 number = 0;
    QString name, colour, type, sex, archive;
    bool sexRecorded = false;
};

/// The animal of that number as the genotype screens need it.
AnimalInHand animalInHand(Session &session, qint64 number);

/// Opening the genotype screen: makes the animal the one in hand and reads its genes;
/// an animal without any gets a first genotype from its colour.
void Open_Stock_Genetics(Session &session, Prompts &prompts, const AnimalInHand &animal);

/// The pairs to show, each in stored order; DisplayAlleles takes them too.
Genotype Show_Genotype(Session &session);

/// Stores the pairs chosen in the allele lists (list places are allele numbers).
void Store_Chosen_Alleles(Session &session, Prompts &prompts, const QList<AllelePair> &chosen);

} // namespace tarvex
