#include "Awards.h"

#include "core/NumericValue.h"
#include "store/DaySerial.h"
#include "store/StockLookup.h"
#include "store/StudDatabase.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

QStringList vocabulary(Database &db, const QString &index, const QString &field)
{
    Table awards(db, u"Awards"_s);
    return walkVocabulary(awards, index, field);
}

AwardRow awardOf(const Row &row)
{
    AwardRow a;
    a.unique = row.number(u"Unique"_s);
    a.date = DaySerial::toDate(row.value(u"Date"_s));
    a.venue = row.text(u"Venue"_s);
    a.secretary = row.text(u"Secretary"_s);
    a.judge = row.text(u"Judge"_s);
    a.award = row.text(u"Award"_s);
    a.comments = row.text(u"Comments"_s);
    if (!row.isNull(u"NoEntered"_s))
        a.entered = row.number(u"NoEntered"_s);
    if (!row.isNull(u"NoShown"_s))
        a.shown = row.number(u"NoShown"_s);
    if (!row.isNull(u"Stars"_s))
        a.stars = row.text(u"Stars"_s);
    if (!row.isNull(u"CCStars"_s))
        a.ccStars = row.text(u"CCStars"_s);
    return a;
}

const QString kAwardsOfAnimal = u"SELECT * FROM Awards WHERE Number = ? ORDER BY Date, \"Unique\""_s;

// A three-digit mask's number: null while the mask is blank.
QVariant maskNumber(const QString &text)
{
    QString digits = text;
    digits.remove(u'_');
    digits = digits.trimmed();
    if (digits.isEmpty())
        return {};
    return qint64(numericValue(digits));
}

// A star count as the lists offer it: its numeric value written plainly.
QString plainNumber(const QString &text)
{
    return QString::number(numericValue(text));
}

} // namespace

void StarTotal::add(const QString &ccStars)
{
    m_total = std::nearbyint(m_total + numericValue(ccStars));
}

QStringList Fill_Award_Names(Database &db)
{
    return vocabulary(db, u"Awards"_s, u"Award"_s);
}

QStringList Fill_Judge_Names(Database &db)
{
    return vocabulary(db, u"Judges"_s, u"Judge"_s);
}

QStringList Fill_Venue_Names(Database &db)
{
    return vocabulary(db, u"Venues"_s, u"Venue"_s);
}

Awards::Awards(Session &session, Prompts &prompts, qint64 number, const QString &name)
    : m_session(session), m_prompts(prompts), m_number(number), m_name(name)
{
}

QList<AwardColumn> Awards::Build_Award_Columns() const
{
    const bool off = !m_session.PointsOn;
    QList<AwardColumn> columns{{u"Date v"_s, u"######"_s}, {u"Award"_s, u"############"_s, false, off}};
    if (m_session.PointsOn)
        columns << AwardColumn{m_session.PointsName, m_session.PointsName + u" v"_s, true}
                << AwardColumn{u"Awarded"_s, u"Awarded v"_s, true};
    columns << AwardColumn{u"Judge"_s, u"###########"_s, false, off}
            << AwardColumn{u"Club"_s, u"###############"_s, false, off}
            << AwardColumn{u"Shown"_s, u"Shown v"_s, true};
    return columns;
}

QStringList Awards::absentWidthPatterns() const
{
    if (m_session.PointsOn)
        return {};
    return {m_session.PointsName + u" v"_s, u"Awarded v"_s};
}

QString Awards::shortDate(const QDate &date) const
{
    if (!date.isValid())
        return {};
    DateSettings shortForm = m_session.Dates;
    shortForm.DateFormat.replace(u"yyyy"_s, u"yy"_s);
    return shortForm.format(date);
}

QList<AwardRow> Awards::Load_Award_List()
{
    QList<AwardRow> rows;
    StarTotal total;
    m_session.Stud->handle().eachRow(kAwardsOfAnimal, {m_number}, [&](const Row &row) {
        rows << awardOf(row);
        if (m_session.PointsOn && rows.last().ccStars)
            total.add(*rows.last().ccStars);
    });
    m_caption = u"Awards For "_s + m_name;
    const qint16 stars = total.value();
    if (stars != 0)
        m_caption += u" (Total CC Stars: "_s + QString::number(stars) + u')';
    return rows;
}

