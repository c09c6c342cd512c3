#pragma once

#include "expression/Treatment.h"

namespace scoring {

/// Looks a combination of values up in a table.
class MapValues : public Expression
{
public:
    /// A row of the table: constants of the kinds of the sources, and what they map to.
    struct Row
    {
        Expressions keys;
        ExpressionPtr value;
    };

    /// Of several rows with the same keys the first one counts.
    MapValues(ValueKind kind, Expressions sources, std::vector<Row> rows, Treatment treatment);
    Cell evaluate(Cells& cells) override;

private:
    struct Entry
    {
        std::vector<Cell> keys;
        std::size_t row;
    };

    int order(const std::vector<Cell>& first, const std::vector<Cell>& second) const;

    Expressions _sources;
    std::vector<Row> _rows;
    std::vector<Entry> _index; ///< in the order of the keys
    Treatment _treatment;
    std::vector<Cell> _sought;
};

} // namespace scoring
