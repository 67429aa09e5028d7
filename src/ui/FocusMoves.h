#pragma once

#include <QFocusEvent>

namespace tarvex {

/// Whether a box lost the focus to another control of its window, and not because another
/// window (a warning the box itself raised) or a pop-up came in front.
inline bool movedWithinWindow(const QEvent *focusOut)
{
    const Qt::FocusReason reason = static_cast<const QFocusEvent *>(focusOut)->reason();
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason;
}

} // namespace tarvex
