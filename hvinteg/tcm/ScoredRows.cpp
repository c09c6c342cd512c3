#include "tcm/ScoredRows.h"

#include <cstdint>

#include "CFMetaData.h"
#include "HostConversions.h"

namespace {

using EmbeddedHV::RowDataIterator;

/// A value of 4 bytes is an integer, any other one a double.
double numberOf(const void* value, unsigned long long length)
{
    return length == sizeof(std::int32_t) ? *static_cast<const std::int32_t*>(value)
                                          : *static_cast<const double*>(value);
}

} // namespace

ScoredRows::ScoredRows(RowDataIterator& rows, const std::string& metricName) : _rows(rows)
{
    const CFMetaData model(rows.getDataModel());
    _flag = model.GetFieldIndex(kFutureFlag);
    _actual = model.GetFieldIndex(metricName);
    _predicted = model.GetFieldIndex(metricName + kPredictedEnding);
}

bool ScoredRows::read(int firstRecord, int endRecord, std::vector<double>& actualValues,
                      std::vector<double>& predictedValues)
{
    int record = firstRecord > 1 ? firstRecord : 1;
    bool isThere = skipTo(record);
    for (; isThere && record < endRecord; ++record) {
        bool isFuture = false;
        if (!readFlag(isFuture) || !(isFuture ? appendValue(_predicted, predictedValues)
                                              : appendValue(_actual, actualValues)))
            return false;
        isThere = next();
    }
    return true;
}

bool ScoredRows::skipTo(int record)
{
    bool isThere = next();
    for (int passed = 1; isThere && passed < record; ++passed)
        isThere = next();
    return isThere;
}

bool ScoredRows::next()
{
    return _rows.nextRecord() == RowDataIterator::RecordAvailable;
}

const void* ScoredRows::valueOf(int field, unsigned long long& length)
{
    void* value = nullptr;
    if (field < 0 || _rows.getRecordValue(static_cast<unsigned long long>(field), value, length) !=
                         RowDataIterator::RecordAvailable)
        return nullptr;
    return value;
}

bool ScoredRows::readFlag(bool& isFuture)
{
    unsigned long long length = 0;
    const void* const value = valueOf(_flag, length);
    isFuture = value != nullptr && numberOf(value, length) != 0;
    return value != nullptr;
}

bool ScoredRows::appendValue(int field, std::vector<double>& values)
{
    unsigned long long length = 0;
    const void* const value = valueOf(field, length);
    if (value != nullptr)
        values.push_back(NumericStorageCFToStat(*static_cast<const double*>(value), CFField::Real));
    return value != nullptr;
}
