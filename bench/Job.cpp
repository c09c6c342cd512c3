#include "Job.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "CFAppHost.h"
#include "runner/HVProgressListener.h"
#include "runner/HVRunner.h"
#include "support/Paths.h"

namespace bench {

std::string engineUrl(const std::string& path)
{
    return NormalizeHvlPathU(path, "file");
}

int engineThreads()
{
    CFAppHost::update();
    return std::min(CFAppHost::getInstance()->getMaxCompThreads(), 4);
}

void runJob(HVRunner& runner, const std::string& job, HVStatDataIterator* rows)
{
    runner.prepareHVLJob(job);
    if (rows != nullptr)
        runner.addInputIterator(rows);
    if (!runner.execute()) {
        std::string id;
        std::string text;
        std::string detail;
        runner.getProgressListener()->hasError(id, text, detail);
        std::fprintf(stderr, "bench: the job failed: %s\n%s\n", text.c_str(), job.c_str());
        std::exit(1);
    }
    runner.cleanExecution();
}

} // namespace bench
