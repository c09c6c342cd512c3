#pragma once

#include <string>
#include <vector>

#include "RowDataIterator.h"

/// The field that marks rows after the data, and the suffix of the field of a metric's predictions.
inline constexpr const char* kFutureFlag = "$FutureFlag";
inline constexpr const char* kPredictedEnding = "_predicted";

/// Reads actual and predicted values of a metric from the rows that scoring wrote. The rows are
/// borrowed.
class ScoredRows
{
public:
    ScoredRows(EmbeddedHV::RowDataIterator& rows, const std::string& metricName);

    /// Whether rows have the flag and actual values.
    bool hasActual() const { return _flag >= 0 && _actual >= 0; }
    bool hasPredicted() const { return _predicted >= 0; }

    /// Appends a value for each row from `firstRecord`, counted from 1, to the row before
    /// `endRecord` or the last row: the predicted value of a row after the data, otherwise the
    /// actual value. Returns false if a value cannot be read; the values read so far remain.
    bool read(int firstRecord, int endRecord, std::vector<double>& actualValues,
              std::vector<double>& predictedValues);

private:
    bool skipTo(int record);
    bool next();
    /// Null for a missing field or value.
    const void* valueOf(int field, unsigned long long& length);
    bool readFlag(bool& isFuture);
    bool appendValue(int field, std::vector<double>& values);

    EmbeddedHV::RowDataIterator& _rows;
    // -1 for a missing field.
    int _flag = -1;
    int _actual = -1;
    int _predicted = -1;
};
