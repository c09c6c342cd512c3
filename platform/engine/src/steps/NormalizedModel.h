#pragma once

#include "DataFileNames.h"
#include "datafile/FieldNames.h"

namespace EmbeddedHV {

/// Normalizes the metadata of fields. Equal data then have equal descriptions, and readers need no
/// rules of their own: every field has a storage and a measure, values have the type of their
/// field, are unique and sorted. The result depends only on the metadata, not on the records, so it
/// is available without running the job.
Fields normalizedModel(Fields fields);

} // namespace EmbeddedHV
