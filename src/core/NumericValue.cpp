#include "NumericValue.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace tarvex {

double numericValue(const QString &text)
{
    static const QRegularExpression number(u"^\\s*[+-]?(\\d+\\.?\\d*|\\.\\d+)"_s);
    const auto match = number.match(text);
    return match.hasMatch() ? match.captured(0).trimmed().toDouble() : 0.0;
}

} // namespace tarvex
