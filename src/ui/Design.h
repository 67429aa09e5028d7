#pragma once

#include <QWidget>

namespace tarvex {

/// Screens are drawn on a design canvas measured in twips: 9600 by 7200 of them make
/// 640 by 480 pixels, fifteen twips to the pixel.
namespace Design {

constexpr int kTwipsPerPixel = 15;
constexpr int px(int twips) { return twips / kTwipsPerPixel; }

/// Puts a control at its design place, given in twips.
inline void place(QWidget *w, int left, int top, int width, int height)
{
    w->setGeometry(px(left), px(top), px(width), px(height));
}

/// Creates a named child control: the objectName is the control's own name.
template <typename T, typename... Args> T *make(QWidget *parent, const char *name, Args &&...args)
{
    auto *w = new T(std::forward<Args>(args)..., parent);
    w->setObjectName(QString::fromLatin1(name));
    return w;
}

} // namespace Design
} // namespace tarvex