QStringList Awards::rowTexts(const AwardRow &row) const
{
    QStringList texts{shortDate(row.date), row.award};
    if (m_session.PointsOn)
        texts << row.stars.value_or(QString()) << row.ccStars.value_or(QString());
    texts << row.judge << row.venue << (row.shown ? QString::number(*row.shown) : QString());
    return texts;
}

QStringList Awards::Fill_Star_Lists() const
{
    QStringList stars{QString()};
    for (int i = 1; i <= m_session.MaxPoints; ++i)
        stars << QString::number(i);
    return stars;
}

std::optional<AwardRow> Awards::find(qint64 unique) const
{
    std::optional<AwardRow> found;
    m_session.Stud->handle().eachRow(u"SELECT * FROM Awards WHERE \"Unique\" = ? AND Number = ?"_s,
                                     {unique, m_number}, [&](const Row &row) { found = awardOf(row); });
    return found;
}

std::optional<AwardRow> Awards::amend(std::optional<qint64> selected)
{
    if (!selected) {
        m_prompts.show(u"Nothing Selected"_s, QString(), Prompts::Icon::Information);
        return std::nullopt;
    }
    std::optional<AwardRow> row = find(*selected);
    if (!row)
        m_prompts.show(u"System Error - Could not find Award"_s);
    return row;
}

AwardForm Awards::formOf(const AwardRow &row) const
{
    AwardForm f;
    f.date = row.date.isValid() ? m_session.Dates.format(row.date) : m_session.Dates.BlankDate;
    if (m_session.PointsOn) {
        if (row.stars && !row.stars->trimmed().isEmpty())
            f.stars = plainNumber(*row.stars);
        if (row.ccStars && !row.ccStars->trimmed().isEmpty())
            f.ccStars = plainNumber(*row.ccStars);
    }
    f.venue = row.venue;
    f.secretary = row.secretary;
    f.judge = row.judge;
    f.award = row.award;
    if (row.entered)
        f.entered = QString::number(*row.entered);
    if (row.shown)
        f.shown = QString::number(*row.shown);
    f.comments = row.comments;
    return f;
}

std::optional<QString> Awards::AAward_LostFocus(const QString &award, const QString &awardOnFocus,
                                                const QString &stars) const
{
    if (!m_session.PointsOn || stars.isEmpty() || award.isEmpty() || award == awardOnFocus)
        return std::nullopt;
    static const QStringList certificates{u"CC"_s, u"C.C."_s, u"CHALLENGE CERTIFICATE"_s, u"CHALLENGE"_s,
                                          u"CERTIFICATE"_s};
    if (!certificates.contains(award.toUpper()))
        return std::nullopt;
    return stars;
}

QString Awards::AVenue_LostFocus(const QString &venue)
{
    return venue.size() > AwardLimits::Venue ? venue.left(AwardLimits::Venue).trimmed() : venue;
}

QStringList Awards::secretariesOf(const QString &venue) const
{
    QStringList names;
    // The club's awards from the last entered backwards: the latest secretary comes first.
    m_session.Stud->handle().eachRow(
        u"SELECT Secretary FROM Awards WHERE Venue = ? AND Secretary IS NOT NULL ORDER BY rowid DESC"_s, {venue},
        [&](const Row &row) {
            const QString name = row.text(u"Secretary"_s);
            if (!names.contains(name))
                names << name;
        });
    return names;
}

