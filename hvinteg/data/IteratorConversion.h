#pragma once

#include <string>

#include "support/HvintegExport.h"

class HVDebug;
class HVRawDataIterator;
class HVRunner;

/// Copies of an iterator's cases to a file of the engine, which a procedure can read instead. This
/// is a debugging option. The environment variable HV_STAT_ITER_OPT requests it and is read once
/// per process:
///
///     1   to an HVBF file
///     2   to a CSV file
///     3   to a SAV file without a password
///
/// Any other value requests no copy. Uses the runner's thread. If the engine throws while the job
/// runs, the copy fails. Earlier exceptions are passed on. The runner can take the next job in all
/// cases.

/// Copies to a data file and a data model file. Both are host paths. `debug` may be null; otherwise
/// it receives a line before and after the copy. Returns the option; 0 if no copy is requested or
/// the copy failed; -1 if the iterator is null, or if the runner is null and a copy is requested.
HVINTEG_EXPORT int IteratorConversion(HVRawDataIterator* iterator, HVRunner* runner, HVDebug* debug,
                                      const std::string& dataPath, const std::string& modelPath);

/// Copies to a data file and a data model file with new names in `directory`, which ends in a
/// separator. Sets the paths only if the copy succeeded. Returns the option; 0 if no copy is
/// requested or the copy failed; -1 only if the iterator is null.
HVINTEG_EXPORT int IteratorConversion(HVRawDataIterator* iterator, HVRunner* runner, HVDebug* debug,
                                      const std::string& directory, std::string& dataPath,
                                      std::string& modelPath);
