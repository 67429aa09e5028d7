#include "SearchComposer.h"

using namespace Qt::StringLiterals;

namespace tarvex::SearchComposer {

QString EscapeCriterionValue(const QString &value)
{
    QString v = value;
    v.replace(u"'"_s, u"||"_s);
    v.replace(u"||"_s, u"''"_s);
    return v.toUpper();
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

} // namespace tarvex::SearchComposer
