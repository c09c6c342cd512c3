#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace datafile {

/// The metadata key of a SAV file's dictionary.
inline constexpr const char* kDictionaryKey = "hvinteg.dictionary";

/// A value in a dictionary: a text, or a number on the scale of its column (a date in days and a
/// timestamp in seconds since 1970-01-01, a time in seconds).
using DictionaryValue = std::variant<double, std::string>;

/// Display format: the host's format code, width and decimals.
struct DictionaryFormat
{
    std::uint8_t type = 0; ///< 0: unknown
    std::uint16_t width = 0;
    std::uint8_t decimals = 0;

    friend bool operator==(const DictionaryFormat&, const DictionaryFormat&) = default;
};

/// Measurement level; Unknown if the file has none.
enum class DictionaryLevel
{
    Unknown,
    Nominal,
    Ordinal,
    Scale
};

/// The default role of a variable in analyses.
enum class DictionaryRole
{
    Input,
    Target,
    Both,
    None,
    Partition,
    RecordId
};

/// Missing values: up to three values, or a range and at most one value. A missing limit means no
/// limit.
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

/// Description of one variable. Values are on the scale of the column, not of a host. Texts are
/// UTF-8.
struct DictionaryVariable
{
    std::string name;
    std::string label;
    bool isText = false;
    int width = 0; ///< bytes of a text in the dictionary's encoding; 0 if unknown
    DictionaryLevel level = DictionaryLevel::Unknown;
    std::string measure; ///< the word in field metadata, if it is more precise than the level
    DictionaryRole role = DictionaryRole::Input;
    DictionaryFormat print;
    DictionaryFormat write;
    std::vector<std::pair<DictionaryValue, std::string>> valueLabels;
    DictionaryMissing missing;

    friend bool operator==(const DictionaryVariable&, const DictionaryVariable&) = default;
};

/// The content of a SAV file's dictionary. All texts are UTF-8. docs/sav.md describes the format.
struct Dictionary
{
    std::string encoding = "UTF-8"; ///< of the writing host; widths are in this encoding
    std::string weight;             ///< name of a variable; empty for none
    std::vector<std::string> split;
    std::vector<std::string> documents;
    std::vector<DictionaryVariable> variables;

    friend bool operator==(const Dictionary&, const Dictionary&) = default;
};

/// Converts a dictionary to text.
std::string dictionaryText(const Dictionary& dictionary);

/// Parses such a text. Ignores unknown members. Required members must exist with the correct type,
/// and names must differ by more than letter case. Throws Fault with `origin`.
Dictionary dictionaryOf(const std::string& text, const std::string& origin);

} // namespace datafile
