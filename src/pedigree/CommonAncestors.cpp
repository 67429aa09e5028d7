#include "CommonAncestors.h"

#include <algorithm>
#include <cmath>

namespace tarvex {

namespace {

// Shares below this are rounding left over from ancestors whose lines all pass through a
// nearer common ancestor: they are not on the list.
constexpr double kNoShare = 1e-12;

/// Each animal's share of an animal's genes (1/2 per generation, over every line), and the
/// places it holds in that animal's pedigree.
void linesUp(const PedigreeGraph &g, int from, std::vector<double> &share, std::vector<double> &places)
{
    share[std::size_t(from)] = 1.0;
    places[std::size_t(from)] = 1.0;
    for (int j = from; j >= 0; --j) {
        if (places[std::size_t(j)] == 0.0)
            continue;
        for (int parent : {g.sire[std::size_t(j)], g.dam[std::size_t(j)]}) {
            if (parent >= 0) {
                share[std::size_t(parent)] += 0.5 * share[std::size_t(j)];
                places[std::size_t(parent)] += places[std::size_t(j)];
            }
        }
    }
}

} // namespace

std::vector<CommonAncestor> Common_Ancestors(const Inbreeding &inbreeding, int sire, int dam)
{
    const PedigreeGraph &g = inbreeding.graph();
    if (sire < 0 || dam < 0)
        return {};
    const auto n = static_cast<std::size_t>(g.size());
    std::vector<double> shareS(n, 0.0), placesS(n, 0.0), shareD(n, 0.0), placesD(n, 0.0);
    linesUp(g, sire, shareS, placesS);
    linesUp(g, dam, shareD, placesD);

    // The pairs of lines meeting in each ancestor only; taken off its ancestors' sums.
    std::vector<double> takenOff(n, 0.0), line(n, 0.0);
    std::vector<CommonAncestor> found;
    for (int m = std::max(sire, dam); m >= 0; --m) {
        if (placesS[std::size_t(m)] == 0.0 || placesD[std::size_t(m)] == 0.0)
            continue;
        const double meeting = shareS[std::size_t(m)] * shareD[std::size_t(m)] - takenOff[std::size_t(m)];
        const double contribution = 0.5 * meeting * (1 + inbreeding.coi(m));
        if (std::abs(contribution) > kNoShare)
            found.push_back({m, placesS[std::size_t(m)], placesD[std::size_t(m)], contribution});
        if (meeting == 0.0)
            continue;
        // Lines from m up to each of its ancestors, squared, carry m's pairs on.
        line[std::size_t(m)] = 1.0;
        for (int j = m; j >= 0; --j) {
            const double t = line[std::size_t(j)];
            if (t == 0.0)
                continue;
            line[std::size_t(j)] = 0.0;
            if (j != m)
                takenOff[std::size_t(j)] += meeting * t * t;
            for (int parent : {g.sire[std::size_t(j)], g.dam[std::size_t(j)]})
                if (parent >= 0)
                    line[std::size_t(parent)] += 0.5 * t;
        }
    }
    std::stable_sort(found.begin(), found.end(), [](const CommonAncestor &a, const CommonAncestor &b) {
        return a.contribution > b.contribution;
    });
    return found;
}

} // namespace tarvex
