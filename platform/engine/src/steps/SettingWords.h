#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/NearestName.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// The value of an enumeration from the word in a setting; empty if the setting is absent. The
/// words are those of WordOf, from `first` on. Throws JobError for any other text.
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
    const std::string suggestion = base::suggestion(*text, known);
    settings.refuse(key, "is \"" + *text + "\"" + suggestion + "; known are " + list,
                    {.hasSuggestion = !suggestion.empty()});
}

} // namespace EmbeddedHV
