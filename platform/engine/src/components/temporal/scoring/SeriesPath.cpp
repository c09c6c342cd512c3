#include "components/temporal/scoring/SeriesPath.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>

#include "ErrorIds.h"
#include "JobError.h"
#include "components/temporal/scoring/ModelAncestors.h"

namespace EmbeddedHV {
namespace {

constexpr double kNoValue = std::numeric_limits<double>::quiet_NaN();
/// Records that begin later after the training data than so many points do not continue them.
constexpr std::int64_t kLongestBridge = 10000;
/// Points of time are counted in fewer than so many, so that sums of indexes do not overflow.
constexpr std::int64_t kLargestIndex = std::int64_t{1} << 53;

/// The point of time of the path's first column: the end of the training data if that lies before
/// the records and not far.
std::int64_t firstIndexOf(const TcmModel& model, const SeriesTable& table)
{
    const std::int64_t stored = model.trainingPoints - model.lastValues.rows();
    const bool isContinued =
        table.firstIndex > stored && table.firstIndex - model.trainingPoints <= kLongestBridge;
    return isContinued ? stored : table.firstIndex;
}

/// The columns of the table by the series of the system.
std::vector<Eigen::Index> columnsOf(const TcmModel& model, const SeriesSystem& system,
                                    const SeriesTable& table, const std::string& component)
{
    std::unordered_map<std::string, Eigen::Index> places;
    for (const std::string& id : table.ids)
        places.emplace(id, static_cast<Eigen::Index>(places.size()));
    std::vector<Eigen::Index> columns;
    for (const std::size_t place : system.places) {
        const auto found = places.find(model.series[place].id);
        if (found == places.end())
            throw JobError(errors::kSeriesNotInRecords,
                           {.step = component,
                            .field = model.series[place].id,
                            .series = model.series[place].name,
                            .what = "the records have no field \"" + model.series[place].id +
                                    "\" for the series " + shownName(model.series[place]) +
                                    ", which the prediction needs"});
        columns.push_back(found->second);
    }
    return columns;
}

/// Takes the end of the training data for a series before its first known column.
void continueTraining(const TcmModel& model, std::size_t place, SeriesPath& path, Eigen::Index row)
{
    auto values = path.values.row(row);
    Eigen::Index first = 0;
    while (first < path.end && std::isnan(values(first)))
        ++first;
    const std::int64_t begin = model.trainingPoints - model.lastValues.rows() - path.firstIndex;
    for (Eigen::Index i = 0; i < model.lastValues.rows(); ++i)
        if (begin + i >= 0 && begin + i < first)
            values(begin + i) = model.lastValues(i, static_cast<Eigen::Index>(place));
}

/// Notes what is known of a series.
void markKnown(SeriesPath& path, Eigen::Index row)
{
    Eigen::Index last = -1;
    for (Eigen::Index point = 0; point < path.end; ++point)
        if (std::isfinite(path.values(row, point))) {
            path.sources(row, point) = ValueSource::Known;
            last = point;
        } else {
            path.values(row, point) = kNoValue;
        }
    path.lastKnown.push_back(last);
}

/// Predicts the values of a column that are neither known nor set.
void predictMissing(SeriesPath& path, const SeriesSystem& system, Eigen::Index point)
{
    const Eigen::VectorXd predicted = system.prediction(path.values, point);
    for (Eigen::Index row = 0; row < system.size(); ++row) {
        ValueSource& source = path.sources(row, point);
        if (source == ValueSource::Known || source == ValueSource::Set)
            continue;
        const bool isThere = std::isfinite(predicted(row));
        source = isThere ? ValueSource::Predicted : ValueSource::Missing;
        path.values(row, point) = isThere ? predicted(row) : kNoValue;
    }
}

} // namespace

SeriesPath pathOf(const TcmModel& model, const SeriesSystem& system, const SeriesTable& table,
                  std::int64_t span, const std::string& component, const StopCheck& check)
{
    if (table.firstIndex < -kLargestIndex || table.firstIndex > kLargestIndex)
        throw JobError(errors::kBadRecord,
                       {.step = component,
                        .record = 1,
                        .what = "the first point of time of the records, " +
                                std::to_string(table.firstIndex) + ", is out of range"});
    if (table.values.rows() == 0)
        throw JobError(errors::kNothingToScore,
                       {.step = component, .what = "there is no record to score"});
    SeriesPath path;
    path.columns = columnsOf(model, system, table, component);
    path.firstIndex = firstIndexOf(model, table);
    path.firstRecord = table.firstIndex - path.firstIndex;
    path.end = path.firstRecord + table.values.rows();
    path.values = Eigen::MatrixXd::Constant(system.size(), path.end + span, kNoValue);
    path.sources = ValueSources::Constant(system.size(), path.end + span, ValueSource::Missing);
    for (Eigen::Index row = 0; row < system.size(); ++row) {
        check();
        path.values.row(row).segment(path.firstRecord, table.values.rows()) =
            table.values.col(path.columns[static_cast<std::size_t>(row)]).transpose();
        continueTraining(model, system.places[static_cast<std::size_t>(row)], path, row);
        markKnown(path, row);
    }
    for (Eigen::Index point = 0; point < path.end; ++point) {
        check();
        if (path.values.col(point).hasNaN())
            predictMissing(path, system, point);
    }
    return path;
}

void predictAhead(SeriesPath& path, const SeriesSystem& system, const StopCheck& check)
{
    for (Eigen::Index point = path.end; point < path.values.cols(); ++point) {
        check();
        predictMissing(path, system, point);
    }
}

Eigen::MatrixXd oneStepAhead(const SeriesPath& path, const SeriesSystem& system, Eigen::Index count,
                             const StopCheck& check)
{
    Eigen::MatrixXd lagged = path.values.leftCols(path.end);
    for (Eigen::Index point = 0; point < path.end; ++point)
        for (Eigen::Index row = 0; row < system.size(); ++row)
            if (path.sources(row, point) == ValueSource::Predicted &&
                point < path.lastKnown[static_cast<std::size_t>(row)])
                lagged(row, point) = kNoValue;
    Eigen::MatrixXd predicted(count, path.end);
    for (Eigen::Index point = 0; point < path.end; ++point) {
        check();
        predicted.col(point) = system.prediction(lagged, point).head(count);
    }
    return predicted;
}

} // namespace EmbeddedHV
