#pragma once

#include "DataFileNames.h"
#include "datafile/Fault.h"

namespace EmbeddedHV {

/// A fault in a job: what becomes ExecutionListener::onError, or an Exception out of prepare. The
/// ids stand in ErrorIds.h and docs/hvl.md; the text names the step and the thing.
using JobError = datafile::Fault;

} // namespace EmbeddedHV
