#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace datafile {

/// The key of a SAV file's metadata under which its dictionary stands.
inline constexpr const char* kDictionaryKey = "hvinteg.dictionary";

/// A value in a dictionary: a number on the scale of its column (a date in days and a timestamp in
/// seconds since 1970-01-01, a time in seconds), or a text.
using DictionaryValue = std::variant<double, std::string>;

/// How a value is shown: the host's format code, the width, the decimals.
struct DictionaryFormat
{
    std::uint8_t type = 0; ///< 0: none is known
    std::uint16_t width = 0;
    std::uint8_t decimals = 0;

    friend bool operator==(const DictionaryFormat&, const DictionaryFormat&) = default;
};

/// How a variable is measured; Unknown where the file does not say.
enum class DictionaryLevel
{
    Unknown,
    Nominal,
    Ordinal,
    Scale
};

/// What analyses take a variable for where the user does not choose.
enum class DictionaryRole
{
    Input,
    Target,
    Both,
    None,
    Partition,
    RecordId
};

/// Values that stand for a missing one: up to three, or a range with at most one more. An end that
/// is absent means that the range is open there.
struct DictionaryMissing
{
    std::vector<DictionaryValue> values;
    bool hasRange = false;
    std::optional<double> from;
    std::optional<double> to;

    bool empty() const { return values.empty() && !hasRange; }
    std::size_t mostValues() const { return hasRange ? 1 : 3; }
    friend bool operator==(const DictionaryMissing&, const DictionaryMissing&) = default;
};

/// All that the dictionary says of one variable. Values stand as the column holds them: dates on
/// the file's scale, not on a host's. Texts are UTF-8.
struct DictionaryVariable
{
    std::string name;
    std::string label;
    bool isText = false;
    int width = 0; ///< bytes of a text in the dictionary's encoding; 0 where nobody has counted
    DictionaryLevel level = DictionaryLevel::Unknown;
    std::string measure; ///< the word of field metadata where it says more than the level
    DictionaryRole role = DictionaryRole::Input;
    DictionaryFormat print;
    DictionaryFormat write;
    std::vector<std::pair<DictionaryValue, std::string>> valueLabels;
    DictionaryMissing missing;

    friend bool operator==(const DictionaryVariable&, const DictionaryVariable&) = default;
};

/// What a SAV file says about its columns. All texts are UTF-8; docs/sav.md describes the form.
struct Dictionary
{
    std::string encoding = "UTF-8"; ///< of the host that wrote the file: its widths count in it
    std::string weight;             ///< a variable's name; empty for none
    std::vector<std::string> split;
    std::vector<std::string> documents;
    std::vector<DictionaryVariable> variables;

    friend bool operator==(const Dictionary&, const Dictionary&) = default;
};

/// The text of a dictionary.
std::string dictionaryText(const Dictionary& dictionary);

/// Reads such a text. What it does not know it passes over; what it needs must be there and of the
/// right kind, and names must differ, letter case apart. Throws Fault that names `origin`.
Dictionary dictionaryOf(const std::string& text, const std::string& origin);

} // namespace datafile
