#pragma once

#include <QString>

#include <vector>

namespace tarvex {

/// A pattern of the program's LIKE dialect, matched without regard to case:
/// "*" any run of characters, "?" one character, "#" one digit, "[abc]", "[a-z]" and
/// "[!a-z]" one character of (or not of) a set; "[*]" stands for a literal "*".
/// Every other character, "%" and "_" included, stands for itself.
class LikePattern
{
public:
    explicit LikePattern(const QString &pattern);
    bool matches(const QString &text) const;

private:
    struct Token
    {
        enum Kind { Literal, AnyRun, AnyOne, Digit, Set } kind;
        QChar ch;                                  // Literal, already case-folded
        std::vector<std::pair<QChar, QChar>> ranges; // Set, case-folded
        bool negated = false;
    };
    bool tokenMatches(const Token &token, QChar c) const;

    std::vector<Token> m_tokens;
};

} // namespace tarvex
