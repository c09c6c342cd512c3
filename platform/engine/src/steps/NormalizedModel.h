#pragma once

#include "DataFileNames.h"
#include "datafile/FieldNames.h"

namespace EmbeddedHV {

/// The fields in the form in which two descriptions of the same data are the same, and that a
/// reader can use without rules of its own: no storage or measure is left open, values are of the
/// kind of their field, each stands once, and they are in order. It follows from the description
/// alone, never from the records, so that it can be had without running the job.
Fields normalizedModel(Fields fields);

} // namespace EmbeddedHV
