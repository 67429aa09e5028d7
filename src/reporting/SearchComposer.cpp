#include "SearchComposer.h"

#include "store/DaySerial.h"

using namespace Qt::StringLiterals;

namespace tarvex::SearchComposer {

QString ReplaceText(const QString &text, const QString &find, const QString &replacement, qsizetype start,
                    qsizetype count, Qt::CaseSensitivity compare)
{
    if (find.isEmpty() || count == 0)
        return text;
    QString out = text.left(std::max<qsizetype>(start - 1, 0));
    qsizetype from = out.size();
    qsizetype done = 0;
    while (count < 0 || done < count) {
        const qsizetype at = text.indexOf(find, from, compare);
        if (at < 0)
            break;
        out += QStringView(text).mid(from, at - from);
        out += replacement;
        from = at + find.size();
        ++done;
    }
    out += QStringView(text).mid(from);
    return out;
}

QString EscapeCriterionValue(const QString &value)
{
    // Two steps on purpose: a "||" the user typed becomes "''" as well.
    return ReplaceText(ReplaceText(value, u"'"_s, u"||"_s), u"||"_s, u"''"_s).toUpper();
}

QString WrapWildcards(const QString &text)
{
    return text.isEmpty() ? text : u'*' + text + u'*';
}

void AddLikeCriterion(QString &where, const QString &field, const QString &value, const QString &op)
{
    QString v = value.trimmed();
    if (v.isEmpty())
        return;
    if (!where.isEmpty())
        where += u" And "_s;
    if (v == u"*")
        v = u"**"_s;
    where += field + u' ' + op + u" '"_s + EscapeCriterionValue(v) + u'\'';
}

namespace {
void appendAnd(QString &where)
{
    if (!where.isEmpty())
        where += u" And "_s;
}
} // namespace

void AddNumberCriterion(QString &where, const QString &field, qint64 number, const QString &op)
{
    appendAnd(where);
    where += field + u' ' + (op.isEmpty() ? u"="_s : op) + u' ' + QString::number(number);
}

void AddDateCriterion(QString &where, const QString &field, const QString &dateText, const QString &op,
                      const DateSettings &dates)
{
    const std::optional<QDate> date = dates.parse(dateText);
    if (!date)
        return;
    const int yy = date->year() % 100;
    const QDate packed(yy < 30 ? 2000 + yy : 1900 + yy, date->month(), date->day());
    if (!packed.isValid())
        return;
    appendAnd(where);
    where += field + u' ' + (op.isEmpty() ? u"="_s : op) + u' ' +
             QString::number(qint64(DaySerial::fromDate(packed)));
}

} // namespace tarvex::SearchComposer
