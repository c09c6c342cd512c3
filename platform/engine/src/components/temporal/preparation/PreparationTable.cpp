#include "components/temporal/preparation/PreparationTable.h"

#include "datafile/SqlQuoting.h"

namespace EmbeddedHV {
namespace {

std::string finiteOrMissing(const CFField& field)
{
    const std::string name = quotedIdentifier(field.GetName());
    return field.GetStorage() == CFField::Real
               ? "CASE WHEN isfinite(" + name + ") THEN " + name + " END"
               : name;
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

} // namespace

PreparationTable::PreparationTable(std::string name, const TsdpSettings& settings)
    : _quotedName(quotedIdentifier(name)), _dimensionCount(settings.dimensions.size())
{
    for (std::size_t i = 0; i < settings.timeFields.size(); ++i) {
        const CFField& field = settings.timeFields[i];
        appendColumn(_columns,
                     (settings.source == TimeSource::Cyclic ? wholeOrMissing(field)
                                                            : quotedIdentifier(field.GetName())) +
                         " AS " + timeColumn(i));
        appendColumn(_times, timeColumn(i));
    }
    for (std::size_t i = 0; i < settings.dimensions.size(); ++i) {
        appendColumn(_columns,
                     finiteOrMissing(settings.dimensions[i]) + " AS " + dimensionColumn(i));
        appendColumn(_dimensions, dimensionColumn(i));
    }
    for (std::size_t i = 0; i < settings.metrics.size(); ++i)
        appendColumn(_columns, "CAST(" + finiteOrMissing(settings.metrics[i]) + " AS DOUBLE) AS " +
                                   metricColumn(i));
}

std::string PreparationTable::creation(const std::string& select) const
{
    return "CREATE TEMP TABLE " + _quotedName + " AS SELECT " + _columns + " FROM (" + select + ")";
}

std::string PreparationTable::hasDimensions() const
{
    std::string condition;
    for (std::size_t i = 0; i < _dimensionCount; ++i)
        condition += (i == 0 ? "" : " AND ") + dimensionColumn(i) + " IS NOT NULL";
    return condition.empty() ? "true" : condition;
}

} // namespace EmbeddedHV
