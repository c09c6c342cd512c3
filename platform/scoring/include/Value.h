#pragma once

#include <string>

#include "ScoringExport.h"

/// A value of a record: a number or a text, UTF-8. A number may be MCMV::Missing(); the empty text
/// is a missing one. A date or a timestamp is a number of seconds since 1582-10-14, a time one of
/// seconds since midnight. A value type; a text that follows another one reuses its memory.
class SCORING_API Value
{
public:
    Value(const char* text) : _isText(true), _text(text) {} // NOLINT(google-explicit-constructor)
    Value(double number) : _number(number) {}               // NOLINT(google-explicit-constructor)

    Value& operator=(int number);
    Value& operator=(double number);
    Value& operator=(const std::string& text);
    /// The number; for a text, one that nobody set.
    operator double&() { return _number; } // NOLINT(google-explicit-constructor)

    bool IsText() const { return _isText; }
    double GetNumber() const { return _number; }
    const std::string& GetText() const { return _text; }

private:
    bool _isText = false;
    double _number = 0;
    std::string _text;
};
