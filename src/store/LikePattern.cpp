#include "LikePattern.h"

namespace tarvex {

namespace {
QChar fold(QChar c)
{
    return c.toCaseFolded();
}
} // namespace

LikePattern::LikePattern(const QString &pattern)
{
    const qsizetype n = pattern.size();
    for (qsizetype i = 0; i < n; ++i) {
        const QChar c = pattern.at(i);
        Token t{Token::Literal, fold(c), {}, false};
        if (c == u'*') {
            // Consecutive stars match what one star matches.
            if (!m_tokens.empty() && m_tokens.back().kind == Token::AnyRun)
                continue;
            t.kind = Token::AnyRun;
        } else if (c == u'?') {
            t.kind = Token::AnyOne;
        } else if (c == u'#') {
            t.kind = Token::Digit;
        } else if (c == u'[') {
            const qsizetype close = pattern.indexOf(u']', i + 2);
            // "[]" and an unclosed "[" are taken literally.
            if (i + 1 < n && pattern.at(i + 1) != u']' && close > i) {
                t.kind = Token::Set;
                qsizetype j = i + 1;
                if (pattern.at(j) == u'!' && j + 1 < close) {
                    t.negated = true;
                    ++j;
                }
                while (j < close) {
                    QChar lo = fold(pattern.at(j));
                    QChar hi = lo;
                    if (j + 2 < close && pattern.at(j + 1) == u'-') {
                        hi = fold(pattern.at(j + 2));
                        j += 3;
                    } else {
                        ++j;
                    }
                    if (hi < lo)
                        std::swap(lo, hi);
                    t.ranges.emplace_back(lo, hi);
                }
                i = close;
            }
        }
        m_tokens.push_back(std::move(t));
    }
}

bool LikePattern::tokenMatches(const Token &token, QChar c) const
{
    switch (token.kind) {
    case Token::Literal:
        return fold(c) == token.ch;
    case Token::AnyOne:
        return true;
    case Token::Digit:
        return c >= u'0' && c <= u'9';
    case Token::Set: {
        const QChar f = fold(c);
        bool in = false;
        for (const auto &[lo, hi] : token.ranges) {
            if (f >= lo && f <= hi) {
                in = true;
                break;
            }
        }
        return in != token.negated;
    }
    case Token::AnyRun:
        break;
    }
    return false;
}

bool LikePattern::matches(const QString &text) const
{
    // Greedy walk with one remembered star: on a mismatch, let the last star swallow
    // one more character and try again from there.
    size_t p = 0;
    qsizetype s = 0;
    size_t starToken = SIZE_MAX;
    qsizetype starText = 0;
    const qsizetype n = text.size();
    while (s < n) {
        if (p < m_tokens.size() && m_tokens[p].kind == Token::AnyRun) {
            starToken = p++;
            starText = s;
        } else if (p < m_tokens.size() && tokenMatches(m_tokens[p], text.at(s))) {
            ++p;
            ++s;
        } else if (starToken != SIZE_MAX) {
            p = starToken + 1;
            s = ++starText;
        } else {
            return false;
        }
    }
    while (p < m_tokens.size() && m_tokens[p].kind == Token::AnyRun)
        ++p;
    return p == m_tokens.size();
}

} // namespace tarvex
