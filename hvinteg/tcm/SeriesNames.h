#pragma once

#include <string>
#include <vector>

class CFMetaData;

/// How a model knows its series. A viewer names a series by its values of the dimension fields, one
/// for each, and by a metric. In the model it is told by its id: the codes of these values and of
/// the metric, as in "4-1".

/// The id; an empty one of no codes.
std::string BuildSeriesIDStr(const std::vector<std::string>& codes);

/// The id of a series: `names` are its values and its metric, `metadata` those of GetMetaData.
/// Values are compared as their field has them: texts by their bytes, numbers by what they are.
/// False, with `seriesId` as it was, for a series that the model has never seen.
bool EncodeSeriesName(const std::vector<std::string>& names,
                      const std::vector<std::string>& dimFields, const CFMetaData& metadata,
                      std::string& seriesId);

/// Whether a series is a target of the model. False, with `isTarget` as it was, if the model does
/// not tell.
bool IsTargetSeries(const std::string& modelPath, const std::string& metricName,
                    const std::vector<std::string>& dimFields,
                    const std::vector<std::string>& dimValues, bool& isTarget);
