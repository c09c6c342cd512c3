#include "temporal/ExplainedSamples.h"

#include <cmath>
#include <cstdio>

#include "components/ContainerFile.h"
#include "components/temporal/model/ModelArchive.h"
#include "components/temporal/model/Preparation.h"

using namespace EmbeddedHV;

namespace TemporalTest {
namespace {

TcmModel targets(std::size_t count, int lags)
{
    TcmModel model;
    model.lags = lags;
    model.trainingPoints = 20;
    for (std::size_t i = 0; i < count; ++i)
        model.series.push_back({std::to_string(i + 1), {"m" + std::to_string(i + 1)}, true, true});
    model.lastValues = Eigen::MatrixXd::Zero(lags, static_cast<Eigen::Index>(count));
    return model;
}

} // namespace

const SeriesEquation& moving(const TcmModel& model, std::size_t series)
{
    const SeriesEquation* equation = model.equationOf(series);
    return equation ? *equation : *model.autoregressionOf(series);
}

SeriesEquation equationOf(std::size_t series, double intercept, const std::vector<Term>& terms)
{
    SeriesEquation equation;
    equation.series = series;
    equation.intercept = intercept;
    for (const Term& term : terms) {
        equation.terms.push_back({term.series, term.lag, term.coefficient, 0.125, 2, 0.05});
        if (equation.groups.empty() || equation.groups.back().series != term.series)
            equation.groups.push_back({term.series, 6.5, 0.011, false});
    }
    equation.residualVariance = 1;
    equation.fit.observations = 18;
    equation.fit.parameters = 5;
    equation.fit.rSquared = 0.75;
    equation.residuals.assign(20, std::nan(""));
    return equation;
}

TcmModel sampleModel()
{
    TcmModel model;
    model.lags = 2;
    model.trainingPoints = 20;
    model.series = {{"1-1", {"north", "sales"}, true, true},
                    {"1-2", {"north", "visits"}, true, true},
                    {"2-1", {"south", "sales"}, true, true},
                    {"2-2", {"south", "visits"}, false, true}};
    model.equations = {
        equationOf(kNorthSales, 1,
                   {{kNorthSales, 1, 0.25},
                    {kSouthVisits, 1, 0.5},
                    {kSouthVisits, 2, -0.75},
                    {kSouthSales, 1, 0.125}}),
        equationOf(kNorthVisits, 2,
                   {{kNorthVisits, 1, 0.125}, {kNorthSales, 1, 0.5}, {kNorthSales, 2, 0.5}}),
        equationOf(kSouthSales, 0,
                   {{kSouthSales, 1, 0.25}, {kNorthVisits, 1, 0.25}, {kNorthVisits, 2, -0.5}})};
    model.autoregressions = {equationOf(kSouthVisits, 3, {{kSouthVisits, 1, 0.5}})};
    model.lastValues = Eigen::MatrixXd::Zero(2, 4);
    return model;
}

TcmModel modelOfEdges(std::size_t series,
                      const std::vector<std::pair<std::size_t, std::size_t>>& edges)
{
    TcmModel model = targets(series, 1);
    std::vector<std::vector<Term>> terms(series);
    for (const auto& [from, to] : edges)
        terms[to].push_back({from, 1, 0.5});
    for (std::size_t i = 0; i < series; ++i)
        model.equations.push_back(equationOf(i, 0, terms[i]));
    return model;
}

TcmModel wideModel(std::size_t series)
{
    TcmModel model = targets(series, 5);
    for (std::size_t i = 0; i < series; ++i) {
        std::vector<Term> terms;
        for (std::size_t predictor = 0; predictor < 6; ++predictor)
            for (int lag = 1; lag <= 5; ++lag)
                terms.push_back({(i + predictor * predictor * 37) % series, lag,
                                 0.01 * lag - 0.02 * static_cast<double>(predictor)});
        model.equations.push_back(equationOf(i, 0, terms));
    }
    return model;
}

Eigen::MatrixXd simulated(const TcmModel& model, Eigen::Index points, const Shocks& shocks)
{
    const auto count = static_cast<Eigen::Index>(model.series.size());
    Eigen::MatrixXd values = Eigen::MatrixXd::Constant(points, count, 10);
    for (Eigen::Index point = model.lags; point < points; ++point)
        for (std::size_t series = 0; series < model.series.size(); ++series) {
            const SeriesEquation& equation = moving(model, series);
            double value = equation.intercept + shocks(series, point);
            for (const LaggedTerm& term : equation.terms)
                value += term.coefficient *
                         values(point - term.lag, static_cast<Eigen::Index>(term.series));
            values(point, static_cast<Eigen::Index>(series)) = value;
        }
    return values;
}

SeriesTable tableOf(const TcmModel& model, Eigen::MatrixXd values)
{
    SeriesTable table;
    for (const ModelSeries& series : model.series)
        table.ids.push_back(series.id);
    table.values = std::move(values);
    return table;
}

double ripple(std::size_t series, Eigen::Index point)
{
    return std::sin(static_cast<double>(series * 7 + 3) * static_cast<double>(point + 1));
}

std::string samplePreparation(int points)
{
    std::string times;
    for (int point = 0; point < points; ++point) {
        char time[32];
        std::snprintf(time, sizeof time, "\"2024-01-%02d\"", point + 1);
        times += (point == 0 ? "" : ", ") + std::string(time);
    }
    return R"({"settings": {"dimFieldList": ["region"], "metricFieldList": ["sales", "visits"],
        "dateTimeField": "day", "cyclicFieldList": [],
        "timeInterval": {"unit": "day", "increment": 1}, "start": "2024-01-01",
        "dimValueLists": {"region": ["north", "south"]},
        "seriesList": ["1-1", "1-2", "2-1", "2-2"]},
        "output": {"timeVariable": [)" +
           times + R"(], "points": )" + std::to_string(points) +
           R"(, "timeFields": [{"name": "day", "storage": "date"}],
        "dimensions": [{"name": "region", "storage": "string"}], "leftOut": [], "series": [
        {"id": "1-1", "name": ["north", "sales"], "filled": 0, "observed": 20},
        {"id": "1-2", "name": ["north", "visits"], "filled": 0, "observed": 20},
        {"id": "2-1", "name": ["south", "sales"], "filled": 0, "observed": 20},
        {"id": "2-2", "name": ["south", "visits"], "filled": 0, "observed": 20}]}})";
}

void writeSample(const TcmModel& model, const std::string& path)
{
    const std::string preparation = samplePreparation(20);
    const Fields fields = preparationOf(preparation, {"test"}).fields;
    ContainerFile file(path, "test");
    file.write(modelMembers(model, preparation, modelStatistics(fields)));
    file.commit();
}

} // namespace TemporalTest
