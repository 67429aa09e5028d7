#pragma once

#include "Session.h"

#include <QStringList>

#include <functional>
#include <optional>

namespace tarvex {

/// The start of a run, before any window shows a stud.
namespace Startup {

/// "Tarvex Development" when the whole command line is "/DEV", else "Tarvex".
QString appNameFor(const QStringList &arguments);

/// The folder named by "--import-from=FOLDER", holding an older installation's files.
std::optional<QString> importFolder(const QStringList &arguments);

/// Whether a word processor is there to merge pedigrees into templates. Asked once per
/// user: the answer is kept as WordDetected ("1" or "0") and the probe runs again only
/// when that setting is emptied.
bool detectWordProcessor(Session &session, const std::function<bool()> &probe);

/// Looks for a word processor on the PATH.
bool wordProcessorOnPath();

} // namespace Startup
} // namespace tarvex
