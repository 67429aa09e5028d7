#include "SymbolList.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace tarvex {

SymbolList::SymbolList(QWidget *parent) : QComboBox(parent) {}

QString SymbolList::symbolOf(const QString &item)
{
    const qsizetype dash = item.indexOf(u" - "_s);
    return dash < 0 ? item : item.left(dash);
}

QString SymbolList::shownText() const
{
    return symbolOf(currentText());
}

void SymbolList::showPopup()
{
    // Every item whole, however narrow the closed list.
    QAbstractItemView *items = view();
    items->setMinimumWidth(items->sizeHintForColumn(0) + 2 * items->frameWidth());
    QComboBox::showPopup();
}

void SymbolList::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    QStyleOptionComboBox option;
    initStyleOption(&option);
    option.currentText = shownText();
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

bool SymbolList::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty()) {
        // The closed list shows the symbol; the tip tells what it stands for.
        const QString whole = currentText();
        if (whole != shownText())
            QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), whole, this);
        else
            QToolTip::hideText();
        return true;
    }
    return QComboBox::event(event);
}

} // namespace tarvex
