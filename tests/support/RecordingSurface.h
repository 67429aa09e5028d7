#pragma once

#include "core/PrintSurface.h"

#include <QHash>
#include <QList>

namespace tarvex::test {

/// A page that writes down what is drawn on it, with simple, fixed text metrics: a
/// character is half its point size wide, a line 1.2 times its point size high. Places
/// are recorded in the scale in force when they were drawn.
class RecordingSurface : public PrintSurface
{
public:
    struct Op
    {
        enum Kind { Text, Line, Picture, End, Kill } kind;
        QString text;
        double x = 0, y = 0, x2 = 0, y2 = 0;
        double size = 0;
        bool bold = false, italic = false;
        int colour = 0;
        double scaleWidth = 0;
    };

    QSizeF pageSize() const override { return {11906, 16838}; }
    void setScale(double width, double height) override { m_w = width, m_h = height; }
    double scaleWidth() const override { return m_w > 0 ? m_w : pageSize().width(); }
    double scaleHeight() const override { return m_h > 0 ? m_h : pageSize().height(); }
    void setFontName(const QString &name) override { fontName = name; }
    void setFontSize(double points) override { m_size = points; }
    void setBold(bool on) override { m_bold = on; }
    void setItalic(bool on) override { m_italic = on; }
    void setForeColor(int bgr) override { m_colour = bgr; }
    double fontSize() const override { return m_size; }
    double textWidth(const QString &text) const override
    {
        return text.size() * m_size * 10 / (pageSize().width() / scaleWidth());
    }
    double textHeight(const QString &) const override
    {
        return m_size * 24 / (pageSize().height() / scaleHeight());
    }
    void line(double x1, double y1, double x2, double y2) override
    {
        ops.append({Op::Line, {}, x1, y1, x2, y2, 0, false, false, m_colour, scaleWidth()});
    }
    QSizeF pictureSize(const QString &path) const override { return pictures.value(path); }
    void drawPicture(const QString &path, double x, double y, double w, double h) override
    {
        ops.append({Op::Picture, path, x, y, w, h, 0, false, false, 0, scaleWidth()});
    }
    void newPage() override {}
    void endDoc() override { ops.append({Op::End, {}, 0, 0, 0, 0, 0, false, false, 0, 0}); }
    void killDoc() override { ops.append({Op::Kill, {}, 0, 0, 0, 0, 0, false, false, 0, 0}); }

    /// The first text drawn that equals text; nullptr when there is none.
    const Op *find(const QString &text) const
    {
        for (const Op &op : ops)
            if (op.kind == Op::Text && op.text == text)
                return &op;
        return nullptr;
    }

    QList<Op> ops;
    QHash<QString, QSizeF> pictures;
    QString fontName;

protected:
    void drawText(const QString &text) override
    {
        ops.append({Op::Text, text, CurrentX, CurrentY, 0, 0, m_size, m_bold, m_italic, m_colour, scaleWidth()});
    }

private:
    double m_w = 0, m_h = 0, m_size = 10;
    bool m_bold = false, m_italic = false;
    int m_colour = 0;
};

} // namespace tarvex::test
