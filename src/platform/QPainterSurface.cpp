#include "QPainterSurface.h"

#include <QPen>

#include <QFontMetricsF>
#include <QImage>
#include <QImageReader>
#include <QPrinter>

namespace tarvex {

QPainterSurface::QPainterSurface(QPagedPaintDevice *device) : m_device(device), m_painter(device)
{
    m_pixelsPerTwipX = device->logicalDpiX() / 1440.0;
    m_pixelsPerTwipY = device->logicalDpiY() / 1440.0;
    m_font = QFont(QStringLiteral("Arial"));
    m_font.setPointSizeF(10);
    m_painter.setBackgroundMode(Qt::TransparentMode);
    // Every page of a document has the size of the first.
    m_pageSize = QSizeF(device->width() / m_pixelsPerTwipX, device->height() / m_pixelsPerTwipY);
    fontChanged();
}

void QPainterSurface::fontChanged()
{
    // A long report sets the same few fonts on every row: the painter and the measures are
    // changed only when the font really is another.
    if (m_metrics && m_font == m_painter.font())
        return;
    m_painter.setFont(m_font);
    m_metrics.emplace(m_font, m_device);
    m_widths = &m_widthsByFont[m_font];
}

QPainterSurface::~QPainterSurface()
{
    if (m_painter.isActive())
        m_painter.end();
}

QSizeF QPainterSurface::pageSize() const
{
    return m_pageSize;
}

void QPainterSurface::setScale(double width, double height)
{
    m_scaleW = width;
    m_scaleH = height;
}

double QPainterSurface::scaleWidth() const
{
    return m_scaleW > 0 ? m_scaleW : pageSize().width();
}

double QPainterSurface::scaleHeight() const
{
    return m_scaleH > 0 ? m_scaleH : pageSize().height();
}

double QPainterSurface::twipsPerUnitX() const
{
    return m_scaleW > 0 ? pageSize().width() / m_scaleW : 1.0;
}

double QPainterSurface::twipsPerUnitY() const
{
    return m_scaleH > 0 ? pageSize().height() / m_scaleH : 1.0;
}

QPointF QPainterSurface::toDevice(double x, double y) const
{
    return {x * twipsPerUnitX() * m_pixelsPerTwipX, y * twipsPerUnitY() * m_pixelsPerTwipY};
}

void QPainterSurface::setFontName(const QString &name)
{
    m_font.setFamily(name);
    fontChanged();
}

void QPainterSurface::setFontSize(double points)
{
    m_font.setPointSizeF(points);
    fontChanged();
}

void QPainterSurface::setBold(bool on)
{
    m_font.setBold(on);
    fontChanged();
}

void QPainterSurface::setItalic(bool on)
{
    m_font.setItalic(on);
    fontChanged();
}

void QPainterSurface::setForeColor(int bgr)
{
    QPen pen = m_painter.pen();
    pen.setColor(QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF));
    m_painter.setPen(pen);
}

double QPainterSurface::textWidth(const QString &text) const
{
    // Reports measure the same texts (dates, the column heads) again and again; a text's
    // width in a font is worked out once.
    auto known = m_widths->constFind(text);
    if (known == m_widths->cend()) {
        if (m_widths->size() > 20000)
            m_widths->clear();
        known = m_widths->insert(text, m_metrics->horizontalAdvance(text));
    }
    return *known / m_pixelsPerTwipX / twipsPerUnitX();
}

double QPainterSurface::textHeight(const QString &) const
{
    return m_metrics->height() / m_pixelsPerTwipY / twipsPerUnitY();
}

void QPainterSurface::drawText(const QString &text)
{
    if (!m_painter.isActive())
        return;
    const QPointF at = toDevice(CurrentX, CurrentY);
    m_painter.drawText(QPointF(at.x(), at.y() + m_metrics->ascent()), text);
}

void QPainterSurface::setDrawWidth(double points)
{
    QPen pen = m_painter.pen();
    pen.setWidthF(points * m_device->logicalDpiX() / 72.0);
    m_painter.setPen(pen);
}

void QPainterSurface::line(double x1, double y1, double x2, double y2)
{
    if (m_painter.isActive())
        m_painter.drawLine(toDevice(x1, y1), toDevice(x2, y2));
}

QSizeF QPainterSurface::pictureSize(const QString &path) const
{
    QImageReader reader(path);
    const QSize size = reader.size();
    if (!size.isValid())
        return {};
    // Pictures without a resolution of their own count as screen pictures, 96 to the inch.
    return {size.width() * 15.0, size.height() * 15.0};
}

void QPainterSurface::drawPicture(const QString &path, double x, double y, double width, double height)
{
    if (!m_painter.isActive())
        return;
    const QRectF target(toDevice(x, y), toDevice(x + width, y + height));
    // A photograph is read no larger than the paper shows it at 300 to the inch, so a
    // camera's 24 megapixels are neither held in memory nor written whole into a PDF.
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize natural = reader.size();
    const double inchesWide = target.width() / m_device->logicalDpiX();
    const double inchesHigh = target.height() / m_device->logicalDpiY();
    const QSize enough(qMax(1, qRound(inchesWide * 300)), qMax(1, qRound(inchesHigh * 300)));
    if (natural.isValid() && natural.width() > enough.width() && natural.height() > enough.height())
        reader.setScaledSize(natural.scaled(enough, Qt::KeepAspectRatioByExpanding));
    const QImage image = reader.read();
    if (image.isNull())
        return;
    m_painter.drawImage(target, image);
}

void QPainterSurface::newPage()
{
    m_device->newPage();
}

void QPainterSurface::endDoc()
{
    if (m_painter.isActive())
        m_painter.end();
}

void QPainterSurface::killDoc()
{
    if (auto *printer = dynamic_cast<QPrinter *>(m_device))
        printer->abort();
    if (m_painter.isActive())
        m_painter.end();
}

} // namespace tarvex
