#include "support/ExtractionFolder.h"

#include "FileServices.h"
#include "support/Paths.h"
#include "support/Separators.h"

namespace {

// Empty if the path does not exist.
std::string resolvedDirectory(const std::string& path)
{
    std::string resolved;
    return ResolveFileSpecification(path, resolved) == 0 ? FormalizeFilePath(resolved, true)
                                                         : std::string();
}

} // namespace

ExtractionFolder::ExtractionFolder(const std::string& path)
    : _path(path), _resolvedPath(resolvedDirectory(path)), _lastInside(path)
{
}

bool ExtractionFolder::admit(const std::string& name)
{
    std::string path = pathOf(name);
    // A file and a folder of the same name are duplicates.
    trimTrailingSeparators(path);
    std::string directory;
    SeparateFileName(path, directory);
    return isInside(directory) && _admitted.insert(path).second;
}

bool ExtractionFolder::isInside(const std::string& directory)
{
    if (directory == _lastInside)
        return true;
    const std::string resolved = resolvedDirectory(directory);
    if (_resolvedPath.empty() || !resolved.starts_with(_resolvedPath))
        return false;
    _lastInside = directory;
    return true;
}
