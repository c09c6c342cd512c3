#pragma once

#include <cmath>
#include <string_view>
#include <vector>

namespace scoring {

/// The kind of a value. A boolean is 1 or 0. Dates and moments are seconds since 1582-10-14, times
/// are seconds since midnight.
enum class ValueKind
{
    Number,
    Boolean,
    Text,
    Date,
    Time,
    Moment
};

/// A value during the scoring of a row. A text is borrowed from the row, the model, or the
/// expression that made it. It is valid until the row is done.
struct Cell
{
    /// Whether the value is present, missing or invalid.
    enum class State
    {
        Missing,
        Invalid, ///< for example a division by 0, or a category that is not listed
        Present
    };

    State state = State::Missing;
    double number = 0;
    std::string_view text;

    /// Invalid if the number is not finite.
    static Cell of(double number)
    {
        return std::isfinite(number) ? Cell{State::Present, number, {}} : invalid();
    }
    static Cell of(bool truth) { return {State::Present, truth ? 1.0 : 0.0, {}}; }
    static Cell of(std::string_view text) { return {State::Present, 0, text}; }
    static Cell missing() { return {}; }
    static Cell invalid() { return {State::Invalid, 0, {}}; }

    bool isPresent() const { return state == State::Present; }
    bool isMissing() const { return state == State::Missing; }
    bool isInvalid() const { return state == State::Invalid; }
    bool isTrue() const { return isPresent() && number != 0; }
    bool isFalse() const { return isPresent() && number == 0; }
};

/// Compares two present values of the same kind. Negative: first < second. Zero: equal. Positive:
/// first > second.
inline int compare(const Cell& first, const Cell& second, bool areTexts)
{
    if (areTexts)
        return first.text.compare(second.text);
    return first.number < second.number ? -1 : first.number > second.number ? 1 : 0;
}

/// The values of a row by slot: the fields and the arguments of calls.
using Cells = std::vector<Cell>;

} // namespace scoring
