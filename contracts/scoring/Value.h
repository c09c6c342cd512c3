#pragma once

#include <string>

#include "ScoringExport.h"

/// A value of a record: a number or a text. Texts are UTF-8. A missing number is MCMV::Missing(); a
/// missing text is empty. A date or a timestamp is a number of seconds since 1582-10-14, a time is
/// a number of seconds since midnight. Copies are independent. If a text replaces a text, the
/// object reuses its memory.
class SCORING_API Value
{
public:
    /// A copy of a text that ends in a zero byte. Not null.
    Value(const char* text) : _isText(true), _text(text) {} // NOLINT(google-explicit-constructor)
    /// A number.
    Value(double number) : _number(number) {} // NOLINT(google-explicit-constructor)

    /// Makes the value a number.
    Value& operator=(int number);
    /// Makes the value a number.
    Value& operator=(double number);
    /// Makes the value a copy of a text.
    Value& operator=(const std::string& text);
    /// The number of the value, as a reference. For a text, the number has no meaning.
    operator double&() { return _number; } // NOLINT(google-explicit-constructor)

    /// Whether the value is a text.
    bool IsText() const { return _isText; }
    /// The number. For a text, the result has no meaning.
    double GetNumber() const { return _number; }
    /// The text; the value owns it. For a number, the result has no meaning.
    const std::string& GetText() const { return _text; }

private:
    bool _isText = false;
    double _number = 0;
    std::string _text;
};
