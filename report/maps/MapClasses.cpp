#include "report/maps/MapClasses.h"

#include <algorithm>
#include <unordered_set>

#include "Translation.h"
#include "report/document/PageText.h"
#include "report/maps/MapBounds.h"

namespace {

constexpr std::size_t kShades = 12;    ///< of the style sheet, from 0
constexpr std::size_t kCategories = 8; ///< distinguishable colours
constexpr std::size_t kQuantiles = 5;
constexpr int kBoundDigits = 4;

std::string between(double from, double to)
{
    const std::string first = roundedNumber(from, kBoundDigits);
    return from == to ? first : first + " – " + roundedNumber(to, kBoundDigits);
}

std::vector<double> numbersIn(const std::vector<PageJson>& values)
{
    std::vector<double> numbers;
    for (const PageJson& value : values)
        if (value.is_number())
            numbers.push_back(value.get<double>());
    std::ranges::sort(numbers);
    return numbers;
}

std::vector<double> boundsOf(const MapChannel& channel, const std::vector<double>& values)
{
    const std::vector<double> domain = numbersIn(channel.domain);
    const std::size_t colours = channel.colours.size();
    if (channel.scale == MapChannel::Scale::Quantiles)
        return quantileBounds(values, colours > 1 ? colours : kQuantiles);
    const auto& ends = domain.size() > 1 ? domain : values;
    return colours > 1 ? equalBounds(ends.front(), ends.back(), colours)
                       : roundBounds(ends.front(), ends.back());
}

/// Numbers by size, before texts.
bool isBefore(const PageJson& left, const PageJson& right)
{
    if (left.is_number() && right.is_number())
        return left.get<double>() < right.get<double>();
    return left.is_number() != right.is_number() ? left.is_number()
                                                 : scalarText(left) < scalarText(right);
}

/// The occurring values: first in the given order, then the others in their own.
std::vector<std::string> valuesIn(const MapChannel& channel, std::vector<PageJson> values)
{
    std::ranges::sort(values, isBefore);
    std::unordered_set<std::string> left;
    for (const PageJson& value : values)
        left.insert(scalarText(value));
    values.insert(values.begin(), channel.domain.begin(), channel.domain.end());
    std::vector<std::string> words;
    for (const PageJson& value : values)
        if (std::string word = scalarText(value); left.erase(word) > 0)
            words.push_back(std::move(word));
    return words;
}

std::vector<PageJson> coloursOf(const std::vector<MapItem>& items)
{
    std::vector<PageJson> values;
    for (const MapItem& item : items)
        if (item.colour)
            values.push_back(*item.colour);
    return values;
}

} // namespace

MapClasses::MapClasses(const MapChannel& channel, const std::vector<MapItem>& items)
{
    const std::vector<PageJson> values = coloursOf(items);
    if (channel.scale == MapChannel::Scale::Categories ||
        channel.scale == MapChannel::Scale::Grades)
        list(valuesIn(channel, values));
    else if (channel.scale == MapChannel::Scale::Thresholds)
        divideAt(numbersIn(channel.domain));
    else if (!values.empty())
        divide(boundsOf(channel, numbersIn(values)));
    colour(channel);
}

void MapClasses::divideAt(std::vector<double> bounds)
{
    if (bounds.empty())
        return;
    _bounds = std::move(bounds);
    _classes.push_back({"< " + roundedNumber(_bounds.front(), kBoundDigits), {}});
    for (std::size_t at = 1; at < _bounds.size(); ++at)
        _classes.push_back({between(_bounds[at - 1], _bounds[at]), {}});
    _classes.push_back({"≥ " + roundedNumber(_bounds.back(), kBoundDigits), {}});
}

void MapClasses::divide(const std::vector<double>& bounds)
{
    for (std::size_t at = 1; at < bounds.size(); ++at)
        _classes.push_back({between(bounds[at - 1], bounds[at]), {}});
    if (bounds.size() == 1)
        _classes.push_back({between(bounds.front(), bounds.front()), {}});
    else
        _bounds.assign(bounds.begin() + 1, bounds.end() - 1);
}

void MapClasses::list(std::vector<std::string> values)
{
    _values = std::move(values);
    for (const std::string& value : _values)
        _classes.push_back({value, {}});
}

/// Assigns shades from one end to the other; categories beyond the last colour share it.
void MapClasses::colour(const MapChannel& channel)
{
    const std::size_t count = _classes.size();
    if (count > 0 && channel.colours.size() >= count)
        for (std::size_t at = 0; at < count; ++at)
            _classes[at].colour = channel.colours[at];
    else if (channel.scale != MapChannel::Scale::Categories)
        shade();
    else
        for (std::size_t at = 0; at < count; ++at)
            _classes[at].look = "kind" + std::to_string(at + 1);
    if (count > kCategories && _classes.front().look == "kind1") {
        _classes.resize(kCategories);
        _classes.push_back({translate("Other"), "rest"});
    }
}

void MapClasses::shade()
{
    const std::size_t last = _classes.size() - 1;
    for (std::size_t at = 0; at <= last && !_classes.empty(); ++at)
        _classes[at].look =
            "shade" + std::to_string(last == 0 ? kShades / 2 : (at * kShades + last / 2) / last);
}

const MapClass& MapClasses::classOf(const PageJson& value) const
{
    const auto place =
        _values.empty() ? std::ranges::upper_bound(_bounds, value.get<double>()) - _bounds.begin()
                        : std::ranges::find(_values, scalarText(value)) - _values.begin();
    return _classes[std::min(static_cast<std::size_t>(place), _classes.size() - 1)];
}
