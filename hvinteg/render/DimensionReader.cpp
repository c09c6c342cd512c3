#include "render/DimensionReader.h"

#include <algorithm>
#include <utility>

#include "TnStrings.h"
#include "render/Footnotes.h"

namespace {

/// The number of leaves below a node; a node without children is a leaf.
std::uint64_t leavesOf(const JsonValue& children)
{
    std::uint64_t leaves = 0;
    for (const JsonValue child : children)
        leaves += std::max<std::uint64_t>(1, leavesOf(child["children"]));
    return leaves;
}

template <class Sort>
Sort sortOf(const JsonValue& word)
{
    if (word.text() == "ascending")
        return Sort::Ascending;
    return word.text() == "descending" ? Sort::Descending : Sort::Unsorted;
}

TnDimension::Place placeOf(const JsonValue& word)
{
    if (word.text() == "column")
        return TnDimension::Column;
    return word.text() == "layer" ? TnDimension::Layer : TnDimension::Row;
}

/// If the only category is hidden, the dimension shows no children.
bool hidesChildren(const JsonValue& json)
{
    const JsonValue children = json["children"];
    const bool byDefault = children.size() == 1 && !(*children.begin())["show"].flag(true);
    return json["hideChildren"].flag(byDefault);
}

bool contains(const std::vector<std::string>& list, const std::string& text)
{
    return std::find(list.begin(), list.end(), text) != list.end();
}

} // namespace

std::vector<std::uint64_t> DimensionReader::leafCounts(const JsonValue& dimensions)
{
    std::vector<std::uint64_t> counts;
    for (const JsonValue dimension : dimensions)
        counts.push_back(leavesOf(dimension["children"]));
    return counts;
}

PivotDimension DimensionReader::read(const JsonValue& json, const KeyLayout::Segment& segment)
{
    PivotDimension dimension;
    if (!json["text"])
        return dimension;
    dimension.name = _texts.cellTextOf(json["text"], _settings.translates);
    if (!dimension.name)
        dimension.name = std::make_unique<TnString>("Unknown", false);
    dimension.sort = sortOf<TnPivotTable::Sort>(json["sort"]);
    dimension.footnotes = Footnotes::indexesOf(json["text"]["footnotes"]);
    dimension.place = placeOf(json["role"]);
    dimension.position = json["position"].integer(1);
    dimension.hidesName = json["hideName"].flag(false);
    dimension.hidesChildren = hidesChildren(json);
    _filter = dimension.place == TnDimension::Row ? &_settings.rows : &_settings.columns;
    _segment = segment;
    _next = 0;
    readChildren(json["children"], true);
    dimension.steps = std::exchange(_steps, {});
    return dimension;
}

/// The children of a group that passes the filter are shown without a test, but their own children
/// are filtered again. A filtered category still counts as a position, so that the others keep
/// their cells; a category without a text does not count.
void DimensionReader::readChildren(const JsonValue& children, bool filters)
{
    const bool isFiltered = filters && hasFilter();
    for (const JsonValue child : children) {
        const JsonValue text = child["text"];
        if (!text)
            continue;
        if (isFiltered && !staysAfterFilter(text)) {
            _next += std::max<std::uint64_t>(1, leavesOf(child["children"]));
            continue;
        }
        auto label = _texts.cellTextOf(text, _settings.translates);
        if (!label)
            continue;
        if (child["children"].size() > 0)
            readGroup(child, std::move(label), !isFiltered);
        else
            readLeaf(child, std::move(label));
    }
}

bool DimensionReader::staysAfterFilter(const JsonValue& text) const
{
    const std::string label = _texts.cellTextString(text);
    return contains(_filter->shown, label) && !contains(_filter->hidden, label);
}

void DimensionReader::readGroup(const JsonValue& json, std::unique_ptr<TnCellText> label,
                                bool filters)
{
    PivotStep group;
    group.kind = PivotStep::OpenGroup;
    group.label = std::move(label);
    // The footnotes of a group are nested one level deeper than those of a leaf.
    group.footnotes = Footnotes::indexesOf(json["text"]["text"]["footnotes"]);
    group.show = json["show"].flag(true);
    group.sort = sortOf<TnGroup::Sort>(json["sort"]["order"]);
    _steps.push_back(std::move(group));
    readChildren(json["children"], filters);
    // A default step closes a group.
    _steps.emplace_back();
}

/// A leaf's subscript is its part of the keys: from the document, or its index. If it is not a
/// valid position, cells are only found by their keys.
void DimensionReader::readLeaf(const JsonValue& json, std::unique_ptr<TnCellText> label)
{
    PivotStep leaf;
    leaf.kind = PivotStep::Leaf;
    leaf.label = std::move(label);
    leaf.footnotes = Footnotes::indexesOf(json["text"]["footnotes"]);
    leaf.show = json["show"].flag(true);
    leaf.subscript = nextSubscript(json["subscript"]);
    const bool isRegular = leaf.subscript.size() == _segment.width;
    leaf.position = isRegular ? CellKey::positionOf(leaf.subscript) : CellKey::kNowhere;
    if (leaf.position >= _segment.leaves)
        leaf.position = CellKey::kNowhere;
    _steps.push_back(std::move(leaf));
}

std::string DimensionReader::nextSubscript(const JsonValue& json)
{
    if (!json.isText())
        return CellKey::of(_next++, _segment.width);
    std::string subscript(json.text());
    if (subscript.size() < _segment.width)
        subscript.insert(0, _segment.width - subscript.size(), CellKey::kDigits.front());
    return subscript;
}
