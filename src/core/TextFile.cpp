#include "TextFile.h"

#include <QIODevice>
#include <QStringDecoder>

#include <algorithm>
#include <array>

namespace tarvex::TextFile {

namespace {
// Windows-1252 differs from Latin-1 only in 0x80-0x9F.
constexpr std::array<char16_t, 32> kHigh = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
} // namespace

QString decode(const QByteArray &bytes, bool *wasUtf8)
{
    QByteArray body = bytes;
    if (body.startsWith("\xEF\xBB\xBF"))
        body.remove(0, 3);
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(body);
    if (!utf8.hasError()) {
        if (wasUtf8)
            *wasUtf8 = true;
        return text;
    }
    if (wasUtf8)
        *wasUtf8 = false;
    text.clear();
    text.reserve(body.size());
    for (const char c : body) {
        const auto b = static_cast<unsigned char>(c);
        text.append(b >= 0x80 && b < 0xA0 ? QChar(kHigh[b - 0x80]) : QChar(char16_t(b)));
    }
    return text;
}

QByteArray encodeWindows1252(const QString &text)
{
    QByteArray out;
    out.reserve(text.size());
    for (const QChar ch : text) {
        const char16_t u = ch.unicode();
        if (u < 0x80 || (u >= 0xA0 && u <= 0xFF)) {
            out.append(char(u));
            continue;
        }
        char found = '?';
        for (size_t i = 0; i < kHigh.size(); ++i) {
            if (kHigh[i] == u) {
                found = char(0x80 + i);
                break;
            }
        }
        out.append(found);
    }
    return out;
}

QStringList lines(const QString &text)
{
    QString t = text;
    t.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    t.replace(QChar(u'\r'), QChar(u'\n'));
    QStringList result = t.split(QChar(u'\n'));
    if (!result.isEmpty() && result.last().isEmpty())
        result.removeLast();
    return result;
}

std::optional<QStringList> readLines(QIODevice &device, qsizetype maxBytes, qsizetype maxLineBytes,
                                     Fault *fault)
{
    const auto refuse = [fault](Fault::Kind kind, qsizetype line = 0) -> std::optional<QStringList> {
        if (fault)
            *fault = {kind, line};
        return std::nullopt;
    };
    QByteArray bytes;
    // Lines are counted as lines() splits them: CRLF, LF and a lone CR each end one.
    qsizetype line = 1, lineBytes = 0;
    bool afterCr = false;
    char chunk[16 * 1024];
    while (bytes.size() <= maxBytes) {
        // Never more than one byte past the limit, so a huge file costs no more than that.
        const qint64 wanted = std::min<qint64>(sizeof chunk, maxBytes + 1 - bytes.size());
        const qint64 got = device.read(chunk, wanted);
        if (got < 0)
            return refuse(Fault::Kind::ReadError);
        if (got == 0)
            break;
        for (qint64 i = 0; i < got; ++i) {
            const char c = chunk[i];
            if (c == '\n' && afterCr) {
                afterCr = false;
            } else if (c == '\n' || c == '\r') {
                afterCr = c == '\r';
                ++line;
                lineBytes = 0;
            } else {
                afterCr = false;
                if (++lineBytes > maxLineBytes)
                    return refuse(Fault::Kind::LineTooLong, line);
            }
        }
        bytes.append(chunk, qsizetype(got));
    }
    if (bytes.size() > maxBytes)
        return refuse(Fault::Kind::TooLarge);
    return lines(decode(bytes));
}

} // namespace tarvex::TextFile
