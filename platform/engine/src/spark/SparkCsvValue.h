#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "datafile/CsvValue.h"
#include "dialect/ValueType.h"

namespace EmbeddedHV {

/// SQL for the texts of CSV fields, with the rules of datafile::kindOf. `column` is the name of a
/// column of texts.

/// The bit of a kind. A missing value has none.
std::int64_t bitOf(datafile::CsvKind kind);
/// A query of the kinds that occur in columns of texts: a record for each column, with its place in
/// the list and the sum of the bits, both as texts. No record if there are no records. `records` is
/// what follows FROM.
std::string csvKindsOf(const std::vector<std::string>& columns, const std::string& records);
/// Whether a text is a value of the type. False for a missing value.
std::string csvFits(const std::string& column, ValueType type);
/// The value of a text that fits.
std::string csvValue(const std::string& column, ValueType type);

} // namespace EmbeddedHV
