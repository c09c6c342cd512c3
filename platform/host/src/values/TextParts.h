#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Converts ASCII letters to upper case.
std::string upperCase(std::string_view text);

/// Parses a text from the left. Every operation removes what it finds, or nothing if it does not
/// find it.
class TextParts
{
public:
    explicit TextParts(std::string_view text) : _rest(text) {}

    bool atEnd() const { return _rest.empty(); }
    std::string_view rest() const { return _rest; }

    /// Takes one of the characters.
    bool take(std::string_view characters);
    /// Skips any number of the characters.
    void skip(std::string_view characters);
    /// Takes at most `mostDigits` digits.
    std::optional<int> number(std::size_t mostDigits);
    /// Takes all digits, for numbers that are too large for number().
    std::optional<double> amount();
    /// Takes letters and returns them in upper case; empty for none.
    std::string word();
    /// Takes a decimal sign and digits and returns the fraction; 0 if there is no sign.
    double fraction();

private:
    std::string_view _rest;
};
