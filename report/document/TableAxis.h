#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "OutputTable.h"

/// A label in the head or stub of a table: the number of rows or columns that it spans, and the
/// levels that it fills. A category at a lower depth fills the remaining levels.
struct AxisLabel
{
    const TnContent* text = nullptr;
    const std::vector<int>* notes = nullptr;
    std::size_t span = 1;
    int depth = 1;
};

/// The rows, columns or layers of a table: all combinations of the shown categories of one place's
/// dimensions, the last dimension changing fastest, with their labels level by level from the
/// outside. Memory grows with the categories, not with their combinations. The table is borrowed.
class TableAxis
{
public:
    TableAxis(const OutputTable& table, TnDimension::Place place);

    /// The number of rows or columns; 1 without dimensions.
    std::size_t size() const { return _size; }
    int levels() const { return _levels; }
    /// The label of a level that begins at a position; nullopt inside a label.
    std::optional<AxisLabel> labelAt(std::size_t position, int level) const;
    /// The names of all label cells over a position, for attributes: a prefix, level and start
    /// position, separated by blanks.
    std::string names(std::size_t position, const std::string& prefix) const;
    static std::string name(const std::string& prefix, std::size_t position, int level);
    /// Whether the row at this position differs from the previous one in more than the innermost
    /// category: in its group or another dimension.
    bool beginsGroup(std::size_t position) const;
    /// Writes the leaves of this place's dimensions to a cell's address.
    void setAddress(std::size_t position, OutputCells::Address& address) const;

    /// One dimension, for its name cell, with the number of levels of its labels.
    struct Head
    {
        const OutputDimension* dimension = nullptr;
        int levels = 0;
    };
    std::vector<Head> heads() const;
    /// The shown categories of a dimension, by its index in heads(), as texts with their groups.
    std::vector<std::string> categories(std::size_t head) const;
    /// The index in that list of the category at a position.
    std::size_t categoryAt(std::size_t head, std::size_t position) const;

private:
    /// The labels over one category: nodes, and the categories where each begins and ends.
    struct Labels
    {
        std::vector<int> nodes;
        std::vector<std::size_t> begins;
        std::vector<std::size_t> ends;
    };
    /// `inner` is the number of combinations of the inner dimensions.
    struct Part
    {
        const OutputDimension* dimension = nullptr;
        std::size_t number = 0;
        std::vector<OutputLeaf> leaves;
        std::vector<Labels> labels;
        int firstLevel = 0;
        int levels = 0;
        std::size_t inner = 1;
    };

    static void setLabels(Part& part, bool named);
    static void setRuns(Part& part);
    const Part& partOf(int level) const;
    static std::size_t leafAt(const Part& part, std::size_t position);

    std::vector<Part> _parts;
    std::size_t _size = 1;
    int _levels = 0;
};
