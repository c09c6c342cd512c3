#pragma once

#include "components/ComponentQueries.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// Tests whether integers from 0 on have as many zeros as a Poisson distribution with their mean m.
/// With p = exp(-m) and n0 zeros among W values, the score (n0 / p - W)^2 / (W (1 - p) / p - W m)
/// is chi squared with one degree of freedom. Fewer zeros than expected have a large score too.
/// Other fields get no test. The moments must be known. Throws JobError.
///
/// J. van den Broek, "A score test for zero inflation in a Poisson distribution", Biometrics 51,
/// 1995, 738-743.
void fillZeroInflation(const ComponentQueries& queries, const InputTable& table,
                       DataSummary& summary);

} // namespace EmbeddedHV