bool Awards::save(AwardForm &f, const std::optional<AwardRow> &amending, QString *focus)
{
    const DateSettings &dates = m_session.Dates;
    f.date = f.date.trimmed();
    if (f.date.isEmpty() || f.date == dates.BlankDate) {
        m_prompts.show(u"A valid date must be entered"_s, QString(), Prompts::Icon::Exclamation);
        *focus = u"ADate"_s;
        return false;
    }
    if (!Is_Valid_Date(f.date, dates, m_prompts)) {
        *focus = u"ADate"_s;
        return false;
    }
    const QDate date = *dates.parse(f.date);
    const auto cut = [](QString &text, int length) {
        if (!text.isEmpty())
            text = text.left(length).trimmed();
    };
    cut(f.award, AwardLimits::Award);
    cut(f.judge, AwardLimits::Judge);
    cut(f.venue, AwardLimits::Venue);
    cut(f.secretary, AwardLimits::Secretary);

    Database &db = m_session.Stud->handle();
    QStringList fields{u"Number"_s, u"Date"_s, u"Venue"_s, u"Secretary"_s, u"Judge"_s, u"Award"_s,
                       u"NoEntered"_s, u"NoShown"_s, u"Comments"_s};
    QVariantList values{m_number,           DaySerial::fromDate(date), textOrNull(f.venue), textOrNull(f.secretary),
                        textOrNull(f.judge), textOrNull(f.award),      maskNumber(f.entered), maskNumber(f.shown),
                        textOrNull(f.comments)};
    // Without the points system the stars of an award stay as they were.
    if (m_session.PointsOn) {
        fields << u"Stars"_s << u"CCStars"_s;
        values << textOrNull(f.stars.trimmed()) << textOrNull(f.ccStars.trimmed());
    }
    Transaction tx(db);
    bool updated = false;
    if (amending && amending->date == date) {
        QStringList sets;
        for (const QString &field : fields)
            sets << field + u" = ?"_s;
        QVariantList withKey = values;
        withKey << amending->unique;
        // An award removed meanwhile is written anew below rather than losing what was typed.
        updated = db.execute(u"UPDATE Awards SET "_s + sets.join(u", "_s) + u" WHERE \"Unique\" = ?"_s, withKey) > 0;
    }
    if (!updated) {
        // The date is part of the award's key: an award given a new date is written anew.
        if (amending) {
            if (!m_session.PointsOn && (amending->stars || amending->ccStars)) {
                fields << u"Stars"_s << u"CCStars"_s;
                values << (amending->stars ? QVariant(*amending->stars) : QVariant())
                       << (amending->ccStars ? QVariant(*amending->ccStars) : QVariant());
            }
            db.execute(u"DELETE FROM Awards WHERE \"Unique\" = ?"_s, {amending->unique});
        }
        db.execute(u"INSERT INTO Awards ("_s + fields.join(u", "_s) + u") VALUES ("_s +
                       QStringList(fields.size(), u"?"_s).join(u", "_s) + u')',
                   values);
    }
    tx.commit();
    return true;
}

bool Awards::remove(std::optional<qint64> selected)
{
    if (!selected) {
        m_prompts.show(u"Nothing Selected"_s, QString(), Prompts::Icon::Information);
        return false;
    }
    if (!find(*selected)) {
        m_prompts.show(u"Whoops - could not find it!"_s);
        return false;
    }
    if (m_prompts.message(u"Remove This Award"_s, QString(), Prompts::Icon::Question, Prompts::Buttons::YesNoCancel) !=
        Prompts::Answer::Yes)
        return false;
    Database &db = m_session.Stud->handle();
    Transaction tx(db);
    db.execute(u"DELETE FROM Awards WHERE \"Unique\" = ?"_s, {*selected});
    tx.commit();
    return true;
}

QString Awards::bestAward() const
{
    return m_session.Stud->handle().scalar(u"SELECT BestAward FROM Stock WHERE Number = ?"_s, {m_number}).toString();
}

QStringList Awards::bestAwardChoices() const
{
    QStringList choices;
    const QVariant best =
        m_session.Stud->handle().scalar(u"SELECT BestAward FROM Stock WHERE Number = ?"_s, {m_number});
    if (!best.isNull())
        choices << best.toString();
    m_session.Stud->handle().eachRow(kAwardsOfAnimal, {m_number}, [&](const Row &row) {
        if (row.isNull(u"Award"_s))
            return;
        const QString award = row.text(u"Award"_s);
        if (!choices.contains(award))
            choices << award;
    });
    return choices;
}

void Awards::setBestAward(const QString &text)
{
    Database &db = m_session.Stud->handle();
    Transaction tx(db);
    db.execute(u"UPDATE Stock SET BestAward = ? WHERE Number = ?"_s,
               {textOrNull(text.left(AwardLimits::BestAward)), m_number});
    tx.commit();
}

} // namespace tarvex
