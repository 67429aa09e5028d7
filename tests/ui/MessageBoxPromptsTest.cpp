// The answers the desktop's message boxes give back: the button pressed, the one Enter
// presses, and what closing a box with Escape means for each set of buttons.
#include "ui/MessageBoxPrompts.h"

#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

using Answer = Prompts::Answer;
using Buttons = Prompts::Buttons;

/// The answer of a box when the breeder presses a key on it.
Answer answerByKey(Buttons buttons, Qt::Key key)
{
    QWidget window;
    window.show();
    MessageBoxPrompts prompts(&window);
    QTimer::singleShot(0, [key] {
        QWidget *box = QApplication::activeModalWidget();
        ASSERT_NE(box, nullptr);
        QTest::keyClick(box, key);
    });
    return prompts.message(u"Load another and click 'OK' or 'Cancel'"_s, u"Backup"_s, Prompts::Icon::Information,
                           buttons);
}

TEST(MessageBoxPrompts, EnterTakesTheDefaultButtonAndEscapeTheWayOut)
{
    EXPECT_EQ(answerByKey(Buttons::OkCancel, Qt::Key_Return), Answer::Ok);
    EXPECT_EQ(answerByKey(Buttons::OkCancel, Qt::Key_Escape), Answer::Cancel);
    EXPECT_EQ(answerByKey(Buttons::Ok, Qt::Key_Escape), Answer::Ok);
    EXPECT_EQ(answerByKey(Buttons::YesNo, Qt::Key_Return), Answer::Yes);
    EXPECT_EQ(answerByKey(Buttons::YesNo, Qt::Key_Escape), Answer::No);
    EXPECT_EQ(answerByKey(Buttons::YesNoDefaultNo, Qt::Key_Return), Answer::No) << "an overwrite is not the default";
    EXPECT_EQ(answerByKey(Buttons::YesNoCancel, Qt::Key_Escape), Answer::Cancel);
}

} // namespace
