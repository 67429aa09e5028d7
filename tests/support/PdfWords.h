#pragma once

#include <QList>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QString>

namespace tarvex::test {

/// One word of a PDF as a reader finds it: its page (from 1) and its box in the page scale
/// the test asks for (so a sheet's own numbers, 200 by 280, can be checked directly).
struct PdfWord
{
    int page = 0;
    QString text;
    double xMin = 0, yMin = 0, xMax = 0, yMax = 0;
};

/// The words of a PDF file, read with pdftotext -bbox, in reading order, their boxes scaled
/// so that the page is scaleWidth by scaleHeight. Empty when pdftotext is not installed
/// (pdfReaderMissing() tells) or the file cannot be read.
inline QList<PdfWord> pdfWords(const QString &file, double scaleWidth, double scaleHeight)
{
    QList<PdfWord> words;
    const QString tool = QStandardPaths::findExecutable(QStringLiteral("pdftotext"));
    if (tool.isEmpty())
        return words;
    QProcess reader;
    reader.start(tool, {QStringLiteral("-bbox"), file, QStringLiteral("-")});
    if (!reader.waitForFinished(60000))
        return words;
    const QString html = QString::fromUtf8(reader.readAllStandardOutput());
    static const QRegularExpression pageRe(
        QString::fromLatin1(R"re(<page width="([\d.]+)" height="([\d.]+)">)re"));
    static const QRegularExpression wordRe(QString::fromLatin1(
        R"re(<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">([^<]*)</word>)re"));
    int page = 0;
    double fx = 1, fy = 1;
    qsizetype at = 0;
    while (true) {
        const auto p = pageRe.match(html, at);
        const auto w = wordRe.match(html, at);
        if (p.hasMatch() && (!w.hasMatch() || p.capturedStart() < w.capturedStart())) {
            ++page;
            fx = scaleWidth / p.captured(1).toDouble();
            fy = scaleHeight / p.captured(2).toDouble();
            at = p.capturedEnd();
            continue;
        }
        if (!w.hasMatch())
            break;
        QString text = w.captured(5);
        text.replace(QStringLiteral("&amp;"), QStringLiteral("&"))
            .replace(QStringLiteral("&lt;"), QStringLiteral("<"))
            .replace(QStringLiteral("&gt;"), QStringLiteral(">"))
            .replace(QStringLiteral("&quot;"), QStringLiteral("\""))
            .replace(QStringLiteral("&apos;"), QStringLiteral("'"));
        words.append({page, text, w.captured(1).toDouble() * fx, w.captured(2).toDouble() * fy,
                      w.captured(3).toDouble() * fx, w.captured(4).toDouble() * fy});
        at = w.capturedEnd();
    }
    return words;
}

inline bool pdfReaderMissing()
{
    return QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty();
}

/// The first word equal to text on the page (0: any page); nullptr when there is none.
inline const PdfWord *findWord(const QList<PdfWord> &words, const QString &text, int page = 0)
{
    for (const PdfWord &w : words)
        if (w.text == text && (page == 0 || w.page == page))
            return &w;
    return nullptr;
}

} // namespace tarvex::test
