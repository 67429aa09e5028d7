#pragma once

#include "store/Database.h"

#include <QString>

namespace tarvex {

/// The file of an animal's default picture (the one the animal sheet and the pedigree
/// print), found through the pictures' default index; empty when it has none.
QString GetDefaultImagePath(Database &db, qint64 number);

} // namespace tarvex
