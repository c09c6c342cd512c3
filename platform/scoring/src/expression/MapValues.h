#pragma once

#include "expression/Treatment.h"

namespace scoring {

/// Looks up a combination of values in a table.
class MapValues : public Expression
{
public:
    /// A row of the table: one constant of the source's kind for each source, and the value.
    struct Row
    {
        Expressions keys;
        ExpressionPtr value;
    };

    /// If several rows have the same keys, the first one is used.
    MapValues(ValueKind kind, Expressions sources, std::vector<Row> rows, Treatment treatment);
    Cell evaluate(Cells& cells) override;

private:
    /// The keys of a table row and its position, for the search.
    struct Entry
    {
        std::vector<Cell> keys;
        std::size_t row;
    };

    int order(const std::vector<Cell>& first, const std::vector<Cell>& second) const;

    Expressions _sources;
    std::vector<Row> _rows;
    std::vector<Entry> _index; ///< sorted by keys
    Treatment _treatment;
    std::vector<Cell> _sought;
};

} // namespace scoring
