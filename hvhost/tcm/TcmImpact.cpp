#include "hvhost/tcm/TcmImpact.h"

#include <map>
#include <optional>
#include <set>

#include "hvhost/show/ResultWords.h"
#include "hvhost/tcm/ModelWork.h"
#include "hvhost/tcm/TcmCharts.h"
#include "tcm/HVInteractiveTSR.h"

namespace {

using TcmJson = nlohmann::ordered_json;

/// Joins the two halves of a diagram: the effects of a series and its causes.
class ImpactReader
{
public:
    explicit ImpactReader(const std::string& series) : _series(series)
    {
        _table.columns = {{"predictor", CFField::String}, {"target", CFField::String},
                          {"direction", CFField::String}, {"level", CFField::Integer},
                          {"lag", CFField::Integer},      {"effect", CFField::Real},
                          {"F", CFField::Real},           {"p", CFField::Real}};
        _table.columns[2].hasWords = true;
        _table.keyCount = 2;
    }

    void read(const TcmJson& artifact, int sign)
    {
        std::map<std::string, int> levels;
        std::map<std::string, std::string> names;
        for (const TcmJson& node : artifact.at("nodes")) {
            const auto id = node.at("id").get<std::string>();
            names[id] = seriesText(node.at("name").get<SeriesName>());
            levels[id] = node.at("level").get<int>();
            // A series in a cycle is a cause and an effect; it is drawn once.
            _levels.emplace(names[id], sign * levels[id]);
        }
        for (const TcmJson& edge : artifact.at("edges")) {
            const auto from = edge.at("from").get<std::string>();
            const auto to = edge.at("to").get<std::string>();
            addEdge(edge, {names.at(from), names.at(to)},
                    {sign > 0 ? "effects" : "causes", levels.at(sign > 0 ? from : to) + 1});
        }
    }

    TcmResult result(const std::string& model) const
    {
        std::vector<ImpactShown> nodes;
        for (const auto& [name, level] : _levels)
            nodes.push_back({name, level});
        TcmResult result;
        result.name = model;
        result.rows = _table;
        result.parts = {
            {sentence("Impact of ^1", {_series}), {}, impactChart(_series, nodes, _edges), {}},
            {sentence("Effects and causes of ^1", {_series}), _table, {}, {}}};
        return result;
    }

private:
    struct Ends
    {
        std::string predictor;
        std::string target;
    };
    struct Step
    {
        const char* direction;
        int level;
    };

    void addEdge(const TcmJson& edge, const Ends& ends, const Step& step)
    {
        std::optional<std::string> contribution;
        if (edge.contains("contribution")) {
            contribution = tcmNumber(edge["contribution"]);
            if (_table.columns.back().name != kContribution)
                _table.columns.push_back({kContribution, CFField::Real});
        }
        ResultTable::Row row{ends.predictor,
                             ends.target,
                             step.direction,
                             std::to_string(step.level),
                             tcmNumber(edge.at("lag")),
                             tcmNumber(edge.at("sum")),
                             tcmNumber(edge.at("fStatistic")),
                             tcmNumber(edge.at("pValue"))};
        if (edge.contains("contribution"))
            row.push_back(contribution);
        _table.rows.push_back(std::move(row));
        // In a cycle both halves have the edge.
        if (!_drawn.emplace(ends.predictor, ends.target).second)
            return;
        _edges.push_back({{"Predictor", ends.predictor},
                          {"Target", ends.target},
                          {"Lag", edge.at("lag")},
                          {"Effect", edge.at("sum")},
                          {"p", edge.at("pValue")},
                          {"Strength", edge.at("strength")}});
    }

    static constexpr const char* kContribution = "contribution";

    std::string _series;
    std::map<std::string, int> _levels;
    std::set<std::pair<std::string, std::string>> _drawn;
    TcmJson _edges = TcmJson::array();
    ResultTable _table;
};

TcmResult impactResult(const TcmModelFacts& facts, const std::string& series,
                       const TcmJson& artifacts)
{
    ImpactReader reader(series);
    reader.read(artifacts.at(1), -1);
    reader.read(artifacts.at(0), 1);
    TcmResult result = reader.result(facts.file);
    result.document = {{"model", facts.file},
                       {"series", series},
                       {"effects", artifacts.at(0)},
                       {"causes", artifacts.at(1)}};
    return result;
}

} // namespace

void tcmImpact(const TcmImpactOptions& options, const CommonOptions& common)
{
    ModelWork work("impact", options.model, options.input, options.shown, common);
    const TcmModelFacts& facts = work.facts();
    const SeriesName& series = facts.find(options.series, "--series").name;
    const std::uint32_t dataset = work.dataset();
    TcmSession& session = work.session();
    std::string diagram;
    session.perform(
        [&](HVInteractiveTSR& viewer) {
            return viewer.getImpactDiagram(dataset, session.modelPath(), series.back(),
                                           facts.dimensions, {series.begin(), series.end() - 1},
                                           false, options.level, diagram);
        },
        work.data());
    work.finish(impactResult(facts, seriesText(series), session.artifactsIn(diagram)));
}
