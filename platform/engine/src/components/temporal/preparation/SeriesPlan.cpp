#include "components/temporal/preparation/SeriesPlan.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>

#include "ErrorIds.h"
#include "JobError.h"
#include "components/temporal/base/FewMessages.h"
#include "components/temporal/preparation/PreparationLimits.h"
#include "components/temporal/preparation/SeriesId.h"
#include "datafile/SqlQuoting.h"
#include "duckdb/NewTable.h"

namespace EmbeddedHV {
namespace {

constexpr std::int64_t kMostUnknownMessages = 100;

struct DatumOrder
{
    bool operator()(const CFDatum& left, const CFDatum& right) const
    {
        return left.Compare(right) < 0;
    }
};

/// A combination of dimension values in the data.
struct FoundCombination
{
    DimensionValues values;
    std::int64_t records = 0;
    std::size_t group = 0;  ///< a place in RecordGroups
    std::vector<int> codes; ///< empty if a value is not in its list
};

class SeriesPlanning
{
public:
    SeriesPlanning(JobContext& context, const std::string& component, const PreparationTable& table,
                   const TsdpSettings& settings)
        : _context(context), _component(component), _table(table), _settings(settings),
          _messages(context.message, errors::kTsdpUnknown, kMostUnknownMessages,
                    "values and combinations whose records are left out")
    {
    }

    SeriesPlan run()
    {
        collect();
        if (_settings.values)
            _plan.values = *_settings.values;
        else
            findValues();
        indexCodes();
        for (FoundCombination& found : _found)
            setCodes(found);
        if (_settings.series)
            takeSeries();
        else
            findSeries();
        countRecords();
        checkSeriesCount(_component, static_cast<std::int64_t>(_plan.series.size()));
        if (_table.groups())
            findGroups();
        else if (!_settings.dimensions.empty())
            makeTable();
        _messages.finish();
        return std::move(_plan);
    }

private:
    std::size_t width() const { return _settings.dimensions.size(); }

    void collect()
    {
        const ComponentQueries queries(_context, _component);
        const std::string columns = _table.dimensionColumns();
        std::int64_t withoutValue = 0;
        if (_table.groups())
            withoutValue = takeGroups(*_table.groups());
        else
            queries.stream(
                "SELECT " + columns + (columns.empty() ? "" : ", ") + _table.recordCount() +
                    " FROM " + _table.name() + (columns.empty() ? "" : " GROUP BY " + columns),
                [&](duck::Chunk& chunk) {
                    for (std::size_t row = 0; row < chunk.rows(); ++row)
                        withoutValue += take(chunk, row);
                    checkSeriesCount(_component, static_cast<std::int64_t>(_found.size()));
                });
        if (withoutValue > 0)
            _context.message(errors::kTsdpNoValue,
                             {.step = _component,
                              .what = "records without a value of each dimension, which are left "
                                      "out: " +
                                      std::to_string(withoutValue)});
    }

    std::int64_t take(const duck::Chunk& chunk, std::size_t row)
    {
        FoundCombination found;
        for (std::size_t i = 0; i < width(); ++i)
            found.values.push_back(
                dimensionValueAt(chunk, i, row, _settings.dimensions[i].GetStorage()));
        found.records = dimensionValueAt(chunk, width(), row, CFField::Integer).GetInteger();
        return keep(std::move(found));
    }

    std::int64_t takeGroups(const RecordGroups& groups)
    {
        checkSeriesCount(_component, static_cast<std::int64_t>(groups.all().size()));
        std::int64_t withoutValue = 0;
        for (std::size_t group = 0; group < groups.all().size(); ++group)
            withoutValue +=
                keep({groups.all()[group].values, groups.all()[group].records, group, {}});
        return withoutValue;
    }

    /// Keeps the combination, or gives the number of its records if it has a missing value.
    std::int64_t keep(FoundCombination found)
    {
        if (std::any_of(found.values.begin(), found.values.end(), std::mem_fn(&CFDatum::IsNull)))
            return found.records;
        _found.push_back(std::move(found));
        return 0;
    }

    void findValues()
    {
        _plan.values.resize(width());
        for (std::size_t i = 0; i < width(); ++i) {
            std::set<CFDatum, DatumOrder> values;
            for (const FoundCombination& found : _found)
                values.insert(found.values[i]);
            _plan.values[i].assign(values.begin(), values.end());
        }
    }

    void indexCodes()
    {
        _codes.resize(width());
        for (std::size_t i = 0; i < width(); ++i)
            for (std::size_t code = 0; code < _plan.values[i].size(); ++code)
                _codes[i].emplace(_plan.values[i][code], static_cast<int>(code) + 1);
    }

    /// Sets the codes of a combination in the data, and notes a value that the lists do not have.
    void setCodes(FoundCombination& found)
    {
        std::vector<int> codes;
        bool isKnown = true;
        for (std::size_t i = 0; i < width(); ++i) {
            const auto code = _codes[i].find(found.values[i]);
            if (code != _codes[i].end()) {
                codes.push_back(code->second);
                continue;
            }
            _unknown[{i, dimensionText(found.values[i], _settings.dimensions[i].GetStorage())}] +=
                found.records;
            isKnown = false;
        }
        if (isKnown)
            found.codes = std::move(codes);
    }

