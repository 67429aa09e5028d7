#pragma once

#include <QDateTime>

namespace tarvex {

/// Today's date and the time, injectable so ages, due dates and backup dates are testable.
class Clock
{
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const { return QDateTime::currentDateTime(); }
    QDate today() const { return now().date(); }
};

} // namespace tarvex
