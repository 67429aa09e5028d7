#include "EventTurn.h"

#include <QCoreApplication>
#include <QElapsedTimer>

namespace tarvex {

void giveEventLoopTurn()
{
    static QElapsedTimer sinceLastTurn;
    if (sinceLastTurn.isValid() && sinceLastTurn.elapsed() < 15)
        return;
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    sinceLastTurn.start();
}

} // namespace tarvex
