#include "textout/TextAxis.h"

#include <algorithm>

namespace {

const OutputCategory& nodeOf(const OutputDimension& dimension, int number)
{
    return dimension.nodes[static_cast<std::size_t>(number)];
}

std::vector<int> shownLabels(const OutputDimension& dimension, const OutputLeaf& leaf)
{
    std::vector<int> labels;
    if (dimension.hidesChildren)
        return labels;
    std::copy_if(leaf.path.begin(), leaf.path.end(), std::back_inserter(labels),
                 [&](int node) { return nodeOf(dimension, node).isShown; });
    return labels;
}

TextAxis::Part partOf(const OutputTable& table, int number)
{
    TextAxis::Part part;
    part.number = static_cast<std::size_t>(number);
    part.dimension = &table.dimensions[part.number];
    part.leaves = shownLeaves(*part.dimension);
    for (const OutputLeaf& leaf : part.leaves) {
        part.labels.push_back(shownLabels(*part.dimension, leaf));
        part.depth = std::max(part.depth, part.labels.back().size());
    }
    return part;
}

} // namespace

bool TextAxis::Part::hasName() const
{
    return !dimension->hidesName &&
           dimension->name.text.find_first_not_of(' ') != std::string::npos;
}

TextAxis::TextAxis(const OutputTable& table, TnDimension::Place place)
{
    for (const int number : dimensionsAt(table, place))
        _parts.push_back(partOf(table, number));
    for (auto part = _parts.rbegin(); part != _parts.rend(); ++part) {
        part->stride = _size;
        _size *= part->leaves.size();
    }
    for (std::size_t i = 0; i < _parts.size(); ++i)
        for (std::size_t depth = 0; depth < _parts[i].depth; ++depth)
            _levels.push_back({i, depth});
}

std::size_t TextAxis::leafAt(const Part& part, std::size_t position)
{
    return position / part.stride % part.leaves.size();
}

const OutputCategory* TextAxis::label(const Level& level, std::size_t position) const
{
    const Part& part = _parts[level.part];
    const std::vector<int>& labels = part.labels[leafAt(part, position)];
    return level.depth < labels.size() ? &nodeOf(*part.dimension, labels[level.depth]) : nullptr;
}

bool TextAxis::continues(const Level& level, std::size_t position) const
{
    if (position == 0)
        return false;
    const Part& part = _parts[level.part];
    const std::size_t outer = part.stride * part.leaves.size();
    if (position / outer != (position - 1) / outer)
        return false;
    const std::size_t leaf = leafAt(part, position);
    const std::size_t before = leafAt(part, position - 1);
    const std::vector<int>& labels = part.labels[leaf];
    const std::vector<int>& others = part.labels[before];
    if (leaf == before)
        return true;
    // Different leaves share the labels of their groups only.
    const std::size_t shared = level.depth + 1;
    return labels.size() >= shared && others.size() >= shared &&
           std::equal(labels.begin(), labels.begin() + static_cast<std::ptrdiff_t>(shared),
                      others.begin());
}

bool TextAxis::hasDeeper(const Level& level, std::size_t position) const
{
    const Part& part = _parts[level.part];
    return level.depth + 1 < part.labels[leafAt(part, position)].size() ||
           level.part + 1 < _parts.size();
}

std::vector<const OutputCategory*> TextAxis::labels(std::size_t part, std::size_t position) const
{
    const Part& of = _parts[part];
    std::vector<const OutputCategory*> labels;
    for (const int node : of.labels[leafAt(of, position)])
        labels.push_back(&nodeOf(*of.dimension, node));
    return labels;
}

void TextAxis::put(std::size_t position, OutputCells::Address& address) const
{
    for (const Part& part : _parts)
        address[part.number] = part.leaves[leafAt(part, position)].leaf;
}
