#pragma once

#include <vector>

#include "CFField.h"
#include "CFMetaData.h"
#include "CFValue.h"
#include "support/HvintegExport.h"

/// Bring the categories of fields into the order that a procedure wants: ascending by
/// CFDatum::Compare, with the reference category, if there is one, at the end. Values and value
/// labels of one length are pairs, ordered by the values, and stay pairs; the single missing values
/// are ordered by themselves. A continuous field keeps its order. A reference whose datum is null
/// is none. All on any thread.

/// `out` becomes `in` with its categories reordered; the two may be the same object. `reference`
/// may be null, and so may `notFound`, which tells whether the reference is no category.
HVINTEG_EXPORT void ReorderCategories(CFField& out, const CFField& in, const CFValue* reference,
                                      bool* notFound);

/// Reorders the fields at some places, the i-th of them with the i-th reference; fields without a
/// reference have none. An empty list of places stands for all fields, without references.
/// `notFound`, if given, receives the places of fields whose reference is no category.
HVINTEG_EXPORT void ReorderCategories(CFMetaData& metadata, const std::vector<int>& fields,
                                      const std::vector<CFValue>* references,
                                      std::vector<int>* notFound);

/// Reorders all fields, the i-th with the i-th reference.
HVINTEG_EXPORT void ReorderCategories(CFMetaData& metadata, const std::vector<CFValue>* references,
                                      std::vector<int>* notFound);
