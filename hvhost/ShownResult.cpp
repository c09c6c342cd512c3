#include "ShownResult.h"

#include "CommandFault.h"
#include "OutputPath.h"
#include "StandardStreams.h"
#include "datafile/Fault.h"
#include "datafile/PendingFile.h"

ShownResult::ShownResult(const std::string& path, bool mayReplace, const InterruptWatch& watch)
    : _path(path.empty() || path == kStandardStream ? std::string() : outputPath(path, mayReplace)),
      _watch(watch)
{
}

void ShownResult::deliver(const std::string& text) const
{
    if (!isFile()) {
        printToStandardOutput(text, _watch);
        return;
    }
    try {
        datafile::PendingFile file(_path, "");
        file.write(text);
        file.commit();
    } catch (const datafile::Fault& fault) {
        throw CommandFault(ExitStatus::JobFailed, fault.text());
    }
}
