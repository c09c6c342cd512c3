#include "report/document/TableAxis.h"

#include <algorithm>

namespace {

const OutputCategory& nodeOf(const OutputDimension& dimension, int number)
{
    return dimension.nodes[static_cast<std::size_t>(number)];
}

/// The nodes of a category's path with visible labels. The first is the dimension's own, node 0, if
/// a label shows its name.
std::vector<int> shownNodes(const OutputDimension& dimension, const OutputLeaf& leaf, bool named)
{
    std::vector<int> nodes;
    if (named)
        nodes.push_back(0);
    if (dimension.hidesChildren)
        return nodes;
    for (const int node : leaf.path)
        if (!nodeOf(dimension, node).isGroup || nodeOf(dimension, node).isShown)
            nodes.push_back(node);
    return nodes;
}

} // namespace

TableAxis::TableAxis(const OutputTable& table, TnDimension::Place place)
{
    for (const int number : dimensionsAt(table, place)) {
        Part part;
        part.number = static_cast<std::size_t>(number);
        part.dimension = &table.dimensions[part.number];
        part.leaves = shownLeaves(*part.dimension);
        // The stub head names a row dimension, unless that has no labels.
        const bool byLabel = place == TnDimension::Column || part.dimension->hidesChildren;
        setLabels(part, byLabel && !part.dimension->hidesName);
        part.firstLevel = _levels;
        _levels += part.levels;
        _parts.push_back(std::move(part));
    }
    for (auto part = _parts.rbegin(); part != _parts.rend(); ++part) {
        part->inner = _size;
        _size *= part->leaves.size();
    }
}

void TableAxis::setLabels(Part& part, bool named)
{
    for (const OutputLeaf& leaf : part.leaves) {
        part.labels.push_back({shownNodes(*part.dimension, leaf, named), {}, {}});
        part.levels = std::max(part.levels, static_cast<int>(part.labels.back().nodes.size()));
    }
    setRuns(part);
}

// A node is one label as long as adjacent categories belong to it.
void TableAxis::setRuns(Part& part)
{
    const auto joins = [&](std::size_t leaf, std::size_t other, std::size_t level) {
        const std::vector<int>& nodes = part.labels[other].nodes;
        return level < nodes.size() && nodes[level] == part.labels[leaf].nodes[level];
    };
    for (std::size_t leaf = 0; leaf < part.labels.size(); ++leaf)
        for (std::size_t level = 0; level < part.labels[leaf].nodes.size(); ++level)
            part.labels[leaf].begins.push_back(leaf > 0 && joins(leaf, leaf - 1, level)
                                                   ? part.labels[leaf - 1].begins[level]
                                                   : leaf);
    for (std::size_t leaf = part.labels.size(); leaf-- > 0;)
        for (std::size_t level = 0; level < part.labels[leaf].nodes.size(); ++level)
            part.labels[leaf].ends.push_back(leaf + 1 < part.labels.size() &&
                                                     joins(leaf, leaf + 1, level)
                                                 ? part.labels[leaf + 1].ends[level]
                                                 : leaf + 1);
}

const TableAxis::Part& TableAxis::partOf(int level) const
{
    const auto after = std::find_if(_parts.begin(), _parts.end(), [&](const Part& part) {
        return level < part.firstLevel + part.levels;
    });
    return *after;
}

std::size_t TableAxis::leafAt(const Part& part, std::size_t position)
{
    return position / part.inner % part.leaves.size();
}

std::optional<AxisLabel> TableAxis::labelAt(std::size_t position, int level) const
{
    const Part& part = partOf(level);
    const std::size_t leaf = leafAt(part, position);
    const Labels& labels = part.labels[leaf];
    const auto at = static_cast<std::size_t>(level - part.firstLevel);
    if (position % part.inner != 0 || at >= labels.nodes.size() || labels.begins[at] != leaf)
        return std::nullopt;
    const OutputCategory& node = nodeOf(*part.dimension, labels.nodes[at]);
    AxisLabel label;
    label.text = labels.nodes[at] == 0 ? &part.dimension->name : &node.label;
    label.notes = labels.nodes[at] == 0 ? &part.dimension->notes : &node.notes;
    label.span = (labels.ends[at] - leaf) * part.inner;
    // A label without labels below it extends to the cells.
    label.depth = at + 1 == labels.nodes.size() ? part.levels - static_cast<int>(at) : 1;
    return label;
}

std::string TableAxis::name(const std::string& prefix, std::size_t position, int level)
{
    return prefix + std::to_string(level) + "-" + std::to_string(position);
}

std::string TableAxis::names(std::size_t position, const std::string& prefix) const
{
    std::string result;
    for (const Part& part : _parts) {
        const std::size_t leaf = leafAt(part, position);
        const std::size_t first = position - position % (part.inner * part.leaves.size());
        const Labels& labels = part.labels[leaf];
        for (std::size_t at = 0; at < labels.nodes.size(); ++at)
            result +=
                (result.empty() ? "" : " ") + name(prefix, first + labels.begins[at] * part.inner,
                                                   part.firstLevel + static_cast<int>(at));
    }
    return result;
}

bool TableAxis::beginsGroup(std::size_t position) const
{
    if (_parts.empty())
        return true;
    const Part& part = _parts.back();
    const std::size_t leaf = leafAt(part, position);
    if (leaf == 0)
        return true;
    const std::vector<int>& path = part.leaves[leaf].path;
    const std::vector<int>& before = part.leaves[leaf - 1].path;
    return !std::equal(path.begin(), path.end() - 1, before.begin(), before.end() - 1);
}

void TableAxis::setAddress(std::size_t position, OutputCells::Address& address) const
{
    for (const Part& part : _parts)
        address[part.number] = part.leaves[leafAt(part, position)].leaf;
}

std::vector<TableAxis::Head> TableAxis::heads() const
{
    std::vector<Head> result;
    for (const Part& part : _parts)
        result.push_back({part.dimension, part.levels});
    return result;
}

std::vector<std::string> TableAxis::categories(std::size_t head) const
{
    const Part& part = _parts[head];
    std::vector<std::string> result;
    for (const OutputLeaf& leaf : part.leaves) {
        std::string text;
        for (const int node : shownNodes(*part.dimension, leaf, false))
            text += (text.empty() ? "" : " › ") + nodeOf(*part.dimension, node).label.text;
        result.push_back(std::move(text));
    }
    return result;
}

std::size_t TableAxis::categoryAt(std::size_t head, std::size_t position) const
{
    return leafAt(_parts[head], position);
}
