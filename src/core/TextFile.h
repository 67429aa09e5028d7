#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

class QIODevice;

namespace tarvex {

/// Text files the user may have edited on any system: read as UTF-8 when the bytes are
/// valid UTF-8, otherwise as Windows-1252; CRLF and LF line ends both accepted.
namespace TextFile {

QString decode(const QByteArray &bytes, bool *wasUtf8 = nullptr);
QByteArray encodeWindows1252(const QString &text);
/// The lines of a decoded text, without their line ends.
QStringList lines(const QString &text);

/// Why readLines() gave up on a file.
struct Fault
{
    enum class Kind
    {
        TooLarge,    // more than the most bytes allowed
        LineTooLong, // a line of more bytes than allowed (line ends not counted)
        ReadError    // the device failed
    };
    Kind kind = Kind::ReadError;
    qsizetype line = 0; // the line too long, counted from 1
};

/// Reads a file or buffer from where it stands to its end and gives its decoded lines, as
/// lines(decode(...)) would. It holds at most maxBytes (plus one) in memory and decodes
/// nothing when the text has more bytes than maxBytes or a line of more than maxLineBytes:
/// whichever limit the text passes first is the fault.
std::optional<QStringList> readLines(QIODevice &device, qsizetype maxBytes, qsizetype maxLineBytes,
                                     Fault *fault);

} // namespace TextFile
} // namespace tarvex
