#include "tcm/ForecastRows.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "CFMetaData.h"
#include "HostConversions.h"
#include "RowDataIterator.h"
#include "VexaCases.h"
#include "tcm/ScoredRows.h"

namespace {

using EmbeddedHV::RowDataIterator;

/// Reads the current row, field by field.
class PointReader
{
public:
    PointReader(RowDataIterator& rows, const CFMetaData& model, const std::string& metric)
        : _rows(rows), _flag(model.GetFieldIndex(kFutureFlag)),
          _values{model.GetFieldIndex(metric), model.GetFieldIndex(metric + kPredictedEnding),
                  model.GetFieldIndex(metric + "_lower"), model.GetFieldIndex(metric + "_upper")}
    {
        for (int field = 0; field < static_cast<int>(model.FieldCount()); ++field)
            if (field != _flag && std::ranges::find(_values, field) == _values.end())
                _times.push_back(field);
    }

    bool isComplete() const { return _flag >= 0 && std::ranges::min(_values) >= 0; }
    const std::vector<int>& times() const { return _times; }

    bool read(HVSeriesPoint& point)
    {
        for (const int field : _times)
            if (!readNumber(field, point.time.emplace_back()))
                return false;
        double flag = 0;
        if (!readNumber(_flag, flag))
            return false;
        point.isFuture = flag != 0;
        return readValue(_values[0], point.actual) && readValue(_values[1], point.predicted) &&
               readValue(_values[2], point.lower) && readValue(_values[3], point.upper);
    }

private:
    /// A value of 4 bytes is an integer. A missing value is null or the engine's missing number.
    bool readValue(int field, double& number)
    {
        void* value = nullptr;
        unsigned long long length = 0;
        if (_rows.getRecordValue(static_cast<unsigned long long>(field), value, length) !=
            RowDataIterator::RecordAvailable)
            return false;
        if (value == nullptr)
            number = kSystemMissing;
        else if (length == sizeof(std::int32_t))
            number = *static_cast<const std::int32_t*>(value);
        else
            number = NumericStorageCFToStat(*static_cast<const double*>(value), CFField::Real);
        return true;
    }

    /// Fails for a missing value.
    bool readNumber(int field, double& number)
    {
        return readValue(field, number) && number != kSystemMissing;
    }

    RowDataIterator& _rows;
    int _flag;
    std::array<int, 4> _values;
    std::vector<int> _times;
};

} // namespace

bool readForecast(RowDataIterator& rows, const std::string& metricName, HVSeriesForecast& forecast)
{
    const CFMetaData model(rows.getDataModel());
    PointReader reader(rows, model, metricName);
    if (!reader.isComplete())
        return false;
    for (const int field : reader.times())
        forecast.timeFields.push_back(*model.GetField(static_cast<std::size_t>(field)));
    while (rows.nextRecord() == RowDataIterator::RecordAvailable)
        if (!reader.read(forecast.points.emplace_back()))
            return false;
    return true;
}
