#include "Inbreeding.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

// Animals between two looks at the progress and the Cancel button.
constexpr int kAnimalsPerStep = 4096;

} // namespace

PedigreeGraph orderPedigree(const std::vector<PedigreeRecord> &records)
{
    const int n = int(records.size());
    QHash<qint64, int> input;
    input.reserve(n);
    for (int i = 0; i < n; ++i)
        input.insert(records[std::size_t(i)].number, i);
    const auto parentOf = [&](qint64 number) { return number > 0 ? input.value(number, -1) : -1; };

    // Each animal waits for its known parents; its children wait for it.
    std::vector<int> waiting(std::size_t(n), 0);
    std::vector<int> childStart(std::size_t(n) + 1, 0);
    for (const PedigreeRecord &r : records)
        for (qint64 parent : {r.sire, r.dam})
            if (const int p = parentOf(parent); p >= 0)
                ++childStart[std::size_t(p) + 1];
    for (int i = 0; i < n; ++i)
        childStart[std::size_t(i) + 1] += childStart[std::size_t(i)];
    std::vector<int> children(static_cast<std::size_t>(childStart.back()));
    std::vector<int> filled(childStart.begin(), childStart.end() - 1);
    for (int i = 0; i < n; ++i) {
        const PedigreeRecord &r = records[std::size_t(i)];
        for (qint64 parent : {r.sire, r.dam}) {
            if (const int p = parentOf(parent); p >= 0) {
                children[std::size_t(filled[std::size_t(p)]++)] = i;
                ++waiting[std::size_t(i)];
            }
        }
    }

    PedigreeGraph g;
    g.numbers.reserve(std::size_t(n));
    std::vector<int> order;
    order.reserve(std::size_t(n));
    for (int i = 0; i < n; ++i)
        if (waiting[std::size_t(i)] == 0)
            order.push_back(i);
    for (std::size_t next = 0; next < order.size(); ++next) {
        const int i = order[next];
        for (int c = childStart[std::size_t(i)]; c < childStart[std::size_t(i) + 1]; ++c)
            if (--waiting[std::size_t(children[std::size_t(c)])] == 0)
                order.push_back(children[std::size_t(c)]);
    }
    if (int(order.size()) < n) {
        // Some animals never stopped waiting: they descend from themselves. Going up from
        // one of them through parents still waiting comes round to an animal on the loop.
        int at = 0;
        while (waiting[std::size_t(at)] == 0)
            ++at;
        std::vector<bool> seen(std::size_t(n), false);
        while (!seen[std::size_t(at)]) {
            seen[std::size_t(at)] = true;
            const PedigreeRecord &r = records[std::size_t(at)];
            const int s = parentOf(r.sire);
            at = s >= 0 && waiting[std::size_t(s)] > 0 ? s : parentOf(r.dam);
        }
        throw PedigreeLoop(records[std::size_t(at)].number);
    }

    std::vector<int> positionOfInput(static_cast<std::size_t>(n));
    for (int p = 0; p < n; ++p)
        positionOfInput[std::size_t(order[std::size_t(p)])] = p;
    g.sire.resize(std::size_t(n));
    g.dam.resize(std::size_t(n));
    g.position.reserve(n);
    for (int p = 0; p < n; ++p) {
        const PedigreeRecord &r = records[std::size_t(order[std::size_t(p)])];
        g.numbers.push_back(r.number);
        g.position.insert(r.number, p);
        const int s = parentOf(r.sire);
        const int d = parentOf(r.dam);
        g.sire[std::size_t(p)] = s >= 0 ? positionOfInput[std::size_t(s)] : -1;
        g.dam[std::size_t(p)] = d >= 0 ? positionOfInput[std::size_t(d)] : -1;
    }
    return g;
}