    /// Each combination in the data with each metric, in the order of their codes.
    void findSeries()
    {
        for (const FoundCombination& found : _found)
            if (found.codes.size() == width())
                _plan.combinations.push_back(found.codes);
        tellUnknownValues();
        std::sort(_plan.combinations.begin(), _plan.combinations.end());
        const std::size_t metrics = _settings.metrics.size();
        checkSeriesCount(_component,
                         static_cast<std::int64_t>(_plan.combinations.size() * metrics));
        for (std::size_t k = 0; k < _plan.combinations.size(); ++k)
            for (std::size_t metric = 0; metric < metrics; ++metric)
                addSeries(k, metric);
    }

    void addSeries(std::size_t combination, std::size_t metric)
    {
        const std::vector<int>& codes = _plan.combinations[combination];
        PlannedSeries series{
            combination, metric, seriesIdOf(codes, static_cast<int>(metric) + 1), {}};
        for (std::size_t i = 0; i < width(); ++i)
            series.name.push_back(
                dimensionText(_plan.values[i][static_cast<std::size_t>(codes[i]) - 1],
                              _settings.dimensions[i].GetStorage()));
        series.name.push_back(_settings.metrics[metric].GetName());
        _plan.series.push_back(std::move(series));
    }

    /// The series of the settings, and nothing else.
    void takeSeries()
    {
        _plan.isGiven = true;
        std::set<std::string> ids;
        std::map<std::vector<int>, std::size_t> places;
        for (const std::string& id : *_settings.series) {
            std::vector<int> numbers = checkedNumbers(id);
            if (!ids.insert(id).second)
                refuseId(id, "twice");
            const auto metric = static_cast<std::size_t>(numbers.back()) - 1;
            numbers.pop_back();
            const auto [place, isNew] = places.emplace(numbers, _plan.combinations.size());
            if (isNew)
                _plan.combinations.push_back(numbers);
            addSeries(place->second, metric);
        }
        for (const FoundCombination& found : _found)
            tellIfUnknown(found, places);
        tellUnknownValues();
    }

    [[noreturn]] void refuseId(const std::string& id, const std::string& problem) const
    {
        throw JobError(errors::kSettingType, {.step = _component,
                                              .setting = "seriesList",
                                              .name = id,
                                              .what = "has \"" + id + "\" " + problem});
    }

    std::vector<int> checkedNumbers(const std::string& id) const
    {
        std::vector<int> numbers = numbersOfSeriesId(id, width());
        bool isKnown =
            !numbers.empty() && numbers.back() <= static_cast<int>(_settings.metrics.size());
        for (std::size_t i = 0; isKnown && i < width(); ++i)
            isKnown = numbers[i] <= static_cast<int>(_plan.values[i].size());
        if (!isKnown)
            refuseId(id, "that is no id of a series of these dimensions and metrics");
        return numbers;
    }

    void tellIfUnknown(const FoundCombination& found,
                       const std::map<std::vector<int>, std::size_t>& places)
    {
        if (found.codes.size() < width() || places.contains(found.codes))
            return;
        std::string values;
        for (std::size_t i = 0; i < width(); ++i)
            values += (i == 0 ? "\"" : ", \"") +
                      dimensionText(found.values[i], _settings.dimensions[i].GetStorage()) + "\"";
        _messages.send({.step = _component,
                        .what = "the series has no combination " + values +
                                "; records that are left out: " + std::to_string(found.records)});
    }

    void tellUnknownValues()
    {
        for (const auto& [value, records] : _unknown) {
            const std::string& field = _settings.dimensions[value.first].GetName();
            _messages.send({.step = _component,
                            .field = field,
                            .what = "the field \"" + field + "\" has the value \"" + value.second +
                                    "\", which is not in its list; records that are left out: " +
                                    std::to_string(records)});
        }
    }

    void countRecords()
    {
        for (const FoundCombination& found : _found)
            _plan.mostRecords = std::max(_plan.mostRecords, found.records);
    }

    void findGroups()
    {
        std::map<std::vector<int>, std::size_t> groups;
        for (const FoundCombination& found : _found)
            groups.emplace(found.codes, found.group);
        for (const std::vector<int>& codes : _plan.combinations) {
            const auto found = groups.find(codes);
            _plan.groups.push_back(found == groups.end() ? std::nullopt
                                                         : std::optional(found->second));
        }
    }

    void makeTable()
    {
        Fields columns;
        for (std::size_t i = 0; i < width(); ++i)
            columns.emplace_back(PreparationTable::dimensionColumn(i), CFField::Nominal,
                                 _settings.dimensions[i].GetStorage());
        columns.emplace_back("k", CFField::Ordinal, CFField::Integer);
        NewTable table(_context, _component, columns);
        for (std::size_t k = 0; k < _plan.combinations.size(); ++k) {
            for (std::size_t i = 0; i < width(); ++i) {
                const auto code = static_cast<std::size_t>(_plan.combinations[k][i]);
                addDimensionValue(table, _plan.values[i][code - 1],
                                  _settings.dimensions[i].GetStorage());
            }
            table.addInteger(static_cast<std::int64_t>(k));
            table.endRecord();
        }
        _plan.table = quotedIdentifier(table.finish()->table);
    }

    JobContext& _context;
    const std::string& _component;
    const PreparationTable& _table;
    const TsdpSettings& _settings;
    FewMessages _messages;
    std::vector<FoundCombination> _found;
    std::vector<std::map<CFDatum, int, DatumOrder>> _codes;
    /// Values outside of the lists, by dimension and text, with the number of their records.
    std::map<std::pair<std::size_t, std::string>, std::int64_t> _unknown;
    SeriesPlan _plan;
};

} // namespace

SeriesPlan planSeries(JobContext& context, const std::string& component,
                      const PreparationTable& table, const TsdpSettings& settings)
{
    return SeriesPlanning(context, component, table, settings).run();
}

} // namespace EmbeddedHV
