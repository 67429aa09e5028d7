#include "WindowGeometry.h"

using namespace Qt::StringLiterals;

namespace tarvex::WindowGeometry {

namespace {
int readInt(const Options &options, const OptionKey &key, int fallback)
{
    bool ok = false;
    const int value = options.textOr(key, QString::number(fallback)).toInt(&ok);
    return ok ? value : fallback;
}
} // namespace

Placement restore(const Options &options, const QSize &firstSize, const QSize &screen)
{
    Placement p;
    int state = readInt(options, Opt::FormState, Normal);
    if (state == Minimised || state < Normal || state > Maximised)
        state = Normal;
    p.state = State(state);
    const int width = readInt(options, Opt::FormWidth, firstSize.width());
    const int height = readInt(options, Opt::FormHeight, firstSize.height());
    const int left = readInt(options, Opt::FormLeft, (screen.width() - width) / 2);
    const int top = readInt(options, Opt::FormLeft, (screen.height() - height) / 2);
    p.rect = QRect(left, top, width, height);
    return p;
}

void save(Options &options, State state, const QRect &normalRect)
{
    options.setNumber(Opt::FormState, state);
    if (state != Normal)
        return;
    options.setNumber(Opt::FormWidth, normalRect.width());
    options.setNumber(Opt::FormHeight, normalRect.height());
    options.setNumber(Opt::FormLeft, normalRect.left());
    options.setNumber(Opt::FormLeft, normalRect.top());
}

} // namespace tarvex::WindowGeometry
