#include "components/result/ChartSpecification.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace EmbeddedHV::chart {
namespace {

constexpr const char* kSchema = "https://vega.github.io/schema/vega-lite/v5.json";

/// Line ends in JavaScript, and the backslash.
constexpr std::pair<std::string_view, std::string_view> kBreakingExpressions[] = {{"\\", "\u2216"},
                                                                                  {"\n", " "},
                                                                                  {"\r", " "},
                                                                                  {"\u2028", " "},
                                                                                  {"\u2029", " "}};

/// Every JavaScript object already has properties with these names.
constexpr std::string_view kInherited[] = {
    "constructor",    "hasOwnProperty", "isPrototypeOf", "propertyIsEnumerable",
    "toLocaleString", "toString",       "valueOf",       "__proto__"};

bool isInherited(const std::string& name)
{
    return std::find(std::begin(kInherited), std::end(kInherited), name) != std::end(kInherited) ||
           name.starts_with("__define") || name.starts_with("__lookup");
}

void replaceAll(std::string& text, std::string_view what, std::string_view with)
{
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size()))
        text.replace(at, what.size(), with);
}

} // namespace

std::string columnName(const std::string& fieldName, const std::string& otherwise)
{
    const bool breaks = std::any_of(
        std::begin(kBreakingExpressions), std::end(kBreakingExpressions),
        [&](const auto& breaking) { return fieldName.find(breaking.first) != std::string::npos; });
    return fieldName.empty() || breaks || isInherited(fieldName) ? otherwise : fieldName;
}

std::string columnReference(const std::string& column)
{
    constexpr std::string_view kMarked = ".[]'\"";
    std::string reference;
    for (const char c : column) {
        if (kMarked.find(c) != std::string_view::npos)
            reference += '\\';
        reference += c;
    }
    return reference;
}

const std::string& titleOf(const CFField& field)
{
    return field.GetLabel().empty() ? field.GetName() : field.GetLabel();
}

std::string axisTitle(const std::string& title)
{
    std::string result = title;
    for (const auto& [what, with] : kBreakingExpressions)
        replaceAll(result, what, with);
    return result;
}

Json barSpecification(Json title, const std::string& description, Json rows)
{
    return {{"$schema", kSchema},
            {"title", std::move(title)},
            {"description", description},
            {"data", {{"values", std::move(rows)}}},
            {"mark", {{"type", "bar"}}}};
}

} // namespace EmbeddedHV::chart
