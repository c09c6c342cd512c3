#pragma once

#include <functional>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace EmbeddedHV {

/// The end of a message about a name that does not exist: `; did you mean "temp"?` with the
/// candidate that is near enough to be a slip of the pen, or nothing. Case does not count.
std::string suggestion(std::string_view name, const std::vector<std::string_view>& candidates);

/// The same with the names of some items, which `nameOf` gives by reference.
template <class Items, class NameOf>
std::string suggestion(std::string_view name, const Items& items, NameOf nameOf)
{
    std::vector<std::string_view> candidates;
    candidates.reserve(std::size(items));
    for (const auto& item : items)
        candidates.push_back(std::invoke(nameOf, item));
    return suggestion(name, candidates);
}

} // namespace EmbeddedHV
