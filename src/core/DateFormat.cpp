#include "DateFormat.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

// Writes a piece over a fixed-width text at a 1-based position, as far as it fits.
void overwrite(QString &text, qsizetype position, const QString &piece)
{
    for (qsizetype i = 0; i < piece.size() && position - 1 + i < text.size(); ++i)
        text[position - 1 + i] = piece.at(i);
}

int twoDigitYear(int yy)
{
    return yy < 30 ? 2000 + yy : 1900 + yy;
}

// The day, month and year of the machine's Christmas 1999 joined by "/" when nothing but
// blanks stands between them, or nothing at all (the C locale's "25 Dec 1999", a
// "19991225"): such a machine has no date separator, and the program uses its own. Any
// other text is left as the machine wrote it.
QString withOwnSeparator(const QString &text)
{
    struct Part
    {
        qsizetype at, length;
    };
    Part year{text.indexOf(u"1999"_s), 4};
    if (year.at < 0)
        year = {text.indexOf(u"99"_s), 2};
    std::array<Part, 3> parts{{{text.indexOf(u"25"_s), 2}, {text.indexOf(u"12"_s), 2}, year}};
    std::sort(parts.begin(), parts.end(), [](const Part &a, const Part &b) { return a.at < b.at; });
    if (parts.front().at < 0)
        return text;
    QStringList pieces;
    qsizetype from = 0;
    for (const Part &p : parts) {
        if (p.at < from || !QStringView(text).mid(from, p.at - from).trimmed().isEmpty())
            return text;
        pieces << text.mid(p.at, p.length);
        from = p.at + p.length;
    }
    if (!QStringView(text).mid(from).trimmed().isEmpty())
        return text;
    return pieces.join(u'/');
}

} // namespace

QString dateFormattingErrorTitle()
{
    return u"Date Formatting Error"_s;
}

QString dateFormattingErrorText()
{
    return u"Sorry - Tarvex cannot format your selected Short Date Setting\n\n"
           u"Please change the setting in your Regional Settings accessible from Control Panel\n"
           u"or Contact Tarvex Systems with your setting details - Sorry!"_s;
}

QString DateSettings::format(const QDate &date) const
{
    QString out;
    const QString f = DateFormat;
    for (qsizetype i = 0; i < f.size();) {
        const QStringView rest = QStringView(f).mid(i);
        if (rest.startsWith(u"yyyy")) {
            out += QString::number(date.year()).rightJustified(4, u'0');
            i += 4;
        } else if (rest.startsWith(u"yy")) {
            out += QString::number(date.year() % 100).rightJustified(2, u'0');
            i += 2;
        } else if (rest.startsWith(u"mm")) {
            out += QString::number(date.month()).rightJustified(2, u'0');
            i += 2;
        } else if (rest.startsWith(u"dd")) {
            out += QString::number(date.day()).rightJustified(2, u'0');
            i += 2;
        } else if (f.at(i) == u'/') {
            out += separator;
            ++i;
        } else {
            out += f.at(i);
            ++i;
        }
    }
    return out;
}

bool DateSettings::fitsMask(const QString &text) const
{
    qsizetype t = 0;
    for (qsizetype m = 0; m < DateMask.size(); ++m, ++t) {
        QChar want = DateMask.at(m);
        if (want == u'\\' && m + 1 < DateMask.size())
            want = DateMask.at(++m);
        else if (want == u'#') {
            if (t >= text.size() || !text.at(t).isDigit())
                return false;
            continue;
        } else if (want.isLetter()) {
            // A letter in the mask asks for a letter, which a formatted date never has.
            if (t >= text.size() || !text.at(t).isLetter())
                return false;
            continue;
        }
        if (t >= text.size() || text.at(t) != want)
            return false;
    }
    return t == text.size();
}

