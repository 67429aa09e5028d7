#include "WindowGeometry.h"

using namespace Qt::StringLiterals;

namespace tarvex::WindowGeometry {

namespace {
const QString kSection = u"Options"_s;

int readInt(const CRegSettings &settings, const QString &key, int fallback)
{
    bool ok = false;
    const int value = settings.GetSetting(kSection, key, QString::number(fallback)).toInt(&ok);
    return ok ? value : fallback;
}
} // namespace

Placement restore(const CRegSettings &settings, const QSize &designSize, const QSize &screen)
{
    Placement p;
    int state = readInt(settings, u"FormState"_s, Normal);
    if (state == Minimised || state < Normal || state > Maximised)
        state = Normal;
    p.state = State(state);
    const int width = readInt(settings, u"FormWidth"_s, designSize.width());
    const int height = readInt(settings, u"FormHeight"_s, designSize.height());
    const int left = readInt(settings, u"FormLeft"_s, (screen.width() - width) / 2);
    const int top = readInt(settings, u"FormLeft"_s, (screen.height() - height) / 2);
    p.rect = QRect(left, top, width, height);
    return p;
}

void save(CRegSettings &settings, State state, const QRect &normalRect)
{
    settings.SaveSetting(kSection, u"FormState"_s, QString::number(state));
    if (state != Normal)
        return;
    settings.SaveSetting(kSection, u"FormWidth"_s, QString::number(normalRect.width()));
    settings.SaveSetting(kSection, u"FormHeight"_s, QString::number(normalRect.height()));
    settings.SaveSetting(kSection, u"FormLeft"_s, QString::number(normalRect.left()));
    settings.SaveSetting(kSection, u"FormLeft"_s, QString::number(normalRect.top()));
}

} // namespace tarvex::WindowGeometry
