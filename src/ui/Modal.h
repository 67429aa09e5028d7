#pragma once

#include <QDialog>

#include <functional>

namespace tarvex {

/// Every modal screen opens through here, so that a screen test can take the dialog,
/// work its controls and close it instead of a person.
namespace Modal {

using Hook = std::function<int(QDialog &)>;

/// Installs a hook that runs each modal screen instead of its own event loop; an empty
/// hook restores the normal behaviour.
void setHook(Hook hook);
int exec(QDialog &dialog);

} // namespace Modal
} // namespace tarvex
