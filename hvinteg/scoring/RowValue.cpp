#include "scoring/RowValue.h"

#include <cstdint>
#include <cstring>
#include <string>

#include "HostConversions.h"
#include "IMCVariable.h"
#include "RowDataIterator.h"

namespace {

constexpr double kSecondsPerDay = 86400.0;

template <typename Number>
Number numberAt(const void* place)
{
    Number number{};
    std::memcpy(&number, place, sizeof number);
    return number;
}

/// A point of time on the host's scale.
double hostMoment(double value, double unit, double missing)
{
    return value == missing ? missing : GetBaseDateNumber() + value * unit;
}

} // namespace

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
        value = hostMoment(numberAt<double>(place), kSecondsPerDay, missing);
        break;
    case IMCVariable::kStoredTimestamp:
        value = hostMoment(numberAt<double>(place), 1.0, missing);
        break;
    default:
        value = numberAt<double>(place);
        break;
    }
}
