#pragma once

#include <cstddef>
#include <vector>

#include "components/statistics/AssociationTests.h"

namespace EmbeddedHV {

/// Merges the rows of a table whose distributions over the columns do not differ significantly, and
/// returns the numbers of the rows in each group, in the order of their first rows. As long as the
/// most similar two groups have a chi-squared test with p above 0.05, they become one. With
/// `ordered`, only neighbours are merged. The time is cubic in the number of rows.
///
/// G. V. Kass, "An exploratory technique for investigating large quantities of categorical data",
/// Applied Statistics 29, 1980, 119-127; without its step that splits merged groups again.
std::vector<std::vector<std::size_t>> mergedRows(const Contingency& table, bool ordered);

} // namespace EmbeddedHV
