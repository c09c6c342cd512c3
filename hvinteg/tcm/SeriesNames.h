#pragma once

#include <string>
#include <vector>

class CFMetaData;

/// Names and ids of series. A viewer names a series by its values of the dimension fields, one for
/// each field, and by a metric. The model uses an id: the codes of these values and of the metric,
/// for example "4-1".

/// Joins codes to an id; empty without codes.
std::string BuildSeriesIDStr(const std::vector<std::string>& codes);

/// Finds the id of a series. `names` are its values and its metric, `metadata` comes from
/// GetMetaData. Values of text fields are compared by their bytes, others as numbers. Returns
/// false, and leaves `seriesId` unchanged, if the model does not have the series.
bool EncodeSeriesName(const std::vector<std::string>& names,
                      const std::vector<std::string>& dimFields, const CFMetaData& metadata,
                      std::string& seriesId);

/// Finds whether a series is a target of the model. Returns false, and leaves `isTarget` unchanged,
/// if the model is damaged or does not have the series.
bool IsTargetSeries(const std::string& modelPath, const std::string& metricName,
                    const std::vector<std::string>& dimFields,
                    const std::vector<std::string>& dimValues, bool& isTarget);
