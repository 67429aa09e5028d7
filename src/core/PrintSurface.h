#pragma once

#include <QSizeF>
#include <QString>

namespace tarvex {

/// A printed page as the program draws on it: a scale chosen per job (from 0,0 to a
/// corner), a current position, a font, text that moves the position to the next line,
/// lines and pictures. Text keeps its true point size whatever the scale. Failures
/// (a missing picture, a printer fault) skip the one statement; the page goes on.
class PrintSurface
{
public:
    virtual ~PrintSurface() = default;

    /// The page in its own unit, twips (1/1440 inch).
    virtual QSizeF pageSize() const = 0;
    /// User units from 0,0 to (width, height) over the page; (0, 0) goes back to twips.
    virtual void setScale(double width, double height) = 0;
    virtual double scaleWidth() const = 0;
    virtual double scaleHeight() const = 0;

    double CurrentX = 0;
    double CurrentY = 0;

    virtual void setFontName(const QString &name) = 0;
    virtual void setFontSize(double points) = 0;
    virtual void setBold(bool on) = 0;
    virtual void setItalic(bool on) = 0;
    /// The colour as 0xBBGGRR: 255 is red, 0 black.
    virtual void setForeColor(int bgr) = 0;
    virtual double fontSize() const = 0;

    /// Width and height of a text in the current font, in user units.
    virtual double textWidth(const QString &text) const = 0;
    virtual double textHeight(const QString &text) const = 0;

    /// Prints at the current position; the position goes to the start of the next line.
    void print(const QString &text)
    {
        drawText(text);
        CurrentX = 0;
        CurrentY += textHeight(text.isEmpty() ? QStringLiteral("X") : text);
    }
    /// Prints at the current position; the position stays behind the text.
    void printInline(const QString &text)
    {
        drawText(text);
        CurrentX += textWidth(text);
    }

    /// The width of the lines drawn from now on, in points (1 when not set).
    virtual void setDrawWidth(double points) { (void)points; }
    virtual void line(double x1, double y1, double x2, double y2) = 0;
    /// The size of a picture file in twips; empty when it cannot be read.
    virtual QSizeF pictureSize(const QString &path) const = 0;
    virtual void drawPicture(const QString &path, double x, double y, double width, double height) = 0;

    virtual void newPage() = 0;
    virtual void endDoc() = 0;
    virtual void killDoc() = 0;

protected:
    /// Draws a text with its top left at the current position.
    virtual void drawText(const QString &text) = 0;
};

} // namespace tarvex
