#include "hvhost/show/DocumentItems.h"

nlohmann::ordered_json textItem(const std::string& text)
{
    return {{"text", {{"text", {{"stringText", {{"key", text}, {"value", text}}}}}}}};
}

nlohmann::ordered_json dimensionItem(const std::string& name, const char* role, bool hidesName)
{
    nlohmann::ordered_json item = textItem(name);
    item["role"] = role;
    item["hideName"] = hidesName;
    item["children"] = nlohmann::ordered_json::array();
    return item;
}
