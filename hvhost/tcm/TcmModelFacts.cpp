#include "hvhost/tcm/TcmModelFacts.h"

#include <algorithm>
#include <cmath>

#include "hvhost/base/CommandFault.h"
#include "hvhost/base/Text.h"

namespace {

using TcmJson = nlohmann::ordered_json;

std::string pointText(const TcmJson& value)
{
    return value.is_string() ? value.get<std::string>() : value.dump();
}

std::vector<std::string> namesIn(const TcmJson& settings, const char* key)
{
    std::vector<std::string> names;
    for (const TcmJson& name : settings.value(key, TcmJson::array()))
        if (const auto text = name.get<std::string>(); !text.empty())
            names.push_back(text);
    return names;
}

/// The points of cyclic times are a list of values for each field.
void readPoints(const TcmJson& variable, TcmModelFacts& facts)
{
    const auto join = [&](bool first) {
        std::string text;
        for (const std::string& field : facts.timeFields) {
            const TcmJson& points = variable.is_object() ? variable.at(field) : variable;
            if (!points.empty())
                text +=
                    (text.empty() ? "" : " ") + pointText(first ? points.front() : points.back());
        }
        return text;
    };
    const TcmJson& points = variable.is_object() ? variable.at(facts.timeFields.back()) : variable;
    facts.timePoints = points.size();
    facts.firstPoint = join(true);
    facts.lastPoint = join(false);
}

void readPreparation(const TcmJson& document, TcmModelFacts& facts)
{
    const TcmJson& settings = document.at("settings");
    const TcmJson& output = document.at("output");
    facts.dimensions = namesIn(settings, "dimFieldList");
    facts.metrics = namesIn(settings, "metricFieldList");
    const auto time = settings.value("dateTimeField", std::string());
    facts.timeFields =
        time.empty() ? namesIn(settings, "cyclicFieldList") : std::vector<std::string>{time};
    facts.interval = output.value("interval", TcmJson());
    facts.leftOut = output.value("leftOut", TcmJson::array());
    readPoints(output.at("timeVariable"), facts);
    for (const TcmJson& series : output.value("series", TcmJson::array()))
        facts.series.push_back({series.at("name").get<SeriesName>(), false,
                                series.value("observed", TcmJson()),
                                series.value("filled", TcmJson())});
}

TcmModelFacts::Series& seriesOf(TcmModelFacts& facts, const SeriesName& name)
{
    const auto found = std::ranges::find(facts.series, name, &TcmModelFacts::Series::name);
    if (found != facts.series.end())
        return *found;
    return facts.series.emplace_back(TcmModelFacts::Series{name, false, {}, {}});
}

void readNetwork(const TcmJson& network, TcmModelFacts& facts)
{
    for (const TcmJson& target : network.value("targets", TcmJson::array())) {
        const auto name = target.at("name").get<SeriesName>();
        seriesOf(facts, name).isTarget = true;
        for (const TcmJson& predictor : target.value("predictors", TcmJson::array()))
            facts.edges.push_back({predictor.at("name").get<SeriesName>(), name,
                                   predictor.value("lag", 1),
                                   predictor.value("coefficientSum", 0.0),
                                   predictor.value("p", 1.0), predictor.value("f", TcmJson())});
    }
}

} // namespace

double TcmModelFacts::Edge::strength() const
{
    constexpr double kLeast = 1e-300;
    return -std::log10(std::max(pValue, kLeast));
}

const TcmModelFacts::Series& TcmModelFacts::find(const std::string& text,
                                                 const std::string& option) const
{
    const SeriesName name = parseSeries(text, option);
    const auto found = std::ranges::find(series, name, &Series::name);
    if (found != series.end())
        return *found;
    std::vector<std::string> known;
    for (const Series& one : series)
        known.push_back(seriesText(one.name));
    throw CommandFault(ExitStatus::Usage, option + " " + text + ": " + file + " has no such series",
                       nearestHint(known, seriesText(name), "hvhost tcm info lists the series"));
}

TcmModelFacts readModelFacts(const std::string& file, const std::string& network,
                             const std::string& preparation)
{
    TcmModelFacts facts;
    facts.file = file;
    try {
        readPreparation(TcmJson::parse(preparation), facts);
        readNetwork(TcmJson::parse(network), facts);
    } catch (const TcmJson::exception&) {
        throw CommandFault(ExitStatus::Input, file + ": the description of its series is invalid");
    }
    return facts;
}
