#pragma once

#include <cstddef>
#include <vector>

#include "OutputTable.h"

/// The rows, columns or layers of a table, one position for each combination of shown categories of
/// their dimensions, and the labels over them. Borrows the table.
class TextAxis
{
public:
    /// One dimension of the axis.
    struct Part
    {
        const OutputDimension* dimension = nullptr;
        std::size_t number = 0; ///< of the dimension in the table
        std::vector<OutputLeaf> leaves;
        std::vector<std::vector<int>> labels; ///< by leaf, the nodes whose labels are shown
        std::size_t depth = 0;                ///< the most labels of a leaf
        std::size_t stride = 1;               ///< so many positions are of the same leaf

        bool hasName() const;
    };
    /// One depth of labels of one part.
    struct Level
    {
        std::size_t part = 0;
        std::size_t depth = 0;
    };

    TextAxis(const OutputTable& table, TnDimension::Place place);

    /// 1 without a dimension.
    std::size_t size() const { return _size; }
    const std::vector<Part>& parts() const { return _parts; }
    const std::vector<Level>& levels() const { return _levels; }
    /// The label of a position at a level, which may lie over positions behind it; null for none.
    const OutputCategory* label(const Level& level, std::size_t position) const;
    /// Whether a position has the same label, or none, as the one before it.
    bool continues(const Level& level, std::size_t position) const;
    /// Whether there is a label below the level.
    bool hasDeeper(const Level& level, std::size_t position) const;
    /// The labels of a position in one part, the outermost first.
    std::vector<const OutputCategory*> labels(std::size_t part, std::size_t position) const;
    /// Writes a position into the address of a cell.
    void put(std::size_t position, OutputCells::Address& address) const;

private:
    static std::size_t leafAt(const Part& part, std::size_t position);

    std::vector<Part> _parts;
    std::vector<Level> _levels;
    std::size_t _size = 1;
};
