#pragma once

#include "store/Database.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <array>
#include <functional>

namespace tarvex {

/// One relative as the breeding page shows it.
struct RelativeRow
{
    QString name;
    qint64 number = -1;
    QString sex, dob, archive, ringNo, type, colour, breeder, genotype, id2, id3, bestAward, weight;
};

/// The relatives of one animal: offspring, half siblings and full siblings, each in name
/// order and at most 1001 rows; a relative without a name ends its list.
struct RelativesCache
{
    static constexpr int kLimit = 1001;
    enum List { Offspring = 0, HalfSiblings = 1, FullSiblings = 2 };
    std::array<QList<RelativeRow>, 3> lists;
};

/// The animal whose relatives are wanted, as its row holds it.
struct RelativesSubject
{
    qint64 number = 0;
    QVariant sire, dam;
    QString sex;
};

/// The exact queries of the breeding page. An unknown parent (null or below 1) stands as
/// -999, which matches no animal.
QString fullSiblingsQuery(const RelativesSubject &subject);
QString halfSiblingsQuery(const RelativesSubject &subject);
QString offspringQuery(const RelativesSubject &subject, const QString &maleWord);

/// Runs the three queries. Dates are written with formatDate; weights as "###0.00" and the unit.
RelativesCache RefreshRelatives(Database &db, const RelativesSubject &subject, const QString &maleWord,
                                const std::function<QString(const QDate &)> &formatDate, const QString &weightUnit);

/// The detail choices of the breeding page: "Best Award", "Breed", "Breeder", "Colour",
/// "Date of Birth", "Genotype", "Sex", "Weight", then the identification words.
QStringList detailChoices(const QString &idWord, const QString &id2Word, const QString &id3Word);

/// The detail shown beside a relative's name for a choice (compared in capitals); empty
/// for a choice it does not know.
QString relativeDetail(const RelativeRow &row, const QString &choice, const QString &idWord, const QString &id2Word,
                       const QString &id3Word);

/// Which relatives a list shows: archived ones only when asked; sexOption 0 the male word,
/// 1 the female word, 2 both.
bool relativeShown(const RelativeRow &row, bool showArchived, int sexOption, const QString &maleWord,
                   const QString &femaleWord);

/// The short pedigree: sire, dam, the sire's sire and dam, the dam's sire and dam. An empty
/// place has number -9999 and no name; a parent whose row is gone shows "Not Found".
std::array<RelativeRow, 6> shortPedigree(Database &db, const QVariant &sire, const QVariant &dam,
                                         const std::function<QString(const QDate &)> &formatDate,
                                         const QString &weightUnit);

} // namespace tarvex
