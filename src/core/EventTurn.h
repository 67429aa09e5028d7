#pragma once

namespace tarvex {

/// Gives the event loop a turn during long work, so labels and progress bars repaint.
/// Called very often (for every gene of every animal in a whole-stud check), it hands
/// over at most every few milliseconds. Clicks and key presses wait until the work is
/// done: the work holds shared state that a click could change under it.
void giveEventLoopTurn();

} // namespace tarvex
