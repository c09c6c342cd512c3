#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

/// One view of a chart as a table: its fields as columns, and the rows of its data.
struct ChartPlot
{
    /// Shows the value of a field, or the range between two fields.
    struct Column
    {
        std::string title;
        std::string field;
        std::string endField; ///< empty for a single value
    };

    std::string title;
    std::vector<Column> columns;
    std::vector<const nlohmann::ordered_json*> rows; ///< point into the chart
    std::optional<std::size_t> bars;                 ///< the column whose values are drawn as bars
};

/// The titles and data of a chart's template. Owns the template's JSON.
class ChartSpec
{
public:
    /// Throws std::invalid_argument if the template is invalid JSON or has no specification.
    explicit ChartSpec(const std::string& templateJson);
    ChartSpec(const ChartSpec&) = delete;
    ChartSpec& operator=(const ChartSpec&) = delete;

    const std::string& title() const { return _title; }
    const std::string& description() const { return _description; }
    const std::vector<ChartPlot>& plots() const { return _plots; }

private:
    nlohmann::ordered_json _json;
    std::string _title;
    std::string _description;
    std::vector<ChartPlot> _plots;
};

/// A JSON value as text of a cell: numbers with seven significant digits.
std::string jsonCellText(const nlohmann::ordered_json& value);
