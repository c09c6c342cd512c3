#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "DataFileNames.h"
#include "components/descriptives/model/CountSummary.h"
#include "components/descriptives/model/MissingPattern.h"
#include "components/descriptives/model/OutlierSummary.h"
#include "components/descriptives/model/PairStatistic.h"
#include "runtime/DataModel.h"

namespace EmbeddedHV {

/// The moments and quartiles of a numeric field. A statistic that is not defined is empty.
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

/// The frequency of a value: the number of records, and the sum of their weights.
struct ValueCount
{
    CFDatum value;
    std::int64_t records = 0;
    double weight = 0;
};

/// The number of records, or the sum of their weights, in bins of equal width. Dates and times are
/// in seconds.
struct Histogram
{
    std::vector<double> edges;  ///< ascending; one more than counts
    std::vector<double> counts; ///< a value on an edge belongs to the bin that begins there
};

/// The value below which this percentage of the values is; empty if it is not defined.
struct Percentile
{
    double percent = 0;
    std::optional<double> value;
};

/// The statistics of one field.
struct FieldSummary
{
    explicit FieldSummary(CFField described) : field(std::move(described)) {}

    CFField field; ///< as in the data model, with its distinct values
    std::int64_t valid = 0;
    std::int64_t missing = 0;
    double validWeight = 0; ///< the sum of the weights, or the count if there is no weight
    double missingWeight = 0;
    /// The least and the greatest value in the database's text form. Empty for texts and if there
    /// is no value.
    std::string minimum;
    std::string maximum;
    NumericSummary numeric;
    std::vector<Percentile> percentiles; ///< those that are requested, ascending
    /// Empty if outliers are not requested or not defined.
    std::optional<OutlierSummary> outliers;
    std::vector<Bin> bins; ///< of a continuous number, if they are requested
    std::optional<ZeroInflation> zeroInflation;
    std::optional<Duration> duration;
    std::vector<std::vector<CFDatum>> mergedValues; ///< groups of values, if they are requested
    /// Empty if there are more distinct values than the settings allow.
    std::optional<std::int64_t> distinct;
    /// In the order of the values. For text fields; for a result document, for all categorical
    /// fields.
    std::vector<ValueCount> distribution;
    /// The values in the data that are declared missing; null for records without a value.
    std::vector<ValueCount> missingValues;

    // For a result document only.
    std::optional<double> least; ///< the minimum as a number; dates and times in seconds
    std::optional<double> greatest;
    std::optional<Histogram> histogram;
};

/// The statistics of a data source.
struct DataSummary
{
    std::int64_t records = 0; ///< records that count
    std::optional<std::string> weightField;
    double weight = 0;
    std::int64_t leftOut = 0; ///< records without a valid weight; only for a result document
    std::vector<FieldSummary> fields;
    std::vector<PairStatistic> pairs; ///< those that are requested
    std::optional<MissingPatterns> missingPatterns;
};

/// The statistics of each group of records, by number from 1; of all records if there are no
/// groups. All have the same fields.
using GroupSummaries = std::vector<DataSummary>;

Fields fieldsOf(const DataSummary& summary);

bool isNumber(const CFField& field);
/// Whether its values are dates, times or timestamps.
bool isMoment(const CFField& field);
bool isText(const CFField& field);
/// Whether its values are categories rather than measurements.
bool isCategorical(const CFField& field);

} // namespace EmbeddedHV
