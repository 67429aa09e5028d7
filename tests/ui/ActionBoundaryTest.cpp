// Whatever a user's action ends in, one box says what was being done and why, in the
// breeder's words, and the program goes on: faults of the slots are caught where the action
// runs, faults anywhere else in an event's handling by the application object.
#include "support/ScriptedPrompts.h"

#include "store/StoreError.h"
#include "ui/Action.h"
#include "ui/Application.h"

#include <QCoreApplication>
#include <QPushButton>

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

class ActionBoundary : public ::testing::Test
{
protected:
    void SetUp() override { Application::setPrompts(&prompts); }
    void TearDown() override { Application::setPrompts(nullptr); }

    /// The box of a press of a button whose work ends in a fault.
    template <typename Fault> QString boxOfPress(const QString &caption, Fault fault)
    {
        QPushButton button(caption);
        onAction(&button, &QPushButton::clicked, &button, [&] { throw fault; });
        button.click();
        EXPECT_EQ(prompts.messages.size(), 1);
        if (prompts.messages.isEmpty())
            return {};
        EXPECT_EQ(prompts.messages.last().title, u"Action Not Completed");
        EXPECT_EQ(prompts.messages.last().icon, Prompts::Icon::Stop);
        const QString text = prompts.messages.last().text;
        prompts.messages.clear();
        return text;
    }

    ScriptedPrompts prompts;
};

TEST_F(ActionBoundary, EveryKindOfFaultIsToldInTheBreedersWords)
{
    EXPECT_EQ(boxOfPress(u"&Delete"_s, StoreError(StoreError::Locked, StoreError::inUseText())),
              u"The action \"Delete\" could not be completed.\n\n"
              u"The stud is in use by another program. Close it and try again.");
    EXPECT_EQ(boxOfPress(u"&Run"_s, StoreError(StoreError::CorruptDatabase, u"The database is damaged."_s)),
              u"The action \"Run\" could not be completed.\n\nThe database is damaged.\n\n(Error 3049)");
    EXPECT_EQ(boxOfPress(u"Ok"_s, std::bad_alloc()),
              u"The action \"Ok\" could not be completed.\n\n"
              u"There is not enough memory. Close other programs and try again.");
    EXPECT_EQ(boxOfPress(u"Ok"_s, std::runtime_error("The PDF file could not be written.")),
              u"The action \"Ok\" could not be completed.\n\nThe PDF file could not be written.");
    EXPECT_EQ(boxOfPress(u"Ok"_s, 42),
              u"The action \"Ok\" could not be completed.\n\nAn unexpected fault occurred.");
    // A button with no caption is named by its tip; one with neither is "the last action".
    QPushButton symbol;
    symbol.setToolTip(u"Display Next/Previous stock records"_s);
    onAction(&symbol, &QPushButton::clicked, &symbol, [] { throw std::runtime_error("gone"); });
    symbol.click();
    ASSERT_EQ(prompts.messages.size(), 1);
    EXPECT_EQ(prompts.texts().last(),
              u"The action \"Display Next/Previous stock records\" could not be completed.\n\ngone");
    prompts.messages.clear();
    EXPECT_EQ(boxOfPress(QString(), std::runtime_error("The stud is closed.")),
              u"The last action could not be completed.\n\nThe stud is closed.");
}

// A button whose own handling of an event fails, outside any slot. The event is one of the
// program's own: a fault unwinding through Qt's handling of a mouse press would leave what
// Qt held for it behind, which is why every slot has its own boundary.
class FailingButton : public QPushButton
{
public:
    using QPushButton::QPushButton;
    static constexpr QEvent::Type Failing = QEvent::User;

protected:
    bool event(QEvent *e) override
    {
        if (e->type() == Failing)
            throw StoreError(StoreError::Locked, StoreError::inUseText());
        return QPushButton::event(e);
    }
};

TEST_F(ActionBoundary, FaultOutsideAnySlotIsCaughtByTheApplication)
{
    FailingButton button(u"&Genetics"_s);
    QEvent failing(FailingButton::Failing);
    EXPECT_TRUE(QCoreApplication::sendEvent(&button, &failing)) << "the event counts as handled";
    ASSERT_EQ(prompts.texts(),
              QStringList({u"The action \"Genetics\" could not be completed.\n\n"
                           u"The stud is in use by another program. Close it and try again."_s}));

    // The program goes on: the next event is handled as usual.
    bool pressed = false;
    QObject::connect(&button, &QPushButton::clicked, [&] { pressed = true; });
    button.click();
    EXPECT_TRUE(pressed);
    EXPECT_EQ(prompts.messages.size(), 1);
}

// A fault of the box itself (a repaint of a broken screen while it is up) is not told again.
TEST_F(ActionBoundary, FaultWhileTheBoxIsUpIsNotToldAgain)
{
    class Nested : public ScriptedPrompts
    {
    public:
        Answer message(const QString &text, const QString &title, Icon icon, Buttons buttons) override
        {
            runAction(u"Repaint"_s, [] { throw std::runtime_error("again"); });
            return ScriptedPrompts::message(text, title, icon, buttons);
        }
    } nested;
    Application::setPrompts(&nested);
    runAction(u"Save"_s, [] { throw std::runtime_error("first"); });
    ASSERT_EQ(nested.texts(), QStringList({u"The action \"Save\" could not be completed.\n\nfirst"_s}));
    runAction(u"Save"_s, [] { throw std::runtime_error("second"); });
    EXPECT_EQ(nested.texts().size(), 2) << "the next fault after the box is told again";
}

} // namespace
