#include "PathFactory.h"

#include <atomic>
#include <cstdlib>

#include <dlfcn.h>

#include "files/HostPath.h"

namespace {

// The directory of this library in the operating system's spelling.
std::string libraryDirectory()
{
    Dl_info info{};
    if (!dladdr(reinterpret_cast<const void*>(&PathFactory::getPathInstance), &info) ||
        !info.dli_fname)
        return ".";
    const std::string file = info.dli_fname;
    const std::size_t separator = file.rfind('/');
    return separator == std::string::npos ? "." : file.substr(0, separator);
}

std::string installationDirectory()
{
    const char* home = std::getenv("VEXA_HOME");
    std::string path = home && *home ? home : libraryDirectory() + "/" HV_HOME_NAME;
    while (path.size() > 1 && (path.back() == '/' || path.back() == '\\'))
        path.pop_back();
    return path;
}

/// The host's own finder.
class HostPathFinder final : public PathFinder
{
public:
    std::string getInstallationPath() const override
    {
        const std::string path = hostSpelling(installationDirectory());
        return nameFromUtf8(path).value_or(path);
    }
};

std::atomic<PathFinder*> replacement = nullptr;

} // namespace

PathFinder* PathFactory::getPathInstance()
{
    static HostPathFinder own;
    PathFinder* other = replacement;
    return other ? other : &own;
}

void PathFactory::setPathInstance(PathFinder* finder)
{
    replacement = finder;
}
