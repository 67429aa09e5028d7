#include "Options.h"

#include "Session.h"

using namespace Qt::StringLiterals;

namespace tarvex {

Options::Options(const Session &session) : Options(session.AppName, session.StockType) {}

Options::Options(const QString &application, const QString &stockType)
    : m_settings(application), m_stockType(stockType)
{
}

QString Options::sectionName(OptionSection section) const
{
    switch (section) {
    case OptionSection::General:
        return u"General"_s;
    case OptionSection::Catalogue:
        return u"Databases"_s;
    case OptionSection::Program:
        return u"Options"_s;
    case OptionSection::Stud:
        return m_stockType;
    case OptionSection::StudOptions:
        return m_stockType + u"\\Options"_s;
    case OptionSection::GeneticsMap:
        return m_stockType + u"\\Genetics Map"_s;
    case OptionSection::ReportOptions:
        return m_stockType + u"\\Report Options"_s;
    case OptionSection::LabelOptions:
        return m_stockType + u"\\Label Options"_s;
    }
    return {};
}

QString Options::keyName(const OptionKey &key, const QString &arg)
{
    const QString name = QString::fromUtf16(key.name);
    return name.contains(u"%1"_s) ? name.arg(arg) : name;
}

bool Options::isOn(const QString &value)
{
    const QString v = value.trimmed();
    bool whole = false;
    const qlonglong n = v.toLongLong(&whole);
    if (whole)
        return n != 0;
    return v.compare(u"True"_s, Qt::CaseInsensitive) == 0 || v.compare(u"Yes"_s, Qt::CaseInsensitive) == 0;
}

QString Options::text(const OptionKey &key, const QString &arg) const
{
    return m_settings.GetSetting(sectionName(key.section), keyName(key, arg), QString::fromUtf16(key.fallback));
}

QString Options::textOr(const OptionKey &key, const QString &ifAbsent, const QString &arg) const
{
    return m_settings.GetSetting(sectionName(key.section), keyName(key, arg), ifAbsent);
}

bool Options::flag(const OptionKey &key, const QString &arg) const
{
    Q_ASSERT(key.type == OptionType::Flag);
    return isOn(text(key, arg));
}

int Options::number(const OptionKey &key, const QString &arg) const
{
    Q_ASSERT(key.type == OptionType::Number);
    return text(key, arg).trimmed().toInt();
}

bool Options::has(const OptionKey &key, const QString &arg) const
{
    // A value no store can hold tells absence from any stored text.
    const QString absent(1, QChar(0));
    return m_settings.GetSetting(sectionName(key.section), keyName(key, arg), absent) != absent;
}

bool Options::set(const OptionKey &key, const QString &value, const QString &arg)
{
    return m_settings.SaveSetting(sectionName(key.section), keyName(key, arg), value);
}

bool Options::setFlag(const OptionKey &key, bool on, const QString &arg)
{
    Q_ASSERT(key.type == OptionType::Flag);
    return set(key, on ? u"1"_s : u"0"_s, arg);
}

bool Options::setNumber(const OptionKey &key, qint64 value, const QString &arg)
{
    Q_ASSERT(key.type == OptionType::Number);
    return set(key, QString::number(value), arg);
}

bool Options::remove(const OptionKey &key, const QString &arg)
{
    return m_settings.DeleteSetting(sectionName(key.section), keyName(key, arg));
}

CRegSettings::Values Options::all(OptionSection section) const
{
    return m_settings.GetAllSettings(sectionName(section));
}

QString Options::entry(OptionSection section, const QString &key, const QString &ifAbsent) const
{
    return m_settings.GetSetting(sectionName(section), key, ifAbsent);
}

bool Options::setEntry(OptionSection section, const QString &key, const QString &value)
{
    return m_settings.SaveSetting(sectionName(section), key, value);
}

bool Options::removeEntry(OptionSection section, const QString &key)
{
    return m_settings.DeleteSetting(sectionName(section), key);
}

bool Options::removeSection(OptionSection section)
{
    return m_settings.DeleteSetting(sectionName(section));
}

} // namespace tarvex
