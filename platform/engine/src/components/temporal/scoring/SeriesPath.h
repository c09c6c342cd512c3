#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <Eigen/Core>

#include "components/temporal/base/SeriesTable.h"
#include "components/temporal/model/TcmModel.h"
#include "components/temporal/scoring/SeriesSystem.h"

namespace EmbeddedHV {

/// Where a value of a series in a scored range of time comes from.
enum class ValueSource : std::uint8_t
{
    Missing,   ///< nothing is known and nothing could be predicted
    Known,     ///< from the records or the end of the training data
    Predicted, ///< a prediction, where the value is missing or lies beyond the data
    Set        ///< from the scenario
};

using ValueSources = Eigen::Matrix<ValueSource, Eigen::Dynamic, Eigen::Dynamic>;

/// The values of the series of a system over the records and the points of time beyond them. A row
/// is a series, a column a point of time.
struct SeriesPath
{
    std::int64_t firstIndex = 0;  ///< of the first column; may lie before the first record
    Eigen::Index firstRecord = 0; ///< the column of the first record
    Eigen::Index end = 0;         ///< the column after the last record
    Eigen::MatrixXd values;       ///< with predictions where a value is not known
    ValueSources sources;
    /// The column of the last known value of a series; -1 if no value is known.
    std::vector<Eigen::Index> lastKnown;
    std::vector<Eigen::Index> columns; ///< of the table, by series
};

/// The path over the records, with `span` empty columns after them. Before the first value of a
/// series in the records, the path has the last values of the training data. Throws what `check`
/// throws, and JobError, with `component` before the message, if the table lacks a series.
SeriesPath pathOf(const TcmModel& model, const SeriesSystem& system, const SeriesTable& table,
                  std::int64_t span, const std::string& component, const StopCheck& check);

/// Predicts the values beyond the records that the scenario does not set.
void predictAhead(SeriesPath& path, const SeriesSystem& system, const StopCheck& check);

/// The one-step-ahead values of the first `count` series for each column of the records. A lagged
/// value that is missing between known values makes the prediction missing; after the last known
/// value of its series, its prediction replaces it.
Eigen::MatrixXd oneStepAhead(const SeriesPath& path, const SeriesSystem& system, Eigen::Index count,
                             const StopCheck& check);

} // namespace EmbeddedHV
