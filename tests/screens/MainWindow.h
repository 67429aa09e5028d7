#pragma once

#include "support/StudFixture.h"

#include "stock/screens/FmStock.h"

#include <QApplication>

#include <gtest/gtest.h>

#include <memory>

namespace tarvex::test {

/// The main window started on the fixture's Rabbits stud as the program starts it (dates
/// written day/month/year), shown and active; nothing when the start failed (the test has
/// failed then).
inline std::unique_ptr<FmStock> startMainWindow(StudFixture &fx)
{
    fx.registerStud(QStringLiteral("Rabbits"), QStringLiteral("Warren End"));
    fx.session.Dates = {};
    auto w = std::make_unique<FmStock>(fx.session, fx.prompts);
    w->setShortDateFunction([](const QDate &d) { return d.toString(QStringLiteral("dd/MM/yyyy")); });
    const bool started = w->start({});
    EXPECT_TRUE(started);
    EXPECT_TRUE(fx.session.studOpen()) << fx.prompts.texts().join(u'|').toStdString();
    if (!started || !fx.session.studOpen())
        return {};
    w->show();
    QApplication::setActiveWindow(w.get());
    return w;
}

} // namespace tarvex::test
