#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QRectF>
#include <QSize>
#include <QWidget>

#include <vector>

namespace tarvex {

/// Keeps a screen's proportions: every control is placed and sized by the ratio of the
/// screen's present size to its design size, and its font by the smaller of the two
/// ratios. A screen never shrinks below its design size.
class ClsResizer : public QObject
{
public:
    enum Kind { Ordinary = 0, Line = 1, ListView = 2, Grid = 4, FontHeight = 5, FixedHeight = 6 };

    /// The form's design size is its inner size in pixels as laid out.
    ClsResizer(QWidget *form, const QSize &designSize);

    /// Records the design geometry and font of every control of the form, in order.
    void Initialise();
    /// Places every control for the form's present size.
    void Resize();

    int MinWidth = 0;
    int MinHeight = 0;
    bool ResizeEnabled = true;

    /// The form kept in proportion, and its design size.
    QWidget *form() const { return m_form; }
    QSize designSize() const { return m_design; }
    /// The factor the form's fonts have now: the smaller of the two ratios of its size to its
    /// design size, as last applied (1 until then).
    qreal fontScale() const { return m_fontScale; }

    /// The resizer of a window's form (the window itself or a form inside it, such as the
    /// main window's panel); none when the window is not kept in proportion.
    static ClsResizer *of(const QWidget *window);
    /// The font factor of the window a widget belongs to: its resizer's, 1 when it has none.
    static qreal windowFontScale(const QWidget *widget);

    /// The font size for a design size and the two ratios: the smaller ratio wins.
    static qreal scaledFontSize(qreal designSize, qreal xRatio, qreal yRatio);
    /// The opening size on a screen: as if the design were made for a 640 by 480 screen,
    /// no larger than the screen.
    static QSize openingSize(const QSize &design, const QSize &screen);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Record
    {
        QPointer<QWidget> widget;
        QRectF geometry;
        qreal fontSize = 0;
        Kind kind = Ordinary;
        QList<int> columnWidths;
    };

    QWidget *m_form;
    QSize m_design;
    std::vector<Record> m_records;
    bool m_busy = false;
    qreal m_fontScale = 1;
};

/// Creates the form's resizer, opens the form at its size for this screen, centred.
ClsResizer *FormResizeSetup(QWidget *form, const QSize &designSize);

} // namespace tarvex
