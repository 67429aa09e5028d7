#include "Modal.h"

namespace tarvex::Modal {

namespace {
Hook &hook()
{
    static Hook h;
    return h;
}
} // namespace

void setHook(Hook h)
{
    hook() = std::move(h);
}

int exec(QDialog &dialog)
{
    if (hook()) {
        dialog.show();
        const int result = hook()(dialog);
        dialog.hide();
        return result;
    }
    return dialog.exec();
}

} // namespace tarvex::Modal
