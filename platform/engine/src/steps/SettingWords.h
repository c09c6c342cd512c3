#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "expression/NearestName.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// The value of an enumeration whose word, as WordOf gives it, a setting holds; nullopt if the
/// setting is absent. Throws JobError for a text that is none of the words from `first` on.
template <typename Enumeration>
std::optional<Enumeration> wordSetting(const Settings& settings, const std::string& key,
                                       Enumeration first)
{
    const auto text = settings.text(key);
    if (!text)
        return std::nullopt;
    std::vector<std::string_view> known;
    for (int value = first; const char* word = WordOf(static_cast<Enumeration>(value)); ++value) {
        if (*text == word)
            return static_cast<Enumeration>(value);
        known.emplace_back(word);
    }
    std::string list;
    for (std::size_t i = 0; i < known.size(); ++i)
        list += (i == 0 ? "" : i + 1 == known.size() ? " and " : ", ") + std::string(known[i]);
    settings.refuse(key, "is \"" + *text + "\"" + suggestion(*text, known) + "; known are " + list);
}

} // namespace EmbeddedHV
