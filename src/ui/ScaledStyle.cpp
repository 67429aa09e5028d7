#include "ScaledStyle.h"

#include <QApplication>
#include <QFontInfo>
#include <QStyleOption>
#include <QWidget>

#include <algorithm>
#include <optional>

namespace tarvex {

namespace {
std::optional<QFont> &rememberedFont()
{
    static std::optional<QFont> font;
    return font;
}
} // namespace

ScaledStyle::ScaledStyle() = default;

void ScaledStyle::install()
{
    rememberedFont() = QApplication::font();
    QApplication::setStyle(new ScaledStyle);
}

QFont ScaledStyle::desktopFont()
{
    return rememberedFont().value_or(QApplication::font());
}

QFont ScaledStyle::desktopFont(qreal factor)
{
    QFont f = desktopFont();
    if (f.pointSizeF() > 0)
        f.setPointSizeF(f.pointSizeF() * factor);
    else
        f.setPixelSize(std::max(1, qRound(f.pixelSize() * factor)));
    return f;
}

qreal ScaledStyle::fontRatio(const QWidget *widget)
{
    if (!widget)
        return 1.0;
    const QFont desktop = desktopFont();
    const QFont own = widget->font();
    if (own.pointSizeF() > 0 && desktop.pointSizeF() > 0)
        return own.pointSizeF() / desktop.pointSizeF();
    // A font given in pixels has no point size: its pixels are compared instead.
    return qreal(QFontInfo(own).pixelSize()) / std::max(1, QFontInfo(desktop).pixelSize());
}

int ScaledStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    const int base = QProxyStyle::pixelMetric(metric, option, widget);
    switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
    case PM_MessageBoxIconSize: {
        qreal ratio = 1.0;
        if (widget)
            ratio = fontRatio(widget);
        else if (option)
            ratio = qreal(option->fontMetrics.height()) / QFontMetrics(desktopFont()).height();
        return qRound(base * ratio);
    }
    default:
        return base;
    }
}

} // namespace tarvex