PedigreeGraph ancestorsOf(const PedigreeGraph &stud, int position, int generations)
{
    // Going back a generation at a time; an ancestor is taken at its nearest place. Positions
    // in the stud's order stay parents first once the others are left out.
    std::vector<int> kept{position};
    QHash<int, int> level{{position, 0}};
    for (std::size_t next = 0; next < kept.size(); ++next) {
        const int at = kept[next];
        const int l = level.value(at);
        if (l >= generations)
            continue;
        for (int parent : {stud.sire[std::size_t(at)], stud.dam[std::size_t(at)]}) {
            if (parent >= 0 && !level.contains(parent)) {
                level.insert(parent, l + 1);
                kept.push_back(parent);
            }
        }
    }
    std::sort(kept.begin(), kept.end());
    PedigreeGraph g;
    QHash<int, int> local;
    for (int i = 0; i < int(kept.size()); ++i)
        local.insert(kept[std::size_t(i)], i);
    for (int at : kept) {
        const bool farthest = level.value(at) >= generations;
        g.position.insert(stud.numbers[std::size_t(at)], int(g.numbers.size()));
        g.numbers.push_back(stud.numbers[std::size_t(at)]);
        g.sire.push_back(farthest ? -1 : local.value(stud.sire[std::size_t(at)], -1));
        g.dam.push_back(farthest ? -1 : local.value(stud.dam[std::size_t(at)], -1));
    }
    return g;
}

Inbreeding::Inbreeding(PedigreeGraph graph, Progress &progress) : m_graph(std::move(graph))
{
    const int n = m_graph.size();
    m_f.assign(std::size_t(n), 0.0);
    m_d.assign(std::size_t(n), 0.0);
    m_generations.assign(std::size_t(n), 0);
    m_knownSlots.assign(std::size_t(n), 0.0);
    m_l.assign(std::size_t(n), 0.0);
    QHash<quint64, double> litters;
    progress.start(n);
    for (int i = 0; i < n; ++i) {
        const int s = m_graph.sire[std::size_t(i)];
        const int d = m_graph.dam[std::size_t(i)];
        // Full brothers and sisters share one coefficient: a litter costs one walk.
        if (s >= 0 && d >= 0) {
            const quint64 pair = (quint64(quint32(s)) << 32) | quint32(d);
            auto litter = litters.constFind(pair);
            if (litter == litters.cend())
                litter = litters.insert(pair, offspringCoi(s, d));
            m_f[std::size_t(i)] = *litter;
        }
        const double fs = s >= 0 ? m_f[std::size_t(s)] : -1.0;
        const double fd = d >= 0 ? m_f[std::size_t(d)] : -1.0;
        m_d[std::size_t(i)] = 0.5 - 0.25 * (fs + fd);
        int generations = 0;
        double known = 0;
        for (int p : {s, d}) {
            if (p < 0)
                continue;
            generations = std::max(generations, 1 + m_generations[std::size_t(p)]);
            known += 1 + m_knownSlots[std::size_t(p)];
        }
        m_generations[std::size_t(i)] = generations;
        m_knownSlots[std::size_t(i)] = known;
        if ((i + 1) % kAnimalsPerStep == 0) {
            progress.step(i + 1);
            if (progress.cancelled())
                return;
        }
    }
    progress.step(n);
}

double Inbreeding::offspringCoi(int sire, int dam) const
{
    if (sire < 0 || dam < 0)
        return 0.0;
    // The offspring's coefficient is the sum, over it and its ancestors, of each one's
    // share of the offspring's genes squared times its Mendelian variance, less one. The
    // ancestors are taken youngest first, so that each passes on its whole share.
    // A heap of the positions still to be walked, youngest on top; kept between walks so
    // that a whole stud allocates it once.
    std::vector<int> &ahead = m_ahead;
    ahead.clear();
    const auto share = [&](int ancestor, double part) {
        if (ancestor < 0)
            return;
        if (m_l[std::size_t(ancestor)] == 0.0) {
            ahead.push_back(ancestor);
            std::push_heap(ahead.begin(), ahead.end());
        }
        m_l[std::size_t(ancestor)] += part;
    };
    double sum = 0.5 - 0.25 * (m_f[std::size_t(sire)] + m_f[std::size_t(dam)]);
    share(sire, 0.5);
    share(dam, 0.5);
    while (!ahead.empty()) {
        std::pop_heap(ahead.begin(), ahead.end());
        const int j = ahead.back();
        ahead.pop_back();
        const double l = m_l[std::size_t(j)];
        m_l[std::size_t(j)] = 0.0;
        sum += l * l * m_d[std::size_t(j)];
        share(m_graph.sire[std::size_t(j)], 0.5 * l);
        share(m_graph.dam[std::size_t(j)], 0.5 * l);
    }
    return sum - 1.0;
}

