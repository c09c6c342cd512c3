#pragma once

#include <string>

#include "tcm/HVForecast.h"

namespace EmbeddedHV {
class RowDataIterator;
}

/// Reads all rows that the scoring of one series left: points of time with the actual value, the
/// predicted one and its bounds. False for rows without one of these fields, and for a value that
/// cannot be read.
bool readForecast(EmbeddedHV::RowDataIterator& rows, const std::string& metricName,
                  HVSeriesForecast& forecast);
