// Long work on a screen: its bar and lines follow the work, Cancel and Escape stop it, and
// every other press waits until the work is done.
#include "ui/WorkProgress.h"

#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

class WorkProgressTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        auto *layout = new QVBoxLayout(&window);
        for (QWidget *w : {static_cast<QWidget *>(bar), static_cast<QWidget *>(line), static_cast<QWidget *>(other),
                           static_cast<QWidget *>(cancel)})
            layout->addWidget(w);
        cancel->setEnabled(false);
        QObject::connect(other, &QPushButton::clicked, [this] { ++otherPresses; });
        window.show();
    }

    std::unique_ptr<WorkProgress> begin()
    {
        return std::make_unique<WorkProgress>(&window, bar, QList<QLabel *>{line}, cancel);
    }

    QWidget window;
    QProgressBar *bar = new QProgressBar;
    QLabel *line = new QLabel(u"Ready"_s);
    QPushButton *other = new QPushButton(u"Run"_s);
    QPushButton *cancel = new QPushButton(u"Cancel"_s);
    int otherPresses = 0;
};

TEST_F(WorkProgressTest, BarAndLinesFollowTheWorkAndTheScreenIsLeftWhereItEnded)
{
    {
        auto progress = begin();
        EXPECT_TRUE(cancel->isEnabled()) << "Cancel can be pressed while the work runs";
        EXPECT_EQ(window.cursor().shape(), Qt::WaitCursor);
        // A long walk is shown in ten-thousandths of the bar.
        progress->start(1'000'000, u"Checking"_s);
        EXPECT_EQ(line->text(), u"Checking");
        EXPECT_EQ(bar->maximum(), 10000);
        progress->step(250'000, {u"Sooty"_s});
        progress->step(500'000, {QString()});
    }
    EXPECT_EQ(bar->value(), 5000);
    EXPECT_EQ(line->text(), u"Sooty") << "an empty text leaves its line as it was";
    EXPECT_FALSE(cancel->isEnabled()) << "Cancel is back as it was before the work";
    EXPECT_EQ(window.cursor().shape(), Qt::ArrowCursor) << "the wait cursor goes with the work";
}

TEST_F(WorkProgressTest, CancelAndEscapeStopTheWorkAndOtherPressesWait)
{
    {
        auto progress = begin();
        progress->start(10);
        QTest::mouseClick(other, Qt::LeftButton);
        EXPECT_EQ(otherPresses, 0) << "a press of another button waits for the work";
        EXPECT_FALSE(progress->cancelled());
        QTest::mouseClick(cancel, Qt::LeftButton);
        EXPECT_TRUE(progress->cancelled());
    }
    {
        auto progress = begin();
        progress->start(0);
        EXPECT_EQ(bar->maximum(), 0) << "work of unknown length shows a busy bar";
        QTest::keyClick(&window, Qt::Key_Escape);
        EXPECT_TRUE(progress->cancelled());
    }
    QTest::mouseClick(other, Qt::LeftButton);
    EXPECT_EQ(otherPresses, 1) << "after the work, presses are the user's again";
}

TEST_F(WorkProgressTest, ABoxTheWorkPutsUpTakesItsAnswerAndEscapeThereDoesNotStopTheWork)
{
    auto progress = begin();
    progress->start(10);
    QDialog box(&window);
    box.setWindowModality(Qt::ApplicationModal);
    auto *again = new QPushButton(u"OK"_s, &box);
    int answers = 0;
    QObject::connect(again, &QPushButton::clicked, [&] { ++answers; });
    box.show();
    QTest::mouseClick(again, Qt::LeftButton);
    EXPECT_EQ(answers, 1);
    QTest::keyClick(&box, Qt::Key_Escape);
    EXPECT_FALSE(progress->cancelled()) << "Escape answers the box";
    EXPECT_FALSE(box.isVisible());
    QTest::mouseClick(other, Qt::LeftButton);
    EXPECT_EQ(otherPresses, 0) << "the window itself still waits for the work";
}

} // namespace
