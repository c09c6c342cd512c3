#pragma once

#include <cstdint>

/// Kinds of job builders. Callers store the numbers.
enum HVFunction : std::int32_t
{
    GenericFunction = 0,
    ReadFunction = 1,
    WriteFunction = 2,
    DataModelBuilderFunction = 3,
    UpdateDataModelFunction = 4,
    AggregateFunction = 5,
    FilterFieldsFunction = 6,
    UnionFunction = 7,
    JoinFunction = 8,
    DeriveFieldFunction = 9,
    ReclassifyFieldFunction = 10,
    FilterRecordsFunction = 11,
    BalanceRecordsFunction = 12,
    ReprojectionFunction = 13
};
