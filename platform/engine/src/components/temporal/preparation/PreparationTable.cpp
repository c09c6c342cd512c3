#include "components/temporal/preparation/PreparationTable.h"

#include <algorithm>

#include "datafile/SqlQuoting.h"
#include "runtime/ExactSums.h"
#include "runtime/FiniteReals.h"
#include "runtime/KeyedCells.h"

namespace EmbeddedHV {
namespace {

std::string finiteOrMissing(const CFField& field)
{
    const std::string name = quotedIdentifier(field.GetName());
    return field.GetStorage() == CFField::Real ? finiteReal(name) : name;
}

std::string wholeOrMissing(const CFField& field)
{
    const std::string name = quotedIdentifier(field.GetName());
    return field.GetStorage() == CFField::Real ? "CASE WHEN floor(" + name + ") = " + name +
                                                     " THEN TRY_CAST(" + name + " AS BIGINT) END"
                                               : name;
}

void appendColumn(std::string& list, const std::string& column)
{
    list += (list.empty() ? "" : ", ") + column;
}

std::string aggregated(Aggregation aggregation, const std::string& column)
{
    switch (aggregation) {
    case Aggregation::Minimum:
        return "min(" + column + ")";
    case Aggregation::Maximum:
        return "max(" + column + ")";
    default:
        return std::string(kExactSum) + "(" + column + ")";
    }
}

std::string aggregatedByTime(Aggregation aggregation, const std::string& column)
{
    const char* const function = aggregation == Aggregation::Minimum   ? kKeyedMinimum
                                 : aggregation == Aggregation::Maximum ? kKeyedMaximum
                                                                       : kKeyedSum;
    return std::string(function) + "(" + PreparationTable::timeColumn(0) + ", " + column + ")";
}

bool isGroupable(Aggregation aggregation)
{
    return aggregation == Aggregation::Sum || aggregation == Aggregation::Mean ||
           aggregation == Aggregation::Minimum || aggregation == Aggregation::Maximum;
}

/// To group so many columns takes the database more memory than the records themselves. Such
/// records are wide tables, which rarely have two records of one time.
constexpr std::size_t kMostGroupedMetrics = 100;

/// Other aggregations need the order of the records or all values.
bool isGroupable(const TsdpSettings& settings)
{
    return settings.source != TimeSource::RecordNumber &&
           settings.metrics.size() <= kMostGroupedMetrics &&
           std::all_of(settings.aggregations.begin(), settings.aggregations.end(),
                       [](Aggregation aggregation) { return isGroupable(aggregation); });
}

} // namespace

PreparationTable::PreparationTable(std::string name, const TsdpSettings& settings,
                                   bool mayKeepGroups)
    : _quotedName(quotedIdentifier(name)), _dimensionCount(settings.dimensions.size()),
      _isGrouped(isGroupable(settings)),
      _keepsGroups(mayKeepGroups && _isGrouped && settings.source == TimeSource::Field &&
                   !settings.dimensions.empty()),
      _groups(settings)
{
    for (std::size_t i = 0; i < settings.timeFields.size(); ++i) {
        const CFField& field = settings.timeFields[i];
        appendColumn(_timeValues,
                     (settings.source == TimeSource::Cyclic ? wholeOrMissing(field)
                                                            : quotedIdentifier(field.GetName())) +
                         " AS " + timeColumn(i));
        appendColumn(_times, timeColumn(i));
    }
    for (std::size_t i = 0; i < settings.dimensions.size(); ++i) {
        appendColumn(_otherValues,
                     finiteOrMissing(settings.dimensions[i]) + " AS " + dimensionColumn(i));
        appendColumn(_dimensions, dimensionColumn(i));
    }
    for (std::size_t i = 0; i < settings.metrics.size(); ++i) {
        // The functions of groups ignore numbers that are not finite, faster than a condition.
        const CFField& metric = settings.metrics[i];
        appendColumn(_otherValues, "CAST(" +
                                       (_keepsGroups ? quotedIdentifier(metric.GetName())
                                                     : finiteOrMissing(metric)) +
                                       " AS DOUBLE) AS " + metricColumn(i));
        const auto aggregatedColumn = _keepsGroups ? aggregatedByTime : aggregated;
        appendColumn(_aggregates, aggregatedColumn(settings.aggregations[i], metricColumn(i)) +
                                      " AS " + metricColumn(i));
    }
}

std::string PreparationTable::creation(const std::string& select, bool canReadAgain)
{
    _select = select;
    _hasNumbers = !_isGrouped || !canReadAgain;
    const std::string columns = (_timeValues.empty() ? "" : _timeValues + ", ") + _otherValues;
    const std::string table = "CREATE TEMP TABLE " + _quotedName + " AS SELECT ";
    if (_keepsGroups)
        return "SELECT " + _dimensions + ", count(*), " + _aggregates + " FROM (SELECT " + columns +
               " FROM (" + select + ")) GROUP BY " + _dimensions;
    if (!_isGrouped)
        return table + columns + " FROM (" + select + ")";
    const std::string keys = _times + (_dimensions.empty() ? "" : ", ") + _dimensions;
    return table + keys + ", " + _aggregates + ", count(*) AS records" +
           (_hasNumbers ? ", min(n) AS n FROM " + numbered(columns)
                        : " FROM (SELECT " + columns + " FROM (" + select + "))") +
           " GROUP BY " + keys;
}

std::string PreparationTable::numbered(const std::string& columns) const
{
    return "(SELECT " + columns + ", row_number() OVER () - 1 AS n FROM (" + _select + "))";
}

std::string PreparationTable::times() const
{
    const char* const first = !_hasNumbers ? "0" : _isGrouped ? "min(n)" : "min(rowid)";
    return "SELECT " + _times + ", CAST(" + first + " AS BIGINT), " + recordCount() + " FROM " +
           _quotedName + " GROUP BY " + _times + " ORDER BY " + _times;
}

std::string PreparationTable::firstRecords() const
{
    return "SELECT " + _times + ", CAST(min(n) AS BIGINT), count(*) FROM " + numbered(_timeValues) +
           " GROUP BY " + _times;
}

std::string PreparationTable::hasDimensions() const
{
    std::string condition;
    for (std::size_t i = 0; i < _dimensionCount; ++i)
        condition += (i == 0 ? "" : " AND ") + dimensionColumn(i) + " IS NOT NULL";
    return condition.empty() ? "true" : condition;
}

} // namespace EmbeddedHV
