#pragma once

#include <string>

class HVRunner;
class HVStatDataIterator;

namespace bench {

/// The engine's spelling of a path.
std::string engineUrl(const std::string& path);

/// The number of threads that the engine runs a query on.
int engineThreads();

/// A job from prepareHVLJob to cleanExecution. One that fails ends this process with its error.
void runJob(HVRunner& runner, const std::string& job, HVStatDataIterator* rows = nullptr);

} // namespace bench
