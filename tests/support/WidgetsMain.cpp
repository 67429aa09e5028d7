#include "core/Prompts.h"
#include "ui/Application.h"
#include "ui/ScaledStyle.h"

#include <gtest/gtest.h>

namespace {

/// Where a fault of an action goes when a test did not expect one: the test fails with the
/// box's text instead of waiting for a person to close a real box.
class UnexpectedFault : public tarvex::Prompts
{
public:
    Answer message(const QString &text, const QString &title, Icon, Buttons) override
    {
        ADD_FAILURE() << "Unexpected fault: " << title.toStdString() << ": " << text.toStdString();
        return Answer::Ok;
    }
    std::optional<QString> input(const QString &, const QString &, const QString &) override { return {}; }
};

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The program's own application object, so that faults of actions are caught as they
    // are in the program.
    tarvex::Application app(argc, argv);
    tarvex::Application::setApplicationName(QStringLiteral("Tarvex"));
    // The program's own style, as main() installs it.
    tarvex::ScaledStyle::install();
    UnexpectedFault unexpected;
    tarvex::Application::setFallbackPrompts(&unexpected);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
