#include "report/charts/ChartSpec.h"

#include <algorithm>
#include <map>
#include <stdexcept>

#include "base/NumberText.h"

namespace {

using Json = nlohmann::ordered_json;

constexpr int kShownDigits = 7;
constexpr int kDeepest = 50; ///< nesting of views

/// Returns null for a missing member, so that paths into a specification need no test at each step.
const Json& specMember(const Json& object, const char* key)
{
    static const Json none;
    if (!object.is_object())
        return none;
    const auto found = object.find(key);
    return found != object.end() ? *found : none;
}

std::string specText(const Json& value)
{
    return value.is_string() ? value.get<std::string>() : std::string();
}

/// A title is a text, a list of lines, or an object with either.
std::string titleOf(const Json& value)
{
    if (value.is_object()) {
        const std::string below = titleOf(specMember(value, "subtitle"));
        return titleOf(specMember(value, "text")) + (below.empty() ? "" : "\n" + below);
    }
    if (!value.is_array())
        return specText(value);
    std::string lines;
    for (const Json& line : value)
        lines += (lines.empty() ? "" : "\n") + specText(line);
    return lines;
}

/// The name of a field without the specification's quoting: backslashes before characters that
/// would access a member, and brackets around a name.
std::string fieldName(const std::string& path)
{
    std::string name;
    std::string text = path;
    if (text.size() >= 4 && text[0] == '[' && (text[1] == '\'' || text[1] == '"') &&
        text.ends_with(std::string(1, text[1]) + "]"))
        text = text.substr(2, text.size() - 4);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 1 < text.size())
            ++i;
        name += text[i];
    }
    return name;
}

/// The labels of the result's fields, by id, for axes of charts without titles.
std::map<std::string, std::string> fieldLabels(const Json& dataModel)
{
    std::map<std::string, std::string> labels;
    for (const Json& field : specMember(dataModel, "fields"))
        labels[specText(specMember(field, "id"))] = specText(specMember(field, "label"));
    return labels;
}

/// A channel, for example "x": its field and how it is shown.
struct Channel
{
    std::string name;
    const Json* definition = nullptr;
    std::string field() const { return fieldName(specText(specMember(*definition, "field"))); }
};

std::vector<Channel> channelsOf(const Json& encoding)
{
    std::vector<Channel> channels;
    if (encoding.is_object())
        for (const auto& [name, definition] : encoding.items()) {
            const Channel channel{name, &definition};
            if (!channel.field().empty())
                channels.push_back(channel);
        }
    return channels;
}

/// The properties that a view inherits from enclosing views.
struct Inherited
{
    const Json* data = nullptr;
    Json encoding = Json::object();
    std::string title;
};

/// Collects the views of a specification.
class PlotCollector
{
public:
    PlotCollector(const Json& specification, const Json& dataModel)
        : _datasets(specMember(specification, "datasets")), _labels(fieldLabels(dataModel))
    {
    }
    void visit(const Json& view, Inherited above, int depth = 0);
    std::vector<ChartPlot> plots() && { return std::move(_plots); }

private:
    void add(const Json& view, const Inherited& all);
    const Json& valuesOf(const Json& data) const;
    std::string titleOfField(const Channel& channel) const;
    std::vector<ChartPlot::Column> columnsOf(const std::vector<Channel>& channels,
                                             const ChartPlot& plot) const;
    static std::optional<std::size_t> barsOf(const Json& view, const std::vector<Channel>& channels,
                                             const ChartPlot& plot);

    const Json& _datasets;
    std::map<std::string, std::string> _labels;
    std::vector<ChartPlot> _plots;
};

/// Visits layered and adjacent views, down to those that draw.
void PlotCollector::visit(const Json& view, Inherited above, int depth)
{
    if (!view.is_object() || depth > kDeepest)
        return;
    if (view.contains("data"))
        above.data = &view.at("data");
    if (specMember(view, "encoding").is_object())
        above.encoding.update(view.at("encoding"));
    if (const std::string title = titleOf(specMember(view, "title")); depth > 0 && !title.empty())
        above.title = title;
    bool isComposed = false;
    for (const char* key : {"layer", "hconcat", "vconcat", "concat"})
        for (const Json& inner : specMember(view, key)) {
            isComposed = true;
            visit(inner, above, depth + 1);
        }
    if (specMember(view, "spec").is_object())
        visit(view.at("spec"), above, depth + 1);
    else if (!isComposed)
        add(view, above);
}

