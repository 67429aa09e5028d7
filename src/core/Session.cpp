#include "Session.h"

#include "store/StudDatabase.h"

namespace tarvex {

const Clock Session::systemClock;

Session::Session() = default;
Session::~Session() = default;

} // namespace tarvex
