#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "MetadataExport.h"

/// One value of a field as its data model tells it: nothing, an integer, a real number or a text in
/// UTF-8. Dates and times are real numbers on the scale of the host.
///
///     CFDatum(0.1).ToString(-1)   // "0.1"
///     CFDatum(0.1).ToString(3)    // "0.100"
class METADATA_API CFDatum
{
public:
    /// The null datum.
    CFDatum() = default;
    explicit CFDatum(int value) : _value(std::int64_t{value}) {}
    explicit CFDatum(std::int64_t value) : _value(value) {}
    /// Not-a-number says that there is no value: it makes the null datum. Infinities are values.
    explicit CFDatum(double value);
    explicit CFDatum(std::string value) : _value(std::move(value)) {}
    /// A null pointer makes the null datum.
    explicit CFDatum(const char* value);

    bool IsNull() const { return std::holds_alternative<std::monostate>(_value); }
    bool IsInteger() const { return std::holds_alternative<std::int64_t>(_value); }
    bool IsReal() const { return std::holds_alternative<double>(_value); }
    bool IsString() const { return std::holds_alternative<std::string>(_value); }

    /// Each getter wants a datum of its own kind and throws std::bad_variant_access for another.
    std::int64_t GetInteger() const { return std::get<std::int64_t>(_value); }
    double GetReal() const { return std::get<double>(_value); }
    const std::string& GetString() const { return std::get<std::string>(_value); }

    /// The datum as text, whatever the locale. For a real number, -1 (or any other negative number)
    /// gives the shortest text that reads back as the very same number, as in "0.1", "1e+300",
    /// "-inf"; a number from 0 on gives that many decimals, and nothing beyond 1074, where no
    /// double has digits left. The other kinds do not look at `decimals`; null is the empty text.
    std::string ToString(int decimals) const;

    /// Below, at or above 0 as this datum sorts before, with or after the other: null, then numbers
    /// by their exact value, be they integer or real, then texts by their bytes.
    int Compare(const CFDatum& other) const;

    /// The same kind and the same value.
    friend bool operator==(const CFDatum&, const CFDatum&) = default;

private:
    std::variant<std::monostate, std::int64_t, double, std::string> _value;
};
