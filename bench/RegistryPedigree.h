#pragma once

#include "pedigree/Inbreeding.h"

#include <vector>

namespace tarvex::bench {

/// The pedigree of a breed club's registry: many small herds side by side on a ring, each
/// keeping two bucks and six does of its own young every generation, litters of eight, and
/// one litter in two sired by a buck from a herd at most two along. Lines mix slowly across
/// the herds, as they do among breeders who trade with those near them. The first generation's
/// parents are unknown; numbers run from 1 in order of birth.
std::vector<PedigreeRecord> registryPedigree(int animals, int generations);

} // namespace tarvex::bench
