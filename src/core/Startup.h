#pragma once

#include "Session.h"
#include "SingleInstance.h"

#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace tarvex {

/// The start of a run, before any window shows a stud.
namespace Startup {

/// "Tarvex Development" when the whole command line is "/DEV", else "Tarvex".
QString appNameFor(const QStringList &arguments);

/// The folder named by "--import-from=FOLDER", holding an older installation's files.
std::optional<QString> importFolder(const QStringList &arguments);

/// Whether pedigrees can be merged into templates. The answer is kept as WordDetected ("1"
/// or "0"); once found the probe is not run again, while not found it runs at each start.
bool detectWordProcessor(Session &session, const std::function<bool()> &probe);

/// The start of a run, in the program's fixed order: the splash, the data folder (and the
/// files of an older installation when the command line names them), the refusal of a
/// second running copy, the application name, the machine's date format, the opening of a
/// stud, the word processor. False when the program ends here, its box shown. instance
/// keeps the lock of the running copy for the length of the run.
bool Form_Load(Session &session, Prompts &prompts, const QStringList &arguments,
               const ShortDateFunction &shortDate, std::unique_ptr<SingleInstance> &instance);

} // namespace Startup
} // namespace tarvex
