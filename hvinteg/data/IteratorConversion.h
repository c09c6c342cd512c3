#pragma once

#include <string>

#include "support/HvintegExport.h"

class HVDebug;
class HVRawDataIterator;
class HVRunner;

/// Copy the cases of an iterator to a file of the engine, so that a procedure can read that file in
/// the iterator's place. It is a debugging option: the environment variable HV_STAT_ITER_OPT says
/// whether, and is read once per process:
///
///     1   to an HVBF file
///     2   to a CSV file
///     3   to a SAV file without a password
///
/// and nothing else asks for a copy. Of the thread that the runner belongs to. What the engine
/// throws while the job runs is a failure of the copy, and what it throws before passes; the runner
/// can take the next job in any case.

/// Copies to a file and a data model document, both host paths. `debug` may be null; else it
/// receives a line before and one after the copy. The result is the option; 0 if no copy is wanted
/// or the copy failed; -1 without an iterator, or without a runner where a copy is wanted.
HVINTEG_EXPORT int IteratorConversion(HVRawDataIterator* iterator, HVRunner* runner, HVDebug* debug,
                                      const std::string& dataPath, const std::string& modelPath);

/// The same with new file names in a directory, whose path ends in a separator. The paths are set
/// only if the copy was made; -1 stands only for a missing iterator.
HVINTEG_EXPORT int IteratorConversion(HVRawDataIterator* iterator, HVRunner* runner, HVDebug* debug,
                                      const std::string& directory, std::string& dataPath,
                                      std::string& modelPath);
