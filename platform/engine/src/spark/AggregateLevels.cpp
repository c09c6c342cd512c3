#include "spark/AggregateLevels.h"

namespace EmbeddedHV {

std::string AggregateLevels::Level::named(const char* prefix, const std::string& sql)
{
    const auto [found, isNew] = names.try_emplace(sql);
    if (isNew) {
        found->second = prefix + std::to_string(names.size());
        columns += (columns.empty() ? "" : ", ") + sql + " AS " + found->second;
    }
    return found->second;
}

std::string AggregateLevels::key(const std::string& sql)
{
    const std::string key = value(sql);
    _keys += (_keys.empty() ? "" : ", ") + key;
    return aggregate(key);
}

std::string AggregateLevels::relation(const std::string& records) const
{
    // A job that only counts has no values.
    const std::string values = "(SELECT " + (_values.columns.empty() ? "1" : _values.columns) +
                               " FROM " + records + " AS t)";
    std::string aggregates = "(SELECT " + _aggregates.columns + " FROM " + values +
                             (_keys.empty() ? "" : " GROUP BY " + _keys) + ")";
    if (_results.columns.empty())
        return aggregates;
    return "(SELECT *, " + _results.columns + " FROM " + aggregates + ")";
}

} // namespace EmbeddedHV
