#pragma once

#include <QFont>
#include <QProxyStyle>

namespace tarvex {

/// The application's style: the desktop's own, with the boxes of check boxes and radio
/// buttons, the gap to their text and a message box's icon grown or shrunk with the
/// widget's font, so that a form at twice its design size shows boxes to match its text.
class ScaledStyle : public QProxyStyle
{
public:
    ScaledStyle();

    int pixelMetric(PixelMetric metric, const QStyleOption *option = nullptr,
                    const QWidget *widget = nullptr) const override;

    /// Makes it the style of the whole application. The application's font at that moment,
    /// the one the desktop gave it, is the 100% of every form at its design size.
    static void install();
    /// The desktop's font, as the application was given it at start.
    static QFont desktopFont();
    /// The desktop's font at a factor of its size.
    static QFont desktopFont(qreal factor);
    /// A widget's font size against the desktop's (1 for no widget).
    static qreal fontRatio(const QWidget *widget);
};

} // namespace tarvex
