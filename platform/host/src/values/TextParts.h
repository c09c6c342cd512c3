#pragma once

#include <optional>
#include <string>
#include <string_view>

/// ASCII letters in upper case; everything else as it is.
std::string upperCase(std::string_view text);
/// Without blanks and tabs on either side.
std::string_view trimmed(std::string_view text);

/// Takes a text apart from the left. Every operation takes what it finds off the text, and nothing
/// if it does not find it.
class TextParts
{
public:
    explicit TextParts(std::string_view text) : _rest(text) {}

    bool atEnd() const { return _rest.empty(); }
    std::string_view rest() const { return _rest; }

    /// One of the characters; some of them, maybe none.
    bool take(std::string_view characters);
    void skip(std::string_view characters);
    /// Digits, at most so many.
    std::optional<int> number(std::size_t mostDigits);
    /// Digits, as many as there are, for amounts that are too great for the former.
    std::optional<double> amount();
    /// Letters, in upper case; empty for none.
    std::string word();
    /// Digits behind a decimal sign, as a part of one; 0 if there is no sign.
    double fraction();

private:
    std::string_view _rest;
};
