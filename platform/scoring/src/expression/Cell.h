#pragma once

#include <cmath>
#include <string_view>
#include <vector>

namespace scoring {

/// What values are to expressions. A boolean is 1 or 0; dates and moments are seconds since
/// 1582-10-14, times seconds since midnight.
enum class ValueKind
{
    Number,
    Boolean,
    Text,
    Date,
    Time,
    Moment
};

/// One value while a row is scored. A text is borrowed: from the row, the model, or the expression
/// that made it, and lasts until the row is done.
struct Cell
{
    enum class State
    {
        Missing,
        Invalid, ///< there is no such value: a division by 0, a category that is not listed
        Present
    };

    State state = State::Missing;
    double number = 0;
    std::string_view text;

    /// Invalid for what is no finite number.
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

/// The order of two present values of one kind: below, at or above 0.
inline int compare(const Cell& first, const Cell& second, bool areTexts)
{
    if (areTexts)
        return first.text.compare(second.text);
    return first.number < second.number ? -1 : first.number > second.number ? 1 : 0;
}

/// The values of a row that expressions know by their places: the fields, and the arguments of
/// calls.
using Cells = std::vector<Cell>;

} // namespace scoring
