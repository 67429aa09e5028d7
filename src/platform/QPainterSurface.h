#pragma once

#include "core/PrintSurface.h"

#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <QPainter>
#include <QPagedPaintDevice>

#include <optional>

namespace tarvex {

/// A printed page on a real device: a printer, or a PDF file. Twips are the page's own
/// unit; text is drawn at its true point size, never stretched by the scale.
class QPainterSurface : public PrintSurface
{
public:
    /// Begins painting on the device; the document ends with endDoc() or killDoc().
    explicit QPainterSurface(QPagedPaintDevice *device);
    ~QPainterSurface() override;

    QSizeF pageSize() const override;
    void setScale(double width, double height) override;
    double scaleWidth() const override;
    double scaleHeight() const override;
    void setFontName(const QString &name) override;
    void setFontSize(double points) override;
    void setBold(bool on) override;
    void setItalic(bool on) override;
    void setForeColor(int bgr) override;
    double fontSize() const override { return m_font.pointSizeF(); }
    double textWidth(const QString &text) const override;
    double textHeight(const QString &text) const override;
    void setDrawWidth(double points) override;
    void line(double x1, double y1, double x2, double y2) override;
    QSizeF pictureSize(const QString &path) const override;
    void drawPicture(const QString &path, double x, double y, double width, double height) override;
    void newPage() override;
    void endDoc() override;
    void killDoc() override;

protected:
    void drawText(const QString &text) override;

private:
    void fontChanged();
    QPointF toDevice(double x, double y) const;
    double twipsPerUnitX() const;
    double twipsPerUnitY() const;

    QPagedPaintDevice *m_device;
    QPainter m_painter;
    QFont m_font;
    std::optional<QFontMetricsF> m_metrics;
    QHash<QFont, QHash<QString, qreal>> m_widthsByFont; // device pixels, by font and text
    QHash<QString, qreal> *m_widths = nullptr;          // those of the font in use
    QSizeF m_pageSize;
    double m_scaleW = 0, m_scaleH = 0; // 0: twips
    double m_pixelsPerTwipX, m_pixelsPerTwipY;
};

} // namespace tarvex
