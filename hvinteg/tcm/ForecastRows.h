#pragma once

#include <string>

#include "tcm/HVForecast.h"

namespace EmbeddedHV {
class RowDataIterator;
}

/// Reads all rows that the scoring of one series wrote: points of time with actual value, predicted
/// value and bounds. Returns false if one of these fields is missing or a value cannot be read.
bool readForecast(EmbeddedHV::RowDataIterator& rows, const std::string& metricName,
                  HVSeriesForecast& forecast);
