#pragma once

#include <QString>

#include <stdexcept>

namespace tarvex {

/// A failure of the stud database, numbered as the program has always numbered them,
/// so that callers can tell a missing file (3024) or table (3011) from anything else.
class StoreError : public std::runtime_error
{
public:
    enum Code {
        ObjectNotFound = 3011,
        UpdateWithoutEdit = 3020,
        NoCurrentRecord = 3021,
        DuplicateKey = 3022,
        FileNotFound = 3024,
        CorruptDatabase = 3049,
        CannotOpenFile = 3051,
        Cancelled = 3059,
        FieldTooSmall = 3163,
        Locked = 3218,
        ItemNotFound = 3265,
        NotAnIndex = 3800,
        UnrecognizedFormat = 3343,
        QueryFailed = 3000,
        ValidationRule = 3317,
        DiskFull = 3026,
    };

    StoreError(int number, const QString &description)
        : std::runtime_error(description.toStdString()), m_number(number), m_description(description)
    {
    }

    int number() const { return m_number; }
    QString description() const { return m_description; }

    /// What the breeder is told when another program holds the stud and a change cannot be
    /// written: nothing of it reached the file, and the same action may simply be repeated.
    static QString inUseText()
    {
        return QStringLiteral(
            "The stud is in use by another program; nothing was saved. Close it and press Save again.");
    }

private:
    int m_number;
    QString m_description;
};

} // namespace tarvex
