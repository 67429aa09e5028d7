#include "Progress.h"

namespace tarvex {

Progress &noProgress()
{
    static NoProgress none;
    return none;
}

} // namespace tarvex
