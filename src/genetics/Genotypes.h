#pragma once

#include "GeneticsData.h"

#include "core/Prompts.h"
#include "core/Session.h"

#include <QHash>

namespace tarvex {

/// Brings a pair into its stored order: the lower allele first, an unknown (0) last.
void Order_Alleles(quint8 &first, quint8 &second);

/// Reads the stud's genetics files if genetics is on and they are not read yet; true
/// when they are ready. A fatal fault in a file ends the program after its box.
bool Ensure_Genetics_Loaded(Session &session, Prompts &prompts);

/// The genes of animals read during one walk over the stud.
struct GenesReadCache
{
    struct Entry
    {
        Genotype alleles{};
        quint16 read = 0; // bit i: a row for gene index i
    };
    QHash<qint64, Entry> animals;
};

/// Keeps genes read (and written) in memory for as long as it lives. Only for work in
/// which nothing but Write_Genes changes the Genes table.
class CachedGeneReads
{
public:
    explicit CachedGeneReads(Session &session) : m_session(session) { session.GenesCache = &m_cache; }
    ~CachedGeneReads() { m_session.GenesCache = nullptr; }
    CachedGeneReads(const CachedGeneReads &) = delete;
    CachedGeneReads &operator=(const CachedGeneReads &) = delete;

private:
    Session &m_session;
    GenesReadCache m_cache;
};

/// Fills CurrentAlleles (and DisplayAlleles) from the animal's rows in Genes; true when a
/// row was read. An Id the genetics file does not know shows "Unknown Gene Number" and ends
/// the reading there.
bool Read_Genes(Session &session, Prompts &prompts, qint64 stockNo);

/// Stores CurrentAlleles for CurrentStockNo: a row per gene with an allele known, none for
/// a gene wholly unknown; the animal's GenoType follows. One transaction.
void Write_Genes(Session &session, Prompts &prompts);

/// A genotype as text: one entry per gene in gene order, "_" for an unknown allele
/// ("Aa B _ _ _").
QString Genotype_Text(const GeneticsData &genetics, const Genotype &alleles);

/// The same genotype as rich text for the screens' genotype pictures: in each symbol the
/// characters after the first are raised, so "ch" reads as c with a raised h.
QString Genotype_Html(const GeneticsData &genetics, const Genotype &alleles);

/// After an animal is saved: a new genotype from its colour, unless it has one already.
/// The colour is looked up (through the stud's colour matches) in the colour table; a
/// colour the files do not know is put to the user, whose choice may be kept as a match.
void Update_Genes(Session &session, Prompts &prompts, const QString &colour, const QString &type,
                  qint64 stockNo, const QString &sex);

} // namespace tarvex
