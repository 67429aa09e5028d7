#pragma once

#include "core/Session.h"

#include <QString>

#include <optional>

namespace tarvex {

/// One animal as the summary window shows it.
struct StockSummary
{
    QString name, sex, type, colour, dob, dod, breeder, status, archive, genotype, health, notes;
    QString ringNo, id2, id3;
    QString sireName, damName; // empty when unknown, "Not Found" when the row is gone
};

/// The summary of the animal with that number; nothing when there is no such animal.
std::optional<StockSummary> summaryOf(Session &session, qint64 number);

} // namespace tarvex
