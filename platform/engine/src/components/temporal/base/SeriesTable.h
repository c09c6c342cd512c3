#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <Eigen/Core>

#include "datafile/Duck.h"
#include "runtime/DataModel.h"

namespace EmbeddedHV {

/// The field of prepared records that numbers their points of time: 0 is the first point that the
/// model was trained on.
inline constexpr const char* kTimeIndexField = "$TimeIndex";

/// Series of values at equal intervals, as the preparation makes them. A value that is missing is
/// not-a-number.
struct SeriesTable
{
    std::int64_t firstIndex = 0;  ///< the number of the first point of time
    std::vector<std::string> ids; ///< of the columns
    Eigen::MatrixXd values;       ///< a row a point of time, a column a series
};

/// The fields of the records that a table of series becomes: the number of the point of time and a
/// real field for each series.
Fields fieldsOfSeries(const std::vector<std::string>& ids);

/// Collects prepared records into a table of series.
class SeriesReader
{
public:
    /// `fields` are those of the records. Throws JobError, with `component` before the message, if
    /// they are not those of prepared records.
    SeriesReader(const Fields& fields, std::string component);

    /// The next records, in their order. Throws JobError unless their points of time follow each
    /// other.
    void take(duck::Chunk& chunk);
    /// The table; the reader is empty then.
    SeriesTable finish();

private:
    void takeIndexes(duck::Chunk& chunk);
    void takeSeries(duck::Chunk& chunk, std::size_t series);

    std::string _component;
    std::size_t _indexColumn = 0;
    std::vector<std::size_t> _columns; ///< of the series
    std::vector<std::vector<double>> _values;
    std::int64_t _points = 0;
    SeriesTable _table;
};

} // namespace EmbeddedHV
