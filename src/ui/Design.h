#pragma once

#include "core/Prompts.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

namespace tarvex {

/// Screens are drawn on a design canvas measured in twips: 9600 by 7200 of them make
/// 640 by 480 pixels, fifteen twips to the pixel.
namespace Design {

constexpr int kTwipsPerPixel = 15;
constexpr int px(int twips)
{
    return twips / kTwipsPerPixel;
}

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

/// A column of labelled controls: each row a caption on the left and its control beside it,
/// one row under the other.
class FormRows
{
public:
    FormRows(QWidget *parent, int top, int labelLeft, int labelWidth, int controlLeft, int controlWidth)
        : m_parent(parent), m_top(top), m_labelLeft(labelLeft), m_labelWidth(labelWidth),
          m_controlLeft(controlLeft), m_controlWidth(controlWidth)
    {
    }
    void add(const char *labelName, const QString &caption, QWidget *control)
    {
        place(make<QLabel>(m_parent, labelName, caption), m_labelLeft, m_top + 40, m_labelWidth, 300);
        place(control, m_controlLeft, m_top, m_controlWidth, 340);
        m_top += 430;
    }

private:
    QWidget *m_parent;
    int m_top, m_labelLeft, m_labelWidth, m_controlLeft, m_controlWidth;
};

/// The rows the forms that describe an animal begin with: name, the stud's identity word,
/// breed and colour. makeList builds a drop-down list from its object name and items.
struct AnimalRows
{
    QLineEdit *name;
    QLineEdit *id;
    QComboBox *breed;
    QComboBox *colour;
};
template <typename MakeList>
AnimalRows addAnimalRows(FormRows &rows, QWidget *frame, const QString &idWord, const QString &colourWord,
                         const QStringList &breeds, const QStringList &colours, MakeList makeList)
{
    AnimalRows r{make<QLineEdit>(frame, "TxtFName"), make<QLineEdit>(frame, "TxtFRingNo"),
                 makeList("CmbFType", breeds), makeList("cmbFColour", colours)};
    rows.add("LblName", QStringLiteral("Name"), r.name);
    rows.add("LblId", idWord, r.id);
    rows.add("LblType", QStringLiteral("Breed"), r.breed);
    rows.add("LblColour", colourWord, r.colour);
    return r;
}

/// A drop-down list the user may also type into; typed text is not added to the list.
inline QComboBox *editableList(QWidget *parent, const char *name, const QStringList &items)
{
    auto *c = make<QComboBox>(parent, name);
    c->setEditable(true);
    c->setInsertPolicy(QComboBox::NoInsert);
    c->addItems(items);
    return c;
}

/// A list the user types into takes at most its field's length: a key that would make the
/// text longer is refused with the bell.
inline void limitTyping(QComboBox *list, int length, Prompts &prompts)
{
    list->lineEdit()->setMaxLength(length);
    QObject::connect(list->lineEdit(), &QLineEdit::inputRejected, list, [&prompts] { prompts.beep(); });
}

/// A button of a panel's row, at its left edge in twips.
inline QPushButton *panelButton(QWidget *panel, const char *name, const QString &caption, int left, int width,
                                int height)
{
    auto *b = make<QPushButton>(panel, name, caption);
    place(b, left, 0, width, height);
    return b;
}

} // namespace Design
} // namespace tarvex
