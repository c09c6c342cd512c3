#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "DataFileNames.h"
#include "runtime/DataModel.h"

namespace EmbeddedHV {

/// The moments and quartiles of a numeric field; what the values do not determine is absent.
struct NumericSummary
{
    std::optional<double> mean;
    std::optional<double> variance;
    std::optional<double> standardDeviation;
    std::optional<double> skewness;
    std::optional<double> kurtosis;
    std::optional<double> firstQuartile;
    std::optional<double> median;
    std::optional<double> thirdQuartile;
};

/// How often a value occurs: records, and the sum of their weights.
struct ValueCount
{
    CFDatum value;
    std::int64_t records = 0;
    double weight = 0;
};

/// What is known of the values of one field.
struct FieldSummary
{
    explicit FieldSummary(CFField described) : field(std::move(described)) {}

    CFField field; ///< as the data model tells it, with its distinct values
    std::int64_t valid = 0;
    std::int64_t missing = 0;
    double validWeight = 0; ///< the sum of the weights; the count without a weight
    double missingWeight = 0;
    /// The least and the greatest value as the database writes them; empty for texts and if there
    /// is no value.
    std::string minimum;
    std::string maximum;
    NumericSummary numeric;
    /// Nothing if there are more values than are asked for.
    std::optional<std::int64_t> distinct;
    std::vector<ValueCount> distribution; ///< texts only, in their order
};

/// What is known of a data source.
struct DataSummary
{
    std::int64_t records = 0; ///< those that count
    std::optional<std::string> weightField;
    double weight = 0;
    std::vector<FieldSummary> fields;
};

} // namespace EmbeddedHV
