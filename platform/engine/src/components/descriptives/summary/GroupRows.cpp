#include "components/descriptives/summary/GroupRows.h"

namespace EmbeddedHV {

void AggregateRows::run(const ComponentQueries& queries, const std::string& condition)
{
    const std::string g = InputTable::kGroup;
    const std::string from = " FROM " + _table.name() + condition;
    _result = queries.run(_table.isGrouped() ? "SELECT " + g + ", " + _columns + from +
                                                   " GROUP BY " + g + " ORDER BY " + g
                                             : "SELECT " + _columns + from);
    _row = 0;
}

DataSummary* AggregateRows::next(GroupSummaries& groups)
{
    if (_row == _result.rows())
        return nullptr;
    ++_row;
    _column = 0;
    return &groups[_table.isGrouped() ? static_cast<std::size_t>(integer() - 1) : 0];
}

std::size_t GroupPlace::endOf(std::size_t group)
{
    if (!_column)
        return _rows.rows();
    const auto number = static_cast<std::int64_t>(group) + 1;
    while (_row < _rows.rows() && _rows.integer(*_column, _row) <= number)
        ++_row;
    return _row;
}

std::string listedGroup(const InputTable& table)
{
    return table.isGrouped() ? std::string(", ") + InputTable::kGroup : "";
}

std::string groupOrder(const InputTable& table, const std::string& then)
{
    return " ORDER BY " + (table.isGrouped() ? std::string(InputTable::kGroup) + ", " : "") + then;
}

std::string firstOfGroups(const InputTable& table, const std::string& order, std::size_t most)
{
    const std::string partition =
        table.isGrouped() ? std::string("PARTITION BY ") + InputTable::kGroup + " " : "";
    return " QUALIFY row_number() OVER (" + partition + "ORDER BY " + order +
           ") <= " + std::to_string(most);
}

} // namespace EmbeddedHV