double Inbreeding::relationship(int a, int b) const
{
    if (a < 0 || b < 0)
        return 0.0;
    return 2 * offspringCoi(a, b) / std::sqrt((1 + coi(a)) * (1 + coi(b)));
}

std::vector<double> Inbreeding::kinshipsOf(int position) const
{
    // The row of the relationship matrix A = T D T': the animal's share in each ancestor
    // (T'), weighted by each one's Mendelian variance (D), handed down again (T).
    const int n = m_graph.size();
    std::vector<double> a(static_cast<std::size_t>(n), 0.0);
    if (position < 0)
        return a;
    a[std::size_t(position)] = 1.0;
    for (int j = position; j >= 0; --j) {
        const double share = a[std::size_t(j)];
        if (share == 0.0)
            continue;
        for (int parent : {m_graph.sire[std::size_t(j)], m_graph.dam[std::size_t(j)]})
            if (parent >= 0)
                a[std::size_t(parent)] += 0.5 * share;
    }
    for (int j = 0; j < n; ++j) {
        const int s = m_graph.sire[std::size_t(j)];
        const int d = m_graph.dam[std::size_t(j)];
        a[std::size_t(j)] = a[std::size_t(j)] * m_d[std::size_t(j)] +
                            0.5 * ((s >= 0 ? a[std::size_t(s)] : 0.0) + (d >= 0 ? a[std::size_t(d)] : 0.0));
    }
    for (double &x : a)
        x *= 0.5; // relationship to kinship
    return a;
}

Inbreeding::Completeness Inbreeding::completeness(int position, int generations) const
{
    if (m_generations[std::size_t(position)] <= generations)
        return completeness(position);
    // Generation by generation: how many places each ancestor holds there.
    Completeness c;
    QHash<int, double> places{{position, 1.0}};
    double known = 0;
    for (int g = 1; g <= generations && !places.isEmpty(); ++g) {
        QHash<int, double> parents;
        for (auto it = places.cbegin(); it != places.cend(); ++it)
            for (int parent : {m_graph.sire[std::size_t(it.key())], m_graph.dam[std::size_t(it.key())]})
                if (parent >= 0)
                    parents[parent] += it.value();
        if (parents.isEmpty())
            break;
        for (double times : std::as_const(parents))
            known += times;
        c.generations = g;
        places.swap(parents);
    }
    const double all = std::ldexp(1.0, c.generations + 1) - 2;
    c.known = all > 0 ? known / all : 1.0;
    return c;
}

Inbreeding::Completeness Inbreeding::completeness(int position) const
{
    Completeness c;
    c.generations = m_generations[std::size_t(position)];
    // The places of g generations: 2 + 4 + ... + 2^g.
    const double places = std::ldexp(1.0, c.generations + 1) - 2;
    c.known = places > 0 ? m_knownSlots[std::size_t(position)] / places : 1.0;
    return c;
}

QString coiText(double coi, const Inbreeding::Completeness &completeness)
{
    if (completeness.generations == 0)
        return u"COI %1% (no ancestors known)"_s.arg(coi * 100, 0, 'f', 2);
    return u"COI %1% (%2 gen, %3% of ancestors known)"_s.arg(coi * 100, 0, 'f', 2)
        .arg(completeness.generations)
        .arg(qRound(completeness.known * 100));
}

} // namespace tarvex
