#pragma once

#include <cstdint>
#include <string>

#include "datafile/CsvValue.h"
#include "dialect/ValueType.h"

namespace EmbeddedHV {

/// SQL for the texts of CSV fields, with the rules of datafile::kindOf. `column` is the name of a
/// column of texts.

/// The bit of a kind. A missing value has none.
std::int64_t bitOf(datafile::CsvKind kind);
/// The bit of the kind of a text.
std::string csvKindOf(const std::string& column);
/// Whether a text is a value of the type. False for a missing value.
std::string csvFits(const std::string& column, ValueType type);
/// The value of a text that fits.
std::string csvValue(const std::string& column, ValueType type);

} // namespace EmbeddedHV
