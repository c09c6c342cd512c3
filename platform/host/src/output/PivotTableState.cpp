#include "output/PivotTableState.h"

#include <algorithm>

#include "TnAnnotation.h"

namespace {

constexpr int kNone = -1;

int lastRowPosition(const OutputTable& table)
{
    const std::vector<int> rows = dimensionsAt(table, TnDimension::Row);
    return rows.empty() ? 0 : table.dimensions[static_cast<std::size_t>(rows.back())].position;
}

} // namespace

bool PivotTableState::isNamed(int dimension, const std::string& name) const
{
    return index(dimension) < table->dimensions.size() &&
           table->dimensions[index(dimension)].name.text == name;
}

/// Whether a declaration made now is inside a category of the dimension. After the first cell all
/// dimensions are known, and only the name decides.
bool PivotTableState::encloses(int dimension) const
{
    const DimensionState& outer = states[index(dimension)];
    return isNested && outer.objects > 0 && outer.openLeaf != kNone && table->cells.size() == 0;
}

int PivotTableState::findDimension(const std::string& name) const
{
    // Two dimensions may have the same name: a table of a variable by itself. In nested
    // declarations their order distinguishes them.
    if (isNested && lastOpened != kNone && isNamed(lastOpened + 1, name))
        return lastOpened + 1;
    for (int number = 0; index(number) < states.size(); ++number)
        if (isNamed(number, name) && !encloses(number))
            return number;
    return kNone;
}

int PivotTableState::addDimension(const TnContent& name)
{
    isNested = isNested &&
               std::all_of(states.begin(), states.end(),
                           [](const DimensionState& outer) { return outer.openLeaf != kNone; });
    // Cells from before this dimension have no place in it.
    table->cells.clear();
    const int endOfRows = lastRowPosition(*table) + 1;
    OutputDimension& added = table->dimensions.emplace_back();
    added.name = name;
    added.nodes.emplace_back().isGroup = true;
    added.position = endOfRows;
    states.emplace_back();
    return static_cast<int>(states.size()) - 1;
}

int PivotTableState::declareDimension(const TnContent& name, int sort)
{
    const int known = findDimension(name.text);
    const int number = known != kNone ? known : addDimension(name);
    states[index(number)].finder.beginAll();
    dimension(number).sort = sort;
    dimension(number).nodes.front().sort = sort;
    return number;
}

int PivotTableState::declareChild(int dimension, int parent, bool isGroup, const TnContent& label)
{
    CategoryFinder& finder = states[index(dimension)].finder;
    // Dimensions that are declared side by side are identified by text, so each call is a round.
    if (!isNested)
        finder.begin(parent);
    const std::optional<int> known =
        finder.find(this->dimension(dimension), parent, isGroup, label.text);
    const int child = known ? *known : addChild(dimension, parent, isGroup, label);
    if (isGroup)
        finder.begin(child);
    return child;
}

int PivotTableState::addChild(int dimension, int parent, bool isGroup, const TnContent& label)
{
    OutputDimension& owner = this->dimension(dimension);
    const auto added = static_cast<int>(owner.nodes.size());
    OutputCategory& child = owner.nodes.emplace_back();
    child.label = label;
    child.isGroup = isGroup;
    child.leaf = isGroup ? kNone : owner.leafCount++;
    owner.nodes[index(parent)].children.push_back(added);
    states[index(dimension)].finder.add(owner, parent, added);
    return added;
}

void PivotTableState::open(int dimension, int category)
{
    states[index(dimension)].openLeaf = leafOf(dimension, category);
    lastOpened = dimension;
    // The dimensions inside this category start again from their first categories.
    for (std::size_t inner = index(dimension) + 1; inner < states.size(); ++inner)
        states[inner].finder.beginAll();
}

/// Empty while a dimension has no open category: there is no cell.
std::vector<int> PivotTableState::addressOf(int dimension, int category)
{
    std::vector<int> address;
    address.reserve(states.size());
    for (const DimensionState& each : states)
        address.push_back(each.openLeaf);
    address[index(dimension)] = leafOf(dimension, category);
    const bool isWhole = std::find(address.begin(), address.end(), kNone) == address.end();
    return isWhole ? address : std::vector<int>();
}

/// The index of the note in the table's list, where equal texts are merged.
int PivotTableState::note(const TnAnnotation& annotation)
{
    const TnCellText* text = annotation.text.text();
    if (!text)
        return kNone;
    OutputNote note{text->content(), {}, annotation.keepsMarker};
    if (const TnCellText* marker = annotation.marker.text())
        note.marker = marker->text();
    const auto added = static_cast<int>(table->notes.size());
    const auto [place, isNew] = noteOfText.emplace(note.text.text, added);
    if (isNew)
        table->notes.push_back(std::move(note));
    return place->second;
}

void PivotTableState::addNote(std::vector<int>& notes, const TnAnnotation& annotation)
{
    const int place = note(annotation);
    if (place != kNone && std::find(notes.begin(), notes.end(), place) == notes.end())
        notes.push_back(place);
}
