#include "hvhost/show/DocumentItems.h"

namespace {

constexpr const char* kCellDigits =
    "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ %&()+,-./:;<=>?@[]^_`|~";
constexpr std::size_t kCellBase = 86;

} // namespace

nlohmann::ordered_json textItem(const std::string& text)
{
    return {{"text", {{"text", {{"stringText", {{"key", text}, {"value", text}}}}}}}};
}

nlohmann::ordered_json plainItem(const std::string& text)
{
    return {{"text", {{"text", {{"stringText", {{"value", text}}}}}}}};
}

std::size_t cellDigitsFor(std::size_t leaves)
{
    std::size_t digits = 1;
    for (std::size_t reach = kCellBase; reach < leaves; reach *= kCellBase)
        ++digits;
    return digits;
}

std::string cellDigits(std::size_t leaf, std::size_t digits)
{
    std::string key(digits, kCellDigits[0]);
    for (; digits-- > 0; leaf /= kCellBase)
        key[digits] = kCellDigits[leaf % kCellBase];
    return key;
}

nlohmann::ordered_json dimensionItem(const std::string& name, const char* role, bool hidesName)
{
    nlohmann::ordered_json item = textItem(name);
    item["role"] = role;
    item["hideName"] = hidesName;
    item["children"] = nlohmann::ordered_json::array();
    return item;
}
