#pragma once

#include <functional>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace base {

/// The candidate that a user probably meant with an unknown name; empty if no candidate is similar.
/// Ignores the case of ASCII letters. A candidate that begins with the name is preferred, however
/// long it is; otherwise up to a third of the characters may differ. The result refers to the
/// candidate.
std::string_view nearestName(std::string_view name,
                             const std::vector<std::string_view>& candidates);

/// The end of a message about an unknown name: `; did you mean "temp"?`, or an empty text if no
/// candidate is similar.
std::string suggestion(std::string_view name, const std::vector<std::string_view>& candidates);

/// The same for the names of items. `nameOf` returns the name of an item by reference.
template <class Items, class NameOf>
std::string suggestion(std::string_view name, const Items& items, NameOf nameOf)
{
    std::vector<std::string_view> candidates;
    candidates.reserve(std::size(items));
    for (const auto& item : items)
        candidates.push_back(std::invoke(nameOf, item));
    return suggestion(name, candidates);
}

} // namespace base
