#include "AgeText.h"

using namespace Qt::StringLiterals;

namespace tarvex {

QString AgeText(const QDate &birth, const QString &status, const QDate &death, const QDate &today,
                const CRegSettings::Values &studOptions)
{
    if (!death.isValid()) {
        for (const auto &entry : studOptions)
            if (entry.first.compare(status, Qt::CaseInsensitive) == 0)
                return {};
    }
    qint64 days = birth.daysTo(death.isValid() ? death : today);
    if (days < 1)
        return {};
    QString text;
    qint64 years = 0;
    if (days > 365) {
        years = days / 365;
        days -= years * 365;
        text = QString::number(years) + (years == 1 ? u" Yr "_s : u" Yrs "_s);
    }
    const qint64 weeks = days / 7;
    if (years > 0 || days % 7 == 0)
        return text + QString::number(weeks) + u" Wks"_s;
    return QString::number(weeks + (days - weeks * 7) / 10.0) + u" Wks"_s;
}

} // namespace tarvex
