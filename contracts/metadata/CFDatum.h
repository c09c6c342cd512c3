#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "MetadataExport.h"

/// A value of a field in a data model: null, an integer, a real number or a UTF-8 text. Dates and
/// times are real numbers on the host's scale.
///
///     CFDatum(0.1).ToString(-1)   // "0.1"
///     CFDatum(0.1).ToString(3)    // "0.100"
class METADATA_API CFDatum
{
public:
    /// The null datum.
    CFDatum() = default;
    /// An integer.
    explicit CFDatum(int value) : _value(std::int64_t{value}) {}
    /// An integer.
    explicit CFDatum(std::int64_t value) : _value(value) {}
    /// NaN becomes the null datum. Infinities are values.
    explicit CFDatum(double value);
    /// A text, UTF-8.
    explicit CFDatum(std::string value) : _value(std::move(value)) {}
    /// A null pointer becomes the null datum.
    explicit CFDatum(const char* value);

    /// Whether there is no value.
    bool IsNull() const { return std::holds_alternative<std::monostate>(_value); }
    /// Whether the value is an integer.
    bool IsInteger() const { return std::holds_alternative<std::int64_t>(_value); }
    /// Whether the value is a real number.
    bool IsReal() const { return std::holds_alternative<double>(_value); }
    /// Whether the value is a text.
    bool IsString() const { return std::holds_alternative<std::string>(_value); }

    /// The integer. Throws std::bad_variant_access for a datum of another kind.
    std::int64_t GetInteger() const { return std::get<std::int64_t>(_value); }
    /// The real number. Throws std::bad_variant_access for a datum of another kind.
    double GetReal() const { return std::get<double>(_value); }
    /// The text. Throws std::bad_variant_access for a datum of another kind.
    const std::string& GetString() const { return std::get<std::string>(_value); }

    /// Formats the datum, independent of the locale. For a real number, negative `decimals` give
    /// the shortest text with the same value, for example "0.1", "1e+300" or "-inf". Otherwise the
    /// number has that many decimals, at most 1074, which is enough for every double. Other kinds
    /// ignore `decimals`. Null gives an empty text.
    std::string ToString(int decimals) const;

    /// Returns a number below, at or above 0 if this datum sorts before, with or after `other`.
    /// Order: null, then numbers by exact value, integer or real, then texts by their bytes.
    int Compare(const CFDatum& other) const;

    /// True for the same kind and value.
    friend bool operator==(const CFDatum&, const CFDatum&) = default;

private:
    std::variant<std::monostate, std::int64_t, double, std::string> _value;
};
