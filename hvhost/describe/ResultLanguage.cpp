#include "hvhost/describe/ResultLanguage.h"

#include "FacSTDictionary.h"

namespace {

using Json = nlohmann::ordered_json;

/// Text items. A fixed text is its own key.
void translateItems(Json& items, const FacSTDictionary& strings)
{
    for (Json& item : items) {
        if (!item.is_structured())
            continue;
        const auto fixed = item.is_object() ? item.find("stringText") : item.end();
        if (fixed != item.end() && fixed->contains("key"))
            (*fixed)["value"] = strings.LookUp(fixed->value("key", ""));
        else
            translateItems(item, strings);
    }
}

void translateTitles(Json& part, const std::string& own, const FacSTDictionary& strings)
{
    for (auto& [key, value] : part.items())
        if (key == "title" && value.is_string() && value != own)
            value = strings.LookUp(value.get<std::string>());
        else if (value.is_structured() && key != "data")
            translateTitles(value, own, strings);
}

} // namespace

bool isTranslated()
{
    const char* const word = "Frequencies";
    return FacSTDictionary().LookUp(word) != word;
}

void translateTables(Json& result)
{
    const FacSTDictionary strings;
    for (auto& part : result)
        for (const char* const texts : {"caption", "cellLabels"})
            if (part.is_object() && part.contains("table") && part["table"].contains(texts))
                translateItems(part["table"][texts], strings);
}

void translateChart(Json& chart, const std::string& own, const std::string& kind)
{
    const FacSTDictionary strings;
    translateTitles(chart, own, strings);
    chart["description"] = strings.LookUp(kind) + (own.empty() ? "" : ": " + own);
}
