#pragma once

#include <string>
#include <unordered_map>

namespace EmbeddedHV {

/// The relation below a SELECT with results of aggregates. It has three levels: values of each
/// record, aggregates of the values, and results of the aggregates. An expression that several
/// columns need has one name, and the server computes it once.
class AggregateLevels
{
public:
    /// The name of a value, for aggregates. `sql` is an expression of the records, which are `t`.
    std::string value(const std::string& sql) { return _values.named("hv_v", sql); }
    /// The name of a key, for the SELECT above.
    std::string key(const std::string& sql);
    /// The name of an aggregate of values, for results and for the SELECT above.
    std::string aggregate(const std::string& sql) { return _aggregates.named("hv_a", sql); }
    /// The name of a result, for the SELECT above. `sql` is an expression of aggregates.
    std::string result(const std::string& sql) { return _results.named("hv_r", sql); }

    /// The FROM item of the SELECT above. `records` is a FROM item.
    std::string relation(const std::string& records) const;

private:
    struct Level
    {
        std::string named(const char* prefix, const std::string& sql);

        std::string columns; ///< of a SELECT
        std::unordered_map<std::string, std::string> names;
    };

    Level _values;
    Level _aggregates;
    Level _results;
    std::string _keys; ///< names of values, separated by commas
};

} // namespace EmbeddedHV
