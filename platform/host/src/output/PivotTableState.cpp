#include "output/PivotTableState.h"

#include <algorithm>

#include "TnAnnotation.h"

namespace {

constexpr int kNone = -1;

// Names a child among all nodes of a dimension.
std::string childKey(int parent, bool isGroup, const std::string& text)
{
    return std::to_string(parent) + (isGroup ? 'g' : 'c') + text;
}

int lastRowPosition(const OutputTable& table)
{
    const std::vector<int> rows = dimensionsAt(table, TnDimension::Row);
    return rows.empty() ? 0 : table.dimensions[static_cast<std::size_t>(rows.back())].position;
}

} // namespace

int PivotTableState::declareDimension(const TnContent& name, int sort)
{
    auto& dimensions = table->dimensions;
    const auto found =
        std::find_if(dimensions.begin(), dimensions.end(), [&](const OutputDimension& dimension) {
            return dimension.name.text == name.text;
        });
    const auto number = static_cast<int>(found - dimensions.begin());
    if (found == dimensions.end()) {
        // What was said before there was this dimension lies nowhere in it.
        table->cells.clear();
        const int endOfRows = lastRowPosition(*table) + 1;
        OutputDimension& added = dimensions.emplace_back();
        added.name = name;
        added.nodes.emplace_back().isGroup = true;
        added.position = endOfRows;
        leafOpen.push_back(kNone);
        finders.emplace_back().next.push_back(0);
    }
    dimension(number).sort = sort;
    dimension(number).nodes.front().sort = sort;
    return number;
}

int PivotTableState::declareChild(int dimension, int parent, bool isGroup, const TnContent& label)
{
    const int next = nextChild(dimension, parent, isGroup, label.text);
    if (next != kNone)
        return next;
    const auto& byText = finders[index(dimension)].byText;
    const auto found = byText.find(childKey(parent, isGroup, label.text));
    if (found == byText.end())
        return addChild(dimension, parent, isGroup, label);
    const auto& children = node(dimension, parent).children;
    const auto place = std::lower_bound(children.begin(), children.end(), found->second);
    // The procedure goes on from here, so the next one is likely the one behind.
    finders[index(dimension)].next[index(parent)] =
        static_cast<std::size_t>(place - children.begin()) + 1;
    return found->second;
}

/// Procedures tell the categories of a dimension again and again in one order, so the one behind
/// the last is tried first.
int PivotTableState::nextChild(int dimension, int parent, bool isGroup, const std::string& text)
{
    const auto& children = node(dimension, parent).children;
    std::size_t& next = finders[index(dimension)].next[index(parent)];
    const std::size_t tried = next < children.size() ? next : 0;
    if (tried >= children.size())
        return kNone;
    const OutputCategory& child = node(dimension, children[tried]);
    if (child.isGroup != isGroup || child.label.text != text)
        return kNone;
    next = tried + 1;
    return children[tried];
}

int PivotTableState::addChild(int dimension, int parent, bool isGroup, const TnContent& label)
{
    OutputDimension& owner = this->dimension(dimension);
    Finder& finder = finders[index(dimension)];
    const auto added = static_cast<int>(owner.nodes.size());
    OutputCategory& child = owner.nodes.emplace_back();
    child.label = label;
    child.isGroup = isGroup;
    child.leaf = isGroup ? kNone : owner.leafCount++;
    owner.nodes[index(parent)].children.push_back(added);
    finder.next.push_back(0);
    finder.next[index(parent)] = owner.nodes[index(parent)].children.size();
    finder.byText.emplace(childKey(parent, isGroup, label.text), added);
    return added;
}

/// Empty while a category of some dimension is not open: there is no cell then.
std::vector<int> PivotTableState::addressOf(int dimension, int category)
{
    std::vector<int> address = leafOpen;
    address[index(dimension)] = leafOf(dimension, category);
    const bool isWhole = std::find(address.begin(), address.end(), kNone) == address.end();
    return isWhole ? address : std::vector<int>();
}

/// The place of the note in the table's list, where equal texts are one.
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
