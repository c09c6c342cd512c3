#pragma once

#include "CFField.h"

/// The field of a column as a dataset serves it to a job. `told` is the field as the file has it,
/// `known` as the variable's format describes it. A file stores numbers instead of dates and times
/// where no date or time of a job holds the values. Of these, dates with a time of day are served
/// as timestamps, and durations as numbers of seconds.
CFField servedField(const CFField& told, const CFField& known);

/// What the file declares of the field, on the scale on which `served` is served.
CFField declaredField(const CFField& told, const CFField& served);
