#include "components/temporal/preparation/RecordGroups.h"

#include <algorithm>
#include <iterator>

#include "runtime/KeyedCells.h"

namespace EmbeddedHV {
namespace {

/// Adds the keys of cells to a sorted list. Most groups have times that others have too.
void addKeys(const std::string& cells, std::vector<std::int64_t>& keys)
{
    std::vector<std::int64_t> added;
    auto known = keys.begin();
    for (KeyedCellReader cell(cells); cell.next();) {
        while (known != keys.end() && *known < cell.key())
            ++known;
        if (known == keys.end() || *known != cell.key())
            added.push_back(cell.key());
    }
    if (added.empty())
        return;
    std::vector<std::int64_t> both;
    both.reserve(keys.size() + added.size());
    std::merge(keys.begin(), keys.end(), added.begin(), added.end(), std::back_inserter(both));
    keys = std::move(both);
}

} // namespace

RecordGroups::RecordGroups(const TsdpSettings& settings)
    : _dimensions(settings.dimensions), _metricCount(settings.metrics.size())
{
}

void RecordGroups::take(const duck::Chunk& chunk)
{
    const std::size_t width = _dimensions.size();
    for (std::size_t row = 0; row < chunk.rows(); ++row) {
        RecordGroup& group = _groups.emplace_back();
        for (std::size_t i = 0; i < width; ++i)
            group.values.push_back(dimensionValueAt(chunk, i, row, _dimensions[i].GetStorage()));
        group.records = dimensionValueAt(chunk, width, row, CFField::Integer).GetInteger();
        for (std::size_t metric = 0; metric < _metricCount; ++metric) {
            const duckdb_vector column = chunk.column(width + 1 + metric);
            duckdb_string_t bytes =
                static_cast<const duckdb_string_t*>(duckdb_vector_get_data(column))[row];
            group.cells.emplace_back(duckdb_string_t_data(&bytes), duckdb_string_t_length(bytes));
        }
    }
}

std::vector<std::int64_t> RecordGroups::times() const
{
    std::vector<std::int64_t> keys;
    for (const RecordGroup& group : _groups)
        addKeys(group.cells.front(), keys);
    return keys;
}

} // namespace EmbeddedHV
