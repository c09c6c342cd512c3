#include "components/descriptives/FieldCharts.h"

#include <algorithm>
#include <cmath>

#include "base/CivilTime.h"
#include "components/descriptives/MomentText.h"
#include "components/result/ChartSpecification.h"
#include "components/result/ValueFormat.h"
#include "steps/Plan.h"

namespace EmbeddedHV {
namespace {

constexpr std::size_t kMostBars = 50;
constexpr const char* kCounts = "count";
constexpr const char* kBinEnds = "end";
constexpr const char* kLabels = "label";

std::string column(const CFField& field, const char* base)
{
    return unusedName({field}, base);
}

/// For example "1 value" or "2 values".
std::string counted(std::int64_t count, const char* one, const char* several)
{
    return std::to_string(count) + " " + (count == 1 ? one : several);
}

std::string missingText(const FieldSummary& field)
{
    return field.missing == 0 ? "" : ", " + std::to_string(field.missing) + " missing";
}

/// A point of the axis for the chart; null if a date is out of range.
Json edgeOf(const CFField& field, double edge)
{
    std::optional<std::string> text;
    if (!isMoment(field))
        return numberJson(edge);
    if (field.GetStorage() == CFField::Date)
        text = dateText(edge);
    else
        text = timestampText(edge);
    return text ? Json(*text) : Json();
}

/// The pattern of a date on an axis, in the form that the field's values have in tables of the
/// output. A date with the year first has hyphens there.
const char* datePattern(const CFField& field)
{
    constexpr std::pair<int, const char*> kPatterns[] = {
        {20, "%d-%b-%Y"}, {23, "%m/%d/%Y"}, {38, "%d.%m.%Y"}};
    const int type = field.GetPrivateFormat() ? field.GetPrivateFormat()->GetType() : 0;
    for (const auto& [known, pattern] : kPatterns)
        if (type == known)
            return pattern;
    return "%Y-%m-%d";
}

/// The labels of the axis. Times of day are on the first day of the scale, so the axis shows only
/// the time. For dates it shows the full date, because months alone are ambiguous.
std::string labelPattern(const CFField& field, const Histogram& histogram)
{
    if (!isMoment(field))
        return ",.10~g";
    if (field.GetStorage() == CFField::Time)
        return "%H:%M:%S";
    const bool areDays =
        std::all_of(histogram.edges.begin(), histogram.edges.end(),
                    [](double edge) { return std::fmod(edge, base::kSecondsPerDay) == 0; });
    if (field.GetStorage() == CFField::Date || areDays)
        return datePattern(field);
    return std::string(datePattern(field)) + " %H:%M";
}

/// The edges of the bins that have ticks: all, or every second, third and so on.
Json ticksOf(const CFField& field, const Histogram& histogram)
{
    constexpr std::size_t kMostTicks = 10;
    const std::size_t step = (histogram.edges.size() + kMostTicks - 1) / kMostTicks;
    Json ticks = Json::array();
    for (std::size_t at = 0; at < histogram.edges.size(); at += step)
        ticks.push_back(edgeOf(field, histogram.edges[at]));
    return ticks;
}

Json binAxis(const CFField& field, const std::string& reference, const Histogram& histogram)
{
    Json axis = {{"field", reference}, {"title", chart::axisTitle(chart::titleOf(field))}};
    axis["axis"] = {{"values", ticksOf(field, histogram)},
                    {"format", labelPattern(field, histogram)}};
    if (!isMoment(field)) {
        axis["type"] = "quantitative";
        axis["bin"] = "binned";
        return axis;
    }
    axis["type"] = "temporal";
    axis["scale"] = {{"type", "utc"}};
    return axis;
}

std::optional<Json> binRows(const FieldSummary& field, const std::string& begin,
                            const std::string& end, const std::string& counts)
{
    const Histogram& histogram = *field.histogram;
    Json rows = Json::array();
    for (std::size_t i = 0; i < histogram.counts.size(); ++i) {
        const Json from = edgeOf(field.field, histogram.edges[i]);
        const Json to = edgeOf(field.field, histogram.edges[i + 1]);
        if (from.is_null() || to.is_null())
            return std::nullopt;
        rows.push_back({{begin, from}, {end, to}, {counts, numberJson(histogram.counts[i])}});
    }
    return rows;
}

/// If the counts are whole numbers, the axis has no ticks between them.
Json countAxis(const std::string& counts, bool weighted, bool areWhole)
{
    Json axis = {{"field", counts},
                 {"type", "quantitative"},
                 {"title", weighted ? "Weighted Frequency" : "Frequency"}};
    if (areWhole)
        axis["axis"] = {{"tickMinStep", 1}};
    return axis;
}

bool areWhole(const std::vector<double>& counts)
{
    return std::all_of(counts.begin(), counts.end(),
                       [](double count) { return std::trunc(count) == count; });
}

/// A value for the data of a chart.
Json valueOf(const CFField& field, const CFDatum& datum)
{
    if (datum.IsString())
        return datum.GetString();
    if (datum.IsInteger())
        return datum.GetInteger();
    std::optional<std::string> text;
    if (field.GetStorage() == CFField::Date)
        text = dateText(datum.GetReal() * base::kSecondsPerDay);
    else if (field.GetStorage() == CFField::Timestamp)
        text = timestampText(datum.GetReal());
    else if (field.GetStorage() == CFField::Time)
        text = timeText(datum.GetReal());
    return text ? Json(*text) : numberJson(datum.GetReal());
}

std::vector<ValueCount> shownValues(const FieldSummary& field)
{
    std::vector<ValueCount> values = field.distribution;
    if (values.size() <= kMostBars)
        return values;
    std::vector<double> weights;
    weights.reserve(values.size());
    for (const ValueCount& value : values)
        weights.push_back(value.weight);
    std::nth_element(weights.begin(), weights.begin() + kMostBars - 1, weights.end(),
                     std::greater<>());
    const double least = weights[kMostBars - 1];
    auto above = static_cast<std::size_t>(
        std::count_if(weights.begin(), weights.end(), [&](double w) { return w > least; }));
    // Of the values that are as frequent as the last one shown, keep the first ones.
    std::erase_if(values, [&](const ValueCount& value) {
        return value.weight < least || (value.weight == least && ++above > kMostBars);
    });
    return values;
}

/// An expression that replaces values by their labels; empty if no value has a label.
std::string labelExpression(const CFField& field, const std::vector<ValueCount>& values)
{
    Json labels = Json::object();
    for (const ValueCount& value : values) {
        const int label = CFValue::GetIndex(value.value, field.GetValueLabels());
        if (label < 0)
            continue;
        const Json key = valueOf(field, value.value);
        labels[key.is_string() ? key.get<std::string>() : value.value.ToString(-1)] =
            field.GetValueLabels()[static_cast<std::size_t>(label)].GetLabel();
    }
    if (labels.empty())
        return {};
    // ASCII only: some Unicode line ends would end the expression.
    return "(" + labels.dump(-1, ' ', true, Json::error_handler_t::replace) +
           ")[datum.value] || datum.label";
}

/// Adds a column with the labels of the values, unless no value has one.
void addLabels(Json& rows, const CFField& field, const std::vector<ValueCount>& values)
{
    const std::string name = column(field, kLabels);
    const auto labelOf = [&](const ValueCount& value) {
        const int label = CFValue::GetIndex(value.value, field.GetValueLabels());
        return label < 0 ? std::string()
                         : field.GetValueLabels()[static_cast<std::size_t>(label)].GetLabel();
    };
    if (std::all_of(values.begin(), values.end(),
                    [&](const ValueCount& value) { return labelOf(value).empty(); }))
        return;
    for (std::size_t at = 0; at < values.size(); ++at)
        rows[at][name] = labelOf(values[at]);
}

Json barTitle(const FieldSummary& field, std::size_t bars)
{
    const std::string& title = chart::titleOf(field.field);
    if (bars == field.distribution.size())
        return title;
    return {{"text", title},
            {"subtitle", "The " + std::to_string(bars) + " most frequent of " +
                             std::to_string(field.distribution.size()) + " values"}};
}

Json categoryAxis(const CFField& field, const std::string& reference,
                  const std::vector<ValueCount>& values)
{
    Json axis = {{"field", reference},
                 {"type", field.GetType() == CFField::Ordinal ? "ordinal" : "nominal"},
                 {"sort", nullptr},
                 {"title", chart::axisTitle(chart::titleOf(field))}};
    const std::string labels = labelExpression(field, values);
    if (!labels.empty())
        axis["axis"] = {{"labelExpr", labels}};
    return axis;
}

} // namespace

std::optional<Json> histogramChart(const FieldSummary& field, const std::string& key, bool weighted)
{
    const std::string begin = chart::columnName(field.field.GetName(), key);
    const std::string end = column(field.field, kBinEnds);
    const std::string counts = column(field.field, kCounts);
    auto rows = binRows(field, begin, end, counts);
    if (!rows)
        return std::nullopt;
    const std::string& title = chart::titleOf(field.field);
    // Before the rows are moved.
    const std::string description =
        "Histogram of " + title + ": " + counted(field.valid, "value", "values") + " in " +
        counted(static_cast<std::int64_t>(rows->size()), "bin", "bins") + missingText(field) +
        (weighted ? ", weighted" : "");
    Json specification = chart::barSpecification(title, description, std::move(*rows));
    // Without this, bars between two moments would be horizontal.
    specification["mark"]["orient"] = "vertical";
    specification["encoding"] = {
        {"x", binAxis(field.field, chart::columnReference(begin), *field.histogram)},
        {"x2", {{"field", chart::columnReference(end)}}},
        {"y", countAxis(counts, weighted, areWhole(field.histogram->counts))}};
    return specification;
}

Json barChart(const FieldSummary& field, const std::string& key, bool weighted)
{
    const std::string name = chart::columnName(field.field.GetName(), key);
    const std::string counts = column(field.field, kCounts);
    const std::vector<ValueCount> values = shownValues(field);
    Json rows = Json::array();
    for (const ValueCount& value : values)
        rows.push_back({{name, valueOf(field.field, value.value)},
                        {counts, weighted ? numberJson(value.weight) : Json(value.records)}});
    addLabels(rows, field.field, values);
    const std::string& title = chart::titleOf(field.field);
    Json specification = chart::barSpecification(
        barTitle(field, values.size()),
        "Frequencies of " + title + ": " + counted(field.valid, "value", "values") +
            missingText(field) + (weighted ? ", weighted" : ""),
        std::move(rows));
    specification["encoding"] = {
        {"y", categoryAxis(field.field, chart::columnReference(name), values)},
        {"x", countAxis(counts, weighted, !weighted)}};
    return specification;
}

} // namespace EmbeddedHV
