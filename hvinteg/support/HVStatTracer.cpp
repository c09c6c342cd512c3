#include "support/HVStatTracer.h"

#include <cstdlib>

#include "ExtNameStr.h"
#include "FileServices.h"
#include "HostLines.h"
#include "support/Conversions.h"
#include "support/DirectorySpecific.h"
#include "support/Files.h"
#include "support/Paths.h"

namespace {

/// Returns an empty text for a variable that is not set.
std::string environmentValue(const char* name)
{
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// The host takes all arguments by address. Both ones are layout numbers.
void showInViewer(const std::string& line)
{
    const int one = 1;
    const int length = static_cast<int>(line.size());
    DSPLNS(&one, &one, line.c_str(), &length);
}

} // namespace

HVStatTracer::HVStatTracer()
{
    _tracing = init();
}

HVStatTracer::~HVStatTracer() = default;

bool HVStatTracer::init()
{
    const std::string directory = environmentValue("HV_STAT_DEBUG_DIR");
    if (!directory.empty())
        openRoot(directory);
    const std::string print = environmentValue("HV_STAT_DEBUG_PRINT");
    _printToViewer = print == "YES" || print == "1";
    const std::string count = environmentValue("HV_STAT_DEBUG_MAXCOUNT");
    if (!count.empty())
        _maxDirCount = String2Integer(count);
    return newTraceDir();
}

void HVStatTracer::openRoot(const std::string& directory)
{
    // An existing directory is accepted.
    MakeDir(directory);
    const DirectorySpecific root(directory);
    if (!root.Exists())
        return;
    _root = root.ExpandPath();
    _rootUsable = !root.ReadOnly();
}

bool HVStatTracer::takeDirectory()
{
    // All processes share the root and append to one log.
    if (_maxDirCount == 0) {
        _dir = _root;
        return true;
    }
    const std::string prefix = JoinFilePath(_root, "hvtrace_");
    for (std::int32_t number = 0; number < _maxDirCount; ++number) {
        // Making a directory is atomic, so no two processes take the same one.
        const std::string candidate = prefix + Integer2String(number);
        if (MakeDir(candidate)) {
            _dir = candidate;
            return true;
        }
    }
    return false;
}

bool HVStatTracer::newTraceDir()
{
    if (!_rootUsable || !takeDirectory())
        return _tracing;
    // Clear the error state, or the next log would lose every line.
    if (_log.is_open())
        _log.close();
    _log.clear();
    ExtNameStr::Open(_log, ExtNameStr(JoinFilePath(_dir, "hvinteg.log")),
                     std::ios::out | std::ios::binary | std::ios::app);
    _tracing = true;
    return _tracing;
}

bool HVStatTracer::addLog(const std::string& line)
{
    if (_tracing)
        // Flush each line, so that the log is complete up to a crash.
        _log << line.c_str() << '\n' << std::flush;
    if (_printToViewer)
        showInViewer(line);
    return _tracing;
}

void HVStatTracer::writeFile(const std::string& text, const std::string& fileName,
                             std::ios::openmode mode)
{
    std::ofstream file;
    ExtNameStr::Open(file, ExtNameStr(JoinFilePath(_dir, fileName)), mode);
    file << text.c_str();
}

bool HVStatTracer::write(const std::string& text, const std::string& fileName)
{
    if (!_tracing)
        return false;
    if (text.empty())
        ExtNameStr::remove(ExtNameStr(JoinFilePath(_dir, fileName)));
    else
        writeFile(text, fileName, std::ios::out | std::ios::binary | std::ios::trunc);
    return _tracing;
}

bool HVStatTracer::append(const std::string& text, const std::string& fileName)
{
    if (_tracing)
        writeFile(text, fileName, std::ios::out | std::ios::binary | std::ios::app);
    return _tracing;
}

std::string HVStatTracer::newValidFileName(const std::string& extension, const std::string& label,
                                           const std::string& name, bool unique)
{
    std::string base = label + (label.empty() || name.empty() ? "" : "_") + name;
    if (base.empty())
        base = "unname";
    const std::string tail = extension.empty() ? "" : "." + extension;
    std::string candidate = base + tail;
    bool exists = unique;
    for (int number = 0; exists; ++number) {
        candidate = base;
        if (number > 0)
            candidate += "_" + Integer2String(number);
        candidate += tail;
        exists = false;
        ValidateFileSpecification(JoinFilePath(_dir, candidate), exists);
    }
    return candidate;
}
