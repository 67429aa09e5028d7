#pragma once

#include <QString>

#include <exception>

namespace tarvex {

/// The box shown when an action of the user fails with a fault that nothing closer to it
/// handled: what was being done and why. The program goes on; every change the action
/// began has been undone by its transaction.
namespace ActionFailure {

QString title();
/// "The action "Delete" could not be completed." and the reason; a nameless action is
/// "The last action".
QString text(const QString &action, const QString &reason);
/// The reason of a fault in the breeder's terms.
QString reason(const std::exception &fault);
/// The reason of any fault, whatever was thrown (called where it is caught).
QString reason(const std::exception_ptr &fault);

} // namespace ActionFailure
} // namespace tarvex
