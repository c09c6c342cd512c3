#pragma once

#include <cstdint>
#include <vector>

#include "components/temporal/base/SeriesTable.h"
#include "components/temporal/model/TcmModel.h"

namespace EmbeddedHV {

/// The values that the series of a model have in some data. Points of time are named by their
/// index, 0 for the first one of the training.
class ModelData
{
public:
    /// Series of the table that the model does not have are left out.
    ModelData(const TcmModel& model, SeriesTable table);

    const SeriesTable& table() const { return _table; }
    std::int64_t firstIndex() const { return _table.firstIndex; }
    /// The index after the last point of time.
    std::int64_t endIndex() const { return _table.firstIndex + _table.values.rows(); }
    /// Whether the data have a column for the series.
    bool has(std::size_t series) const { return _columns[series] >= 0; }
    /// Not-a-number for a missing value, a series without a column and a point outside of the data.
    double value(std::size_t series, std::int64_t index) const;
    /// What the equation gives for a point of time; not-a-number if it needs a value that is
    /// missing.
    double prediction(const SeriesEquation& equation, std::int64_t index) const;
    /// The same for each point of time of the data.
    std::vector<double> predictions(const SeriesEquation& equation) const;
    /// The value of the equation's series less the prediction.
    double residual(const SeriesEquation& equation, std::int64_t index) const;

private:
    SeriesTable _table;
    std::vector<Eigen::Index>
        _columns; ///< of the table by series; -1 for a series without a column
};

} // namespace EmbeddedHV
