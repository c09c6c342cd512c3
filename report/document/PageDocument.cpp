#include "report/document/PageDocument.h"

#include <algorithm>
#include <array>

#include "base/JsonDepth.h"
#include "report/document/PageText.h"

namespace {

constexpr int kDeepest = 64;

/// A mark: a word or an object.
bool isMark(const PageJson* mark)
{
    return mark && (mark->is_string() || mark->is_object());
}

/// A single view: a mark, and what it represents.
bool isUnit(const PageJson& value)
{
    return isMark(memberOf(value, "mark")) &&
           (memberOf(value, "encoding") || memberOf(value, "data") ||
            memberOf(value, "projection"));
}

/// Views on top of each other or side by side.
bool isComposed(const PageJson& value, int depth)
{
    constexpr std::array kinds{"layer", "concat", "hconcat", "vconcat"};
    return std::any_of(kinds.begin(), kinds.end(), [&](const char* kind) {
        const PageJson* parts = memberOf(value, kind);
        return parts && parts->is_array() && !parts->empty() &&
               std::all_of(parts->begin(), parts->end(), [&](const PageJson& part) {
                   return isMark(memberOf(part, "mark")) || isDrawable(part, depth + 1);
               });
    });
}

/// A view that is drawn for each value of a field.
bool isRepeated(const PageJson& value, int depth)
{
    const PageJson* view = memberOf(value, "spec");
    return view && (memberOf(value, "facet") || memberOf(value, "repeat")) &&
           (isMark(memberOf(*view, "mark")) || isDrawable(*view, depth + 1));
}

} // namespace

std::optional<PageJson> parseDocument(const std::string& text)
{
    if (base::placeTooDeep(text, kDeepest) != text.npos)
        return std::nullopt;
    PageJson json = PageJson::parse(text, nullptr, false);
    if (json.is_discarded())
        return std::nullopt;
    return json;
}

bool isDrawable(const PageJson& value, int depth)
{
    if (depth > kDeepest)
        return false;
    if (const PageJson* schema = memberOf(value, "$schema"); schema && schema->is_string())
        return schema->get_ref<const std::string&>().find("/vega-lite/") != std::string::npos;
    return isUnit(value) || isComposed(value, depth) || isRepeated(value, depth);
}

const PageJson* memberOf(const PageJson& value, std::string_view name)
{
    if (!value.is_object())
        return nullptr;
    const auto member = value.find(std::string(name));
    return member == value.end() ? nullptr : &*member;
}

const PageJson& featuresOf(const PageJson& geoJson)
{
    const PageJson* source = memberOf(geoJson, "source");
    const PageJson* collection = source ? memberOf(*source, "value") : &geoJson;
    const PageJson* features = collection ? memberOf(*collection, "features") : nullptr;
    return features ? *features : geoJson;
}

std::string scriptJson(const PageJson& value)
{
    return scriptText(value.dump(-1, ' ', true, PageJson::error_handler_t::replace));
}

std::string scalarText(const PageJson& value)
{
    if (value.is_string())
        return value.get<std::string>();
    return value.is_null() ? "" : value.dump(-1, ' ', false, PageJson::error_handler_t::replace);
}
