#include "report/maps/MapChannelSpec.h"

#include <algorithm>

#include "report/maps/FieldPath.h"
#include "report/maps/MapSpecFault.h"

namespace {

using Scale = MapChannel::Scale;

std::vector<PageJson> listOf(const PageJson* value)
{
    return value && value->is_array() ? value->get<std::vector<PageJson>>()
                                      : std::vector<PageJson>();
}

/// Whether a text is a colour name, or a number sign with hexadecimal digits. No other text is
/// written unchanged to a drawing.
bool isColour(const std::string& word)
{
    const bool isHex = word.starts_with('#');
    const auto fits = [&](unsigned char letter) {
        return isHex ? std::isxdigit(letter) : std::isalpha(letter);
    };
    return word.size() > 1 && word.size() < 32 &&
           std::all_of(word.begin() + (isHex ? 1 : 0), word.end(), fits);
}

/// The given type, or the default of the scale.
Scale scaleOf(const std::string& type, const std::string& scale)
{
    if (scale == "quantile")
        return Scale::Quantiles;
    if (scale == "threshold")
        return Scale::Thresholds;
    if (type == "ordinal")
        return Scale::Grades;
    return type == "nominal" || type.empty() ? Scale::Categories : Scale::Steps;
}

void readScale(MapChannel& channel, const PageJson& scale)
{
    constexpr std::string_view kinds[] = {"",          "linear",      "quantize", "quantile",
                                          "threshold", "bin-ordinal", "ordinal",  "sqrt"};
    requireOnly(scale, {"type", "domain", "range", "scheme", "nice", "zero"});
    requireMap(std::ranges::find(kinds, wordOf(memberOf(scale, "type"))) != std::end(kinds));
    channel.domain = listOf(memberOf(scale, "domain"));
    channel.colours = wordsOf(memberOf(scale, "range"));
    if (!std::ranges::all_of(channel.colours, isColour))
        channel.colours.clear();
}

} // namespace

std::string wordOf(const PageJson* value)
{
    return value && value->is_string() ? value->get<std::string>() : std::string();
}

std::vector<std::string> wordsOf(const PageJson* value)
{
    std::vector<std::string> words;
    if (value && value->is_string())
        words.push_back(wordOf(value));
    for (const PageJson& word : listOf(value))
        words.push_back(wordOf(&word));
    return words;
}

void requireOnly(const PageJson& object, std::initializer_list<std::string_view> names)
{
    requireMap(object.is_object());
    for (const auto& [name, value] : object.items())
        requireMap(std::ranges::find(names, std::string_view(name)) != names.end());
}

void requireChannels(const PageJson& encoding, bool isOfAreas)
{
    for (const auto& [name, channel] : encoding.items()) {
        const bool isConstant =
            channel.is_object() && channel.size() == 1 && channel.contains("value");
        const bool isTold = name == "color" || name == "fill" || name == "longitude" ||
                            name == "latitude" || name == (isOfAreas ? "shape" : "size");
        requireMap(name == "tooltip" || isConstant || (isTold && memberOf(channel, "field")));
    }
}

std::string fieldOf(const PageJson* channel)
{
    requireMap(channel);
    requireOnly(*channel, {"field", "type", "title", "scale", "legend", "sort", "format", "bin"});
    return wordOf(memberOf(*channel, "field"));
}

MapChannel readChannel(const PageJson& json)
{
    MapChannel channel;
    channel.field = fieldOf(&json);
    requireMap(!channel.field.empty());
    const PageJson* legend = memberOf(json, "legend");
    channel.title = wordOf(legend ? memberOf(*legend, "title") : nullptr);
    if (channel.title.empty())
        channel.title = wordOf(memberOf(json, "title"));
    if (channel.title.empty())
        channel.title = lastName(channel.field);
    const PageJson* scale = memberOf(json, "scale");
    if (scale && !scale->is_null())
        readScale(channel, *scale);
    const PageJson* bin = memberOf(json, "bin");
    const bool isBinned = bin && (bin->is_object() || *bin == true);
    channel.scale = scaleOf(isBinned ? "quantitative" : wordOf(memberOf(json, "type")),
                            scale ? wordOf(memberOf(*scale, "type")) : "");
    if (std::vector<PageJson> order = listOf(memberOf(json, "sort")); channel.domain.empty())
        channel.domain = std::move(order);
    // Colours of a continuous scale cannot be used for steps.
    if (const std::string kind = scale ? wordOf(memberOf(*scale, "type")) : "";
        channel.scale == Scale::Steps && kind != "quantize" && kind != "bin-ordinal")
        channel.colours.clear();
    requireMap(channel.scale != Scale::Thresholds ||
               std::ranges::any_of(channel.domain, &PageJson::is_number));
    return channel;
}

std::vector<std::pair<std::string, std::string>> tipsOf(const PageJson* tooltip)
{
    std::vector<std::pair<std::string, std::string>> tips;
    const auto add = [&](const PageJson& tip) {
        const std::string field = wordOf(memberOf(tip, "field"));
        const std::string title = wordOf(memberOf(tip, "title"));
        if (!field.empty())
            tips.emplace_back(field, title.empty() ? lastName(field) : title);
    };
    if (tooltip && tooltip->is_object())
        add(*tooltip);
    for (const PageJson& tip : listOf(tooltip))
        add(tip);
    return tips;
}
