#pragma once

#include <string>
#include <vector>

#include "RowDataIterator.h"

/// What scoring calls its fields: whether a row lies beyond the data, and, behind the name of a
/// metric, its predicted value.
inline constexpr const char* kFutureFlag = "$FutureFlag";
inline constexpr const char* kPredictedEnding = "_predicted";

/// Reads actual and predicted values of a metric from the rows that scoring left. The rows are
/// borrowed.
class ScoredRows
{
public:
    ScoredRows(EmbeddedHV::RowDataIterator& rows, const std::string& metricName);

    /// Whether rows tell what they are, and have an actual value.
    bool hasActual() const { return _flag >= 0 && _actual >= 0; }
    bool hasPredicted() const { return _predicted >= 0; }

    /// Appends a value for each row from `firstRecord`, counted from 1, to the one before
    /// `endRecord`, or to the last one there is: a predicted value for one that lies beyond the
    /// data, an actual one otherwise. False, with what was read until then, for a value that cannot
    /// be read.
    bool read(int firstRecord, int endRecord, std::vector<double>& actualValues,
              std::vector<double>& predictedValues);

private:
    bool skipTo(int record);
    bool next();
    /// Null if there is none.
    const void* valueOf(int field, unsigned long long& length);
    bool readFlag(bool& isFuture);
    bool appendValue(int field, std::vector<double>& values);

    EmbeddedHV::RowDataIterator& _rows;
    // -1 for one that is not there.
    int _flag = -1;
    int _actual = -1;
    int _predicted = -1;
};
