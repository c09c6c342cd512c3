#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "components/ComponentQueries.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// A SELECT of aggregates with one row for each group that has records; with one row if the records
/// are not grouped. The columns of a row are read in the order in which they were added.
class AggregateRows
{
public:
    /// Borrows the table.
    explicit AggregateRows(const InputTable& table) : _table(table) {}

    void add(const std::string& sql) { _columns += (_columns.empty() ? "" : ", ") + sql; }
    bool empty() const { return _columns.empty(); }
    /// `condition` is the WHERE clause; it may be empty. Throws JobError.
    void run(const ComponentQueries& queries, const std::string& condition = {});
    /// Moves to the next row. Returns the summary of its group, null at the end.
    DataSummary* next(GroupSummaries& groups);
    std::int64_t integer() { return _result.integer(_column++, _row - 1); }
    std::string text() { return _result.text(_column++, _row - 1); }
    std::optional<double> real() { return _result.real(_column++, _row - 1); }

private:
    const InputTable& _table;
    std::string _columns;
    duck::Result _result;
    std::size_t _row = 0; ///< the number of rows that were begun
    std::size_t _column = 0;
};

/// A place in rows that are sorted by group, of which one column has the number of the group.
class GroupPlace
{
public:
    /// Borrows the rows. `column` is that of the number; nullopt if the records are not grouped.
    GroupPlace(duck::Result& rows, std::optional<std::size_t> column) : _rows(rows), _column(column)
    {
    }

    /// The position after the last row of this group, counted from 0. The first row is the result
    /// for the previous group. Ask for the groups in ascending order.
    std::size_t endOf(std::size_t group);

private:
    duck::Result& _rows;
    std::optional<std::size_t> _column;
    std::size_t _row = 0;
};

/// `column`, if the records are grouped.
inline std::optional<std::size_t> groupColumn(const InputTable& table, std::size_t column)
{
    return table.isGrouped() ? std::optional(column) : std::nullopt;
}
/// SQL for the group as the last column of a list; empty if the records are not grouped.
std::string listedGroup(const InputTable& table);
/// The ORDER BY clause that sorts by `then` within the groups.
std::string groupOrder(const InputTable& table, const std::string& then);
/// The QUALIFY clause for the first rows of each group in the order of a column.
std::string firstOfGroups(const InputTable& table, const std::string& order, std::size_t most);

} // namespace EmbeddedHV
