#pragma once

#include <optional>
#include <unordered_set>
#include <vector>

#include <pugixml.hpp>

#include "expression/Interval.h"
#include "model/ModelVariable.h"
#include "values/TimeScale.h"

class Value;

namespace scoring {

/// A field of the data. It knows which values the model declares valid, invalid or missing.
class DataField
{
public:
    /// Throws ModelFault.
    explicit DataField(pugi::xml_node element);

    const ModelVariable& variable() const { return _variable; }
    /// The time scale of its numbers, if they count time.
    const std::optional<TimeScale>& scale() const { return _scale; }
    /// Converts a value of a row for expressions. The cell borrows the text.
    Cell read(const Value& value) const;

private:
    /// Finds texts without copying them.
    struct Hash
    {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const
        {
            return std::hash<std::string_view>()(text);
        }
    };
    /// Values that the model lists: texts or numbers, depending on the kind of the field.
    struct ValueSet
    {
        std::unordered_set<std::string, Hash, std::equal_to<>> texts;
        std::unordered_set<double> numbers;

        bool contains(const Cell& cell, bool isText) const;
        bool isEmpty() const { return texts.empty() && numbers.empty(); }
    };

    void add(pugi::xml_node value);
    bool isValid(const Cell& cell) const;

    ModelVariable _variable;
    std::optional<TimeScale> _scale;
    ValueSet _valid; ///< empty: every value that the other sets do not list
    ValueSet _invalid;
    ValueSet _missing;
    std::vector<Interval> _intervals; ///< empty: all numbers
};

} // namespace scoring
