#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace tarvex {

/// Text files the user may have edited on any system: read as UTF-8 when the bytes are
/// valid UTF-8, otherwise as Windows-1252; CRLF and LF line ends both accepted.
namespace TextFile {

QString decode(const QByteArray &bytes, bool *wasUtf8 = nullptr);
QByteArray encodeWindows1252(const QString &text);
/// The lines of a decoded text, without their line ends.
QStringList lines(const QString &text);

} // namespace TextFile
} // namespace tarvex
