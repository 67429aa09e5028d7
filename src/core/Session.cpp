#include "Session.h"

#include "store/StudDatabase.h"

namespace tarvex {

const Clock Session::systemClock;

Session::Session() = default;

Shell &Session::nullShell()
{
    static NullShell shell;
    return shell;
}
Session::~Session() = default;

} // namespace tarvex
