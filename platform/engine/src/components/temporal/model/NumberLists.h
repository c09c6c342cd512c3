#pragma once

#include <string>
#include <vector>

namespace EmbeddedHV {

/// A JSON document without its lists of numbers of one key.
struct DocumentWithoutLists
{
    std::string text;                       ///< with a list's place in `lists` where the list was
    std::vector<std::vector<double>> lists; ///< null is not-a-number
    std::size_t values = 0;                 ///< in all lists

    /// Moves the list out whose place is `value`. Call it once for each list.
    std::vector<double> take(std::size_t place) { return std::move(lists.at(place)); }
};

/// Takes the lists of numbers and nulls out of all members with the key. This is several times
/// faster than to parse them as JSON values. The document stays as it is, without lists, unless all
/// members with the key are such lists, or if a key may be written in another way.
DocumentWithoutLists withoutLists(const std::string& document, const std::string& key);

} // namespace EmbeddedHV
