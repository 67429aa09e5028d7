#pragma once

#include "Options.h"

#include <QRect>
#include <QSize>

namespace tarvex {

/// The main window's remembered size and place, in the "Options" section.
/// At exit the left edge and then the top edge are both written to FormLeft, so the top
/// wins; at start FormLeft is read twice, once for each edge. Kept as it has always been.
namespace WindowGeometry {

enum State { Normal = 0, Minimised = 1, Maximised = 2 };

struct Placement
{
    State state = Normal;
    QRect rect;
};

/// Where the window goes at start, for a screen of the given size: the size kept at the last
/// exit, or firstSize when none was kept; centred when no place was kept.
Placement restore(const Options &options, const QSize &firstSize, const QSize &screen);
/// Stores the window's state and, when normal, its size and edges.
void save(Options &options, State state, const QRect &normalRect);

} // namespace WindowGeometry
} // namespace tarvex
