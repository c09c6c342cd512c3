#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace base {

/// The texts of some items in their order, with the separator between them. `textOf` returns the
/// text of an item, for example &Field::name; by default the items are texts.
template <class Items, class TextOf = std::identity>
std::string joined(const Items& items, std::string_view separator, TextOf textOf = {})
{
    std::string all;
    bool isFirst = true;
    for (const auto& item : items) {
        if (!isFirst)
            all += separator;
        isFirst = false;
        all += std::invoke(textOf, item);
    }
    return all;
}

/// The texts of some items for a message: "first", "second".
template <class Items, class TextOf = std::identity>
std::string quotedList(const Items& items, TextOf textOf = {})
{
    return items.empty() ? std::string() : '"' + joined(items, "\", \"", textOf) + '"';
}

} // namespace base
