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

/// How many records, or how much weight, lie in equally wide bins; dates and times in seconds.
struct Histogram
{
    std::vector<double> edges;  ///< ascending, one more than counts
    std::vector<double> counts; ///< a value on an edge counts in the bin that begins there
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
    /// In the order of the values: of texts, and for a result document of all categorical fields.
    std::vector<ValueCount> distribution;
    /// The values that occur and are declared missing; null for records without any value.
    std::vector<ValueCount> missingValues;

    // For a result document only.
    std::optional<double> least; ///< the minimum as a number, dates and times in seconds
    std::optional<double> greatest;
    std::optional<Histogram> histogram;
};

/// What is known of a data source.
struct DataSummary
{
    std::int64_t records = 0; ///< those that count
    std::optional<std::string> weightField;
    double weight = 0;
    std::int64_t leftOut = 0; ///< records whose weight does not count; for a result document only
    std::vector<FieldSummary> fields;
};

bool isNumber(const CFField& field);
/// Whether its values are dates, times or timestamps.
bool isMoment(const CFField& field);
bool isText(const CFField& field);
/// Whether its values name something rather than measure it.
bool isCategorical(const CFField& field);

} // namespace EmbeddedHV