std::optional<QDate> DateSettings::parse(const QString &text) const
{
    static const QRegularExpression digits(u"\\d+"_s);
    QList<int> groups;
    QList<qsizetype> lengths;
    for (auto it = digits.globalMatch(text); it.hasNext();) {
        const auto match = it.next();
        groups << match.captured().toInt();
        lengths << match.capturedLength();
    }
    if (groups.size() != 3)
        return std::nullopt;
    const qsizetype d = DateFormat.indexOf(u"dd"_s);
    const qsizetype m = DateFormat.indexOf(u"mm"_s);
    const qsizetype y = DateFormat.indexOf(u"yy"_s);
    QList<QPair<qsizetype, char>> order{{d, 'd'}, {m, 'm'}, {y, 'y'}};
    std::sort(order.begin(), order.end());
    int day = 0, month = 0, year = 0;
    for (int i = 0; i < 3; ++i) {
        switch (order.at(i).second) {
        case 'd':
            day = groups.at(i);
            break;
        case 'm':
            month = groups.at(i);
            break;
        default:
            year = lengths.at(i) <= 2 ? twoDigitYear(groups.at(i)) : groups.at(i);
            break;
        }
    }
    const QDate date(year, month, day);
    if (!date.isValid() || year < 100)
        return std::nullopt;
    return date;
}

std::optional<DateSettings> Detect_Date_Format(const ShortDateFunction &shortDate)
{
    QString text = shortDate(QDate(1999, 12, 25)).toUpper();
    text.replace(u"DEC"_s, u"12"_s);
    text = withOwnSeparator(text);
    const qsizetype d = text.indexOf(u"25"_s) + 1;
    const qsizetype m = text.indexOf(u"12"_s) + 1;
    bool fourDigits = false;
    qsizetype y = text.indexOf(u"1999"_s) + 1;
    if (y > 0)
        fourDigits = true;
    else
        y = text.indexOf(u"99"_s) + 1;
    if (d == 0 || m == 0 || y == 0)
        return std::nullopt;
    // A format whose parts stand beyond the twentieth place cannot be written down.
    if (d > 20 || m > 20 || y > 20)
        return std::nullopt;

    QString format(20, u' ');
    overwrite(format, d, u"dd/"_s);
    overwrite(format, m, u"mm/"_s);
    overwrite(format, y, fourDigits ? u"yyyy/"_s : u"yy/"_s);
    format = format.trimmed();
    format.chop(1);

    DateSettings s;
    s.DateFormat = format;
    for (const QChar c : text) {
        if (c == u'-' || c == u'/') {
            s.DateMask += c;
            s.BlankDate += c;
        } else if (c == u'.') {
            s.DateMask += u"\\."_s;
            s.BlankDate += u'.';
        } else if (c >= u'0' && c <= u'9') {
            s.DateMask += u'#';
            s.BlankDate += u'_';
        } else if ((c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z')) {
            s.DateMask += c.toUpper();
            s.BlankDate += u'_';
        } else {
            s.DateMask += c;
            s.BlankDate += c;
        }
    }
    for (const QChar c : text) {
        if (!c.isLetterOrNumber()) {
            s.separator = c;
            break;
        }
    }
    // The format must give back texts that the entry mask accepts.
    if (!s.fitsMask(s.format(QDate(1999, 12, 25))) || !s.fitsMask(s.format(QDate(2000, 1, 1))))
        return std::nullopt;
    return s;
}

bool Is_Valid_Date(const QString &text, const DateSettings &dates, Prompts &prompts)
{
    if (text == dates.BlankDate || dates.parse(text))
        return true;
    prompts.show(u"Date: "_s + text + u" is not valid"_s, QString(), Prompts::Icon::Exclamation);
    return false;
}

std::optional<QDate> requiredDate(const QString &text, const DateSettings &dates, Prompts &prompts)
{
    const QString t = text.trimmed();
    if (t.isEmpty() || t == dates.BlankDate || !Is_Valid_Date(t, dates, prompts)) {
        prompts.show(u"A valid date must be entered"_s, QString(), Prompts::Icon::Exclamation);
        return std::nullopt;
    }
    return dates.parse(t);
}

QString todayIfBlank(const DateSettings &dates, const QString &text, const QDate &today)
{
    if (text.trimmed().isEmpty() || text == dates.BlankDate)
        return dates.format(today);
    return text;
}

QString sortableDate(const QDate &date)
{
    return date.isValid() ? date.toString(u"yyyy/MM/dd"_s) : QString();
}

} // namespace tarvex
