#include "RegistryPedigree.h"

#include <algorithm>
#include <random>

namespace tarvex::bench {

namespace {

constexpr int kLitter = 8;
constexpr int kBucksKept = 2;
constexpr int kDoesKept = 6;
constexpr int kBornPerHerd = kLitter * kDoesKept; // every doe kept has one litter
constexpr int kBoughtInOneIn = 2;
constexpr int kTradingDistance = 2; // herds either way

} // namespace

std::vector<PedigreeRecord> registryPedigree(int animals, int generations)
{
    std::mt19937 random(19920101);
    const auto pick = [&](int n) { return int(std::uniform_int_distribution<int>(0, n - 1)(random)); };
    const int herds = std::max(1, animals / generations / kBornPerHerd);

    std::vector<PedigreeRecord> records;
    records.reserve(std::size_t(animals));
    // The bucks and does each herd keeps from the generation just born.
    std::vector<std::vector<qint64>> bucks(static_cast<std::size_t>(herds)), does(static_cast<std::size_t>(herds));
    const auto born = [&](qint64 sire, qint64 dam) {
        const qint64 number = qint64(records.size()) + 1;
        records.push_back({number, sire, dam});
        return number;
    };
    for (int g = 0; int(records.size()) < animals; ++g) {
        std::vector<std::vector<qint64>> newBucks(static_cast<std::size_t>(herds)),
            newDoes(static_cast<std::size_t>(herds));
        for (int h = 0; h < herds && int(records.size()) < animals; ++h) {
            auto &keptBucks = newBucks[std::size_t(h)];
            auto &keptDoes = newDoes[std::size_t(h)];
            for (int litter = 0; litter < kDoesKept && int(records.size()) < animals; ++litter) {
                qint64 sire = 0, dam = 0;
                if (g > 0) {
                    int from = h;
                    if (pick(kBoughtInOneIn) == 0)
                        from = (h + herds + (1 + pick(kTradingDistance)) * (pick(2) == 0 ? -1 : 1)) % herds;
                    sire = bucks[std::size_t(from)][std::size_t(pick(kBucksKept))];
                    dam = does[std::size_t(h)][std::size_t(litter)];
                }
                for (int kit = 0; kit < kLitter && int(records.size()) < animals; ++kit) {
                    const qint64 n = born(sire, dam);
                    // The first buck and doe of each litter are the ones worth keeping.
                    if (kit == 0 && int(keptBucks.size()) < kBucksKept)
                        keptBucks.push_back(n);
                    else if (kit == 1)
                        keptDoes.push_back(n);
                }
            }
            while (!keptBucks.empty() && int(keptBucks.size()) < kBucksKept)
                keptBucks.push_back(keptBucks.front());
            while (!keptDoes.empty() && int(keptDoes.size()) < kDoesKept)
                keptDoes.push_back(keptDoes.front());
        }
        if (!newBucks.back().empty()) {
            bucks.swap(newBucks);
            does.swap(newDoes);
        }
    }
    return records;
}

} // namespace tarvex::bench
