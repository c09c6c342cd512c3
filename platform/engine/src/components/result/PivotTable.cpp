#include "components/result/PivotTable.h"

#include <algorithm>
#include <numeric>

#include "components/result/ValueFormat.h"

namespace EmbeddedHV {
namespace {

std::size_t leavesOf(const std::vector<Category>& categories)
{
    return std::accumulate(categories.begin(), categories.end(), std::size_t{0},
                           [](std::size_t sum, const Category& category) {
                               return sum +
                                      (category.members.empty() ? 1 : leavesOf(category.members));
                           });
}

std::vector<std::size_t> leafCounts(const std::vector<PivotTable::Dimension>& dimensions)
{
    std::vector<std::size_t> counts;
    counts.reserve(dimensions.size());
    for (const PivotTable::Dimension& dimension : dimensions)
        counts.push_back(leavesOf(dimension.categories));
    return counts;
}

Json listOf(const std::vector<Category>& categories)
{
    Json list = Json::array();
    for (const Category& category : categories) {
        Json entry = {{"text", category.text}};
        if (!category.members.empty())
            entry["children"] = listOf(category.members);
        list.push_back(std::move(entry));
    }
    return list;
}

} // namespace

PivotTable::PivotTable(std::string id, Json title, std::vector<Dimension> dimensions)
    : _id(std::move(id)), _title(std::move(title)), _dimensions(std::move(dimensions)),
      _keys(leafCounts(_dimensions)), _cells(_keys.cells())
{
}

std::size_t PivotTable::footnote(const Json& text)
{
    const auto found = std::find(_footnotes.begin(), _footnotes.end(), text);
    if (found != _footnotes.end())
        return static_cast<std::size_t>(found - _footnotes.begin());
    _footnotes.push_back(text);
    return _footnotes.size() - 1;
}

void PivotTable::set(const Places& places, std::optional<double> value)
{
    _cells[_keys.position(places)] = value;
}

void PivotTable::setText(const Places& places, const Json& text)
{
    set(places, static_cast<double>(_cellLabels.size()));
    format(places, {{"string", true}});
    _cellLabels.push_back(text);
}

void PivotTable::format(const Places& places, const Json& format)
{
    const bool isWide = std::find(places.begin(), places.end(), CellKeys::kAny) != places.end();
    (isWide ? _wideFormats : _cellFormats)
        .push_back({{"index", _keys.at(places)}, {"format", format}});
}

void PivotTable::note(const Places& place, std::size_t footnote, const Json& format)
{
    _cellFormats.push_back(
        {{"index", _keys.at(place)}, {"format", format}, {"footnotes", Json::array({footnote})}});
}

Json PivotTable::json() const
{
    Json title = _title;
    if (!_titleNotes.empty())
        title["footnotes"] = _titleNotes;
    Json result = {{"tableId", _id},
                   {"title", {{"show", true}, {"text", std::move(title)}}},
                   {"dimensions", Json::array()}};
    int rows = 0;
    int columns = 0;
    int layers = 0;
    for (const Dimension& dimension : _dimensions) {
        const std::string role = dimension.role;
        int& position = role == "row" ? rows : role == "column" ? columns : layers;
        result["dimensions"].push_back({{"text", dimension.text},
                                        {"role", role},
                                        {"position", ++position},
                                        {"children", listOf(dimension.categories)}});
        if (dimension.hidesName)
            result["dimensions"].back()["hideName"] = true;
    }
    if (!_footnotes.empty())
        result["footnotes"] = _footnotes;
    if (!_cellLabels.empty())
        result["cellLabels"] = {{"values", _cellLabels}};
    if (!_caption.empty())
        result["caption"] = {{"show", true}, {"text", _caption}};
    // Patterns first: for a cell, a later format in the list overrides an earlier one.
    result["formats"] = _wideFormats;
    for (const Json& format : _cellFormats)
        result["formats"].push_back(format);
    Json values = Json::array();
    for (const std::optional<double>& value : _cells)
        values.push_back(value ? numberJson(*value) : Json());
    const std::string start = _keys.at(Places(_dimensions.size(), 0));
    result["cells"] = Json::array(
        {{{"cells", {{"compactCells", {{"index", start}, {"value", std::move(values)}}}}}}});
    return result;
}

} // namespace EmbeddedHV
