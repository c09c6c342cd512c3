#pragma once

#include "CFField.h"

/// The field of a column as a dataset serves it to a job. `told` is the field in the file. `known`
/// is the field as the variable's format describes it. If a job's dates or times cannot hold the
/// values, the file stores numbers instead. Such dates with a time of day are served as timestamps,
/// and durations as numbers of seconds.
CFField servedField(const CFField& told, const CFField& known);

/// The file's declarations about a field, on the scale of `served`.
CFField declaredField(const CFField& told, const CFField& served);
