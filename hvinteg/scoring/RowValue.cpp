#include "scoring/RowValue.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>

#include "HostConversions.h"
#include "IMCVariable.h"
#include "RowDataIterator.h"
#include "base/CivilTime.h"

namespace {

template <typename Number>
Number numberAt(const void* place)
{
    Number number{};
    std::memcpy(&number, place, sizeof number);
    return number;
}

/// A point in time on the host's scale. The storage of the column determines the unit.
double hostMoment(double value, const InputColumn& input, double missing)
{
    if (value == missing)
        return missing;
    const bool isMoment = input.storage == IMCVariable::kStoredTimestamp;
    if (input.columnStorage == CFField::Timestamp) {
        const double seconds =
            isMoment ? value : std::floor(value / base::kSecondsPerDay) * base::kSecondsPerDay;
        return GetBaseDateNumber() + seconds;
    }
    const bool countsSeconds = isMoment && input.columnStorage != CFField::Date;
    return GetBaseDateNumber() + value * (countsSeconds ? 1.0 : base::kSecondsPerDay);
}

} // namespace

bool canRead(const InputColumn& input)
{
    const bool hasDay =
        input.columnStorage == CFField::Date || input.columnStorage == CFField::Timestamp;
    switch (input.storage) {
    case IMCVariable::kStoredString:
        return input.columnStorage == CFField::String;
    case IMCVariable::kStoredDate:
    case IMCVariable::kStoredTimestamp:
        return input.columnStorage != CFField::String && input.columnStorage != CFField::Time;
    default:
        return input.columnStorage != CFField::String && !hasDay;
    }
}

void readInput(EmbeddedHV::RowDataIterator& rows, const InputColumn& input, double missing,
               Value& value)
{
    void* place = nullptr;
    unsigned long long length = 0;
    rows.getRecordValue(input.column, place, length);
    const bool isText = input.storage == IMCVariable::kStoredString;
    if (isText) {
        value = place ? std::string(static_cast<const char*>(place), length) : std::string();
        return;
    }
    if (place == nullptr) {
        value = missing;
        return;
    }
    switch (input.storage) {
    case IMCVariable::kStoredInteger:
        value = static_cast<int>(numberAt<std::int32_t>(place));
        break;
    case IMCVariable::kStoredDate:
    case IMCVariable::kStoredTimestamp:
        value = hostMoment(numberAt<double>(place), input, missing);
        break;
    default:
        value = numberAt<double>(place);
        break;
    }
}
