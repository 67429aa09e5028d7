#include "DefaultImage.h"

using namespace Qt::StringLiterals;

namespace tarvex {

QString GetDefaultImagePath(Database &db, qint64 number)
{
    // The first default row in the order of the default index (number, default, row).
    QString path;
    db.eachRow(u"SELECT Path FROM Images WHERE Number = ? AND \"Default\" <> 0 ORDER BY rowid LIMIT 1"_s, {number},
               [&](const Row &row) { path = row.text(u"Path"_s); });
    return path;
}

} // namespace tarvex
