#include "CFValue.h"

#include <algorithm>

int CFValue::GetIndex(const CFDatum& datum, const std::vector<CFValue>& values)
{
    const auto found = std::find_if(values.begin(), values.end(), [&](const CFValue& value) {
        return value.GetDatum().Compare(datum) == 0;
    });
    return found == values.end() ? -1 : static_cast<int>(found - values.begin());
}
