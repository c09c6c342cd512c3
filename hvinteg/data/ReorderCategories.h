#pragma once

#include <vector>

#include "CFField.h"
#include "CFMetaData.h"
#include "CFValue.h"
#include "support/HvintegExport.h"

/// Functions that sort the categories of fields in ascending order of CFDatum::Compare, with an
/// optional reference category at the end. Values and value labels of equal length are pairs: they
/// are sorted by the values and stay pairs. Single missing values are sorted separately. A
/// continuous field keeps its order. A reference whose datum is null counts as no reference. They
/// report no errors. Any thread.

/// Sets `out` to `in` with sorted categories. Both may be the same object. `reference` may be null.
/// `notFound` may be null; otherwise it receives whether the reference is missing among the
/// categories.
HVINTEG_EXPORT void ReorderCategories(CFField& out, const CFField& in, const CFValue* reference,
                                      bool* notFound);

/// Sorts the fields with the given indices, the i-th with the i-th reference; further fields have
/// no reference. An empty list of fields means all fields, without references. `references` may be
/// null. `notFound` may be null; otherwise it receives the indices of fields whose reference is not
/// a category.
HVINTEG_EXPORT void ReorderCategories(CFMetaData& metadata, const std::vector<int>& fields,
                                      const std::vector<CFValue>* references,
                                      std::vector<int>* notFound);

/// Sorts all fields, the i-th with the i-th reference.
HVINTEG_EXPORT void ReorderCategories(CFMetaData& metadata, const std::vector<CFValue>* references,
                                      std::vector<int>* notFound);
