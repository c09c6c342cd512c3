#pragma once

#include "DataFileNames.h"
#include "datafile/Fault.h"

namespace EmbeddedHV {

/// An error of a job. It is reported through ExecutionListener::onError. ErrorIds.h and docs/hvl.md
/// list the ids. The text names the step and what is wrong.
using JobError = datafile::Fault;

} // namespace EmbeddedHV