/// Values are in the view, or under a name in the data sets of the chart.
const Json& PlotCollector::valuesOf(const Json& data) const
{
    if (data.is_object() && data.contains("values"))
        return data.at("values");
    return specMember(_datasets, specText(specMember(data, "name")).c_str());
}

/// The chart's title for the field, otherwise its label, otherwise its name.
std::string PlotCollector::titleOfField(const Channel& channel) const
{
    for (const Json* holder : {channel.definition, &specMember(*channel.definition, "axis"),
                               &specMember(*channel.definition, "legend")})
        if (std::string title = titleOf(specMember(*holder, "title")); !title.empty())
            return title;
    const auto label = _labels.find(channel.field());
    return label != _labels.end() && !label->second.empty() ? label->second : channel.field();
}

/// A field in two channels has one column. Without channels, every field has a column.
std::vector<ChartPlot::Column> PlotCollector::columnsOf(const std::vector<Channel>& channels,
                                                        const ChartPlot& plot) const
{
    std::vector<ChartPlot::Column> columns;
    const auto ofField = [&](const std::string& field) {
        return std::find_if(columns.begin(), columns.end(),
                            [&](const auto& column) { return column.field == field; });
    };
    for (const Channel& channel : channels) {
        const auto start =
            std::find_if(channels.begin(), channels.end(),
                         [&](const Channel& other) { return other.name + "2" == channel.name; });
        if (start == channels.end() && ofField(channel.field()) == columns.end())
            columns.push_back({titleOfField(channel), channel.field(), {}});
    }
    for (const Channel& channel : channels)
        for (const Channel& start : channels)
            if (const auto column = ofField(start.field());
                start.name + "2" == channel.name && column != columns.end())
                column->endField = channel.field();
    if (columns.empty() && !plot.rows.empty())
        for (const auto& [key, value] : plot.rows.front()->items())
            columns.push_back({key, key, {}});
    return columns;
}

/// The channel that is drawn as bars. Bars of values that the chart computes have no data to show.
std::optional<std::size_t>
PlotCollector::barsOf(const Json& view, const std::vector<Channel>& channels, const ChartPlot& plot)
{
    const Json& mark = specMember(view, "mark");
    const std::string kind = mark.is_object() ? specText(specMember(mark, "type")) : specText(mark);
    if (kind != "bar" || view.contains("transform"))
        return std::nullopt;
    for (const char* name : {"y", "x"})
        for (const Channel& channel : channels) {
            const Json& bin = specMember(*channel.definition, "bin");
            if (channel.name != name || !bin.is_null() ||
                specText(specMember(*channel.definition, "type")) != "quantitative" ||
                channel.definition->contains("aggregate"))
                continue;
            const auto column =
                std::find_if(plot.columns.begin(), plot.columns.end(), [&](const auto& each) {
                    return each.field == channel.field() && each.endField.empty();
                });
            if (column != plot.columns.end())
                return static_cast<std::size_t>(column - plot.columns.begin());
        }
    return std::nullopt;
}

void PlotCollector::add(const Json& view, const Inherited& all)
{
    static const Json none;
    ChartPlot plot;
    plot.title = all.title;
    const Json& values = valuesOf(all.data ? *all.data : none);
    if (values.is_array())
        for (const Json& row : values)
            if (row.is_object())
                plot.rows.push_back(&row);
    const std::vector<Channel> channels = channelsOf(all.encoding);
    plot.columns = columnsOf(channels, plot);
    plot.bars = barsOf(view, channels, plot);
    if (!plot.rows.empty() && !plot.columns.empty())
        _plots.push_back(std::move(plot));
}

} // namespace

ChartSpec::ChartSpec(const std::string& templateJson)
    : _json(Json::parse(templateJson, nullptr, false))
{
    const Json& specification = specMember(_json, "1");
    if (_json.is_discarded() || !specification.is_object())
        throw std::invalid_argument("The chart has no specification that can be read.");
    _title = titleOf(specMember(specification, "title"));
    _description = specText(specMember(specification, "description"));
    PlotCollector collector(specification, specMember(_json, "0"));
    collector.visit(specification, {});
    _plots = std::move(collector).plots();
}

std::string jsonCellText(const nlohmann::ordered_json& value)
{
    if (value.is_null())
        return {};
    if (value.is_string())
        return value.get<std::string>();
    if (value.is_number_float())
        return base::roundedNumber(value.get<double>(), kShownDigits);
    if (value.is_primitive())
        return value.dump(-1, ' ', false, Json::error_handler_t::replace);
    return value.is_array() ? "[…]" : "{…}";
}
