#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "OutputTable.h"

/// A label in the head or the stub of a table: over how many rows or columns it stands, and how
/// many levels it fills; a category less deep than others fills theirs too.
struct AxisLabel
{
    const TnContent* text = nullptr;
    const std::vector<int>* notes = nullptr;
    std::size_t span = 1;
    int depth = 1;
};

/// The rows, the columns or the layers of a table: every combination of the shown categories of the
/// dimensions of one place, the last dimension running fastest, and their labels, level by level
/// from the outside in. It grows with the categories, not with their combinations. The table is
/// borrowed.
class TableAxis
{
public:
    TableAxis(const OutputTable& table, TnDimension::Place place);

    /// How many rows or columns: one for a place without dimensions.
    std::size_t size() const { return _size; }
    int levels() const { return _levels; }
    /// The label of a level that begins at a position; nothing inside one.
    std::optional<AxisLabel> labelAt(std::size_t position, int level) const;
    /// Names of the cells of all labels over a position, for attributes: a prefix, the level and
    /// the position where the label begins, with blanks between.
    std::string names(std::size_t position, const std::string& prefix) const;
    static std::string name(const std::string& prefix, std::size_t position, int level);
    /// Whether the rows from here on are told apart from the ones before by more than the innermost
    /// category: by its group, or by another dimension.
    bool beginsGroup(std::size_t position) const;
    /// Sets the numbers of this place's dimensions in a cell's address.
    void setAddress(std::size_t position, OutputCells::Address& address) const;

    /// One dimension, for the cell that names it, with the number of levels that its labels take.
    struct Head
    {
        const OutputDimension* dimension = nullptr;
        int levels = 0;
    };
    std::vector<Head> heads() const;
    /// The shown categories of a dimension, by its place in heads(), as texts with their groups.
    std::vector<std::string> categories(std::size_t head) const;
    /// The place of the category of one dimension at a position in that list.
    std::size_t categoryAt(std::size_t head, std::size_t position) const;

private:
    /// The labels over one category: nodes, and the categories where each of them begins and ends.
    struct Labels
    {
        std::vector<int> nodes;
        std::vector<std::size_t> begins;
        std::vector<std::size_t> ends;
    };
    /// `inner` is the number of combinations of the dimensions further in.
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
