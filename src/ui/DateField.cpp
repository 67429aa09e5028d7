#include "DateField.h"

#include "Design.h"

#include <QFontMetrics>

namespace tarvex {

QString qtInputMask(const QString &dateMask)
{
    QString mask;
    for (qsizetype i = 0; i < dateMask.size(); ++i) {
        const QChar c = dateMask.at(i);
        if (c == u'#') {
            mask += u'9';
        } else if (c == u'\\' && i + 1 < dateMask.size()) {
            mask += u'\\';
            mask += dateMask.at(++i);
        } else if (c.isLetterOrNumber() || QStringLiteral("<>!;[]{}").contains(c)) {
            // Letters and digits would be placeholders of the line edit's own mask language.
            mask += u'\\';
            mask += c;
        } else {
            mask += c;
        }
    }
    return mask + QStringLiteral(";_");
}

void Apply_Date_Mask(QLineEdit *field, const DateSettings &dates)
{
    // The blank date in the field's font, the program's allowance for the border, and room
    // for the caret and the frame.
    const int width = QFontMetrics(field->font()).horizontalAdvance(dates.BlankDate + u'0') + Design::px(105) + 8;
    field->resize(std::max(width, field->minimumSizeHint().width()), field->height());
    field->setInputMask(qtInputMask(dates.DateMask));
    field->setMaxLength(int(dates.BlankDate.size()));
}

} // namespace tarvex
