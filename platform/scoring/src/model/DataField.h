#pragma once

#include <optional>
#include <unordered_set>
#include <vector>

#include <pugixml.hpp>

#include "expression/Interval.h"
#include "expression/TimeScale.h"
#include "model/ModelVariable.h"

class Value;

namespace scoring {

/// A field of the data, with what the model says of its values: which are valid, and which stand
/// for missing ones.
class DataField
{
public:
    /// Throws ModelFault.
    explicit DataField(pugi::xml_node element);

    const ModelVariable& variable() const { return _variable; }
    /// How its numbers count time, if they do.
    const std::optional<TimeScale>& scale() const { return _scale; }
    /// The value of a row as expressions see it. A text stays borrowed.
    Cell read(const Value& value) const;

private:
    /// Looks texts up without a copy of them.
    struct Hash
    {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const
        {
            return std::hash<std::string_view>()(text);
        }
    };
    /// Values that the model lists, as texts or as numbers, by the kind of the field.
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
    ValueSet _valid; ///< empty: all that are not told of
    ValueSet _invalid;
    ValueSet _missing;
    std::vector<Interval> _intervals; ///< empty: all numbers
};

} // namespace scoring
