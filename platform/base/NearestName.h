#pragma once

#include <functional>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace base {

/// The end of a message about an unknown name: `; did you mean "temp"?` with the most similar
/// candidate, or an empty text if no candidate is similar. Ignores case.
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
