#include "temporal/TrainingData.h"

#include <algorithm>

#include "JobError.h"

namespace TemporalTest {

double Noise::uniform()
{
    _state = _state * 6364136223846793005U + 1442695040888963407U;
    return static_cast<double>(_state >> 11U) / 9007199254740992.0;
}

double Noise::next()
{
    double sum = -6;
    for (int i = 0; i < 12; ++i)
        sum += uniform();
    return sum;
}

Eigen::MatrixXd noise(Eigen::Index points, Eigen::Index series, std::uint64_t seed)
{
    Noise source(seed);
    Eigen::MatrixXd values(points, series);
    for (double& value : values.reshaped())
        value = 5 + source.next();
    return values;
}

std::string Trained::edges() const
{
    std::vector<std::string> all;
    for (const EmbeddedHV::SeriesEquation& equation : model.equations)
        for (const EmbeddedHV::PredictorGroup& group : equation.groups)
            if (group.series != equation.series)
                all.push_back(model.series[group.series].id + ">" +
                              model.series[equation.series].id);
    std::sort(all.begin(), all.end());
    std::string text;
    for (const std::string& edge : all)
        text += (text.empty() ? "" : " ") + edge;
    return text;
}

EmbeddedHV::TrainingOptions everySeries(Eigen::Index series)
{
    EmbeddedHV::TrainingOptions options;
    options.isTarget.assign(static_cast<std::size_t>(series), true);
    options.isCandidate = options.isTarget;
    return options;
}

Trained train(const Eigen::MatrixXd& values, const EmbeddedHV::TrainingOptions& options)
{
    Trained trained;
    EmbeddedHV::SeriesTable table;
    table.values = values;
    std::vector<EmbeddedHV::ModelSeries> series;
    for (Eigen::Index i = 0; i < values.cols(); ++i) {
        const std::string id(1, static_cast<char>('a' + i));
        table.ids.push_back(id);
        series.push_back({id, {id}, false, false});
    }
    const EmbeddedHV::TrainingHooks hooks{
        [&](const std::string& id, const datafile::FaultParts& parts) {
            trained.messages.push_back(id + " " + sentenceOf(parts));
        },
        [] {}};
    try {
        trained.model = EmbeddedHV::trainModel(table, series, options, hooks, "tcm:train");
    } catch (const EmbeddedHV::JobError& error) {
        trained.error = error.id() + " " + error.what();
    }
    return trained;
}

} // namespace TemporalTest
