#include "hvhost/map/ArchiveProblem.h"

#include <strings.h>

#include "support/HVSimpleFile.h"
#include "support/ZipReader.h"

namespace {

constexpr const char* kEnding = ".zip";
constexpr std::size_t kEndingSize = 4;

bool isArchive(const std::string& path)
{
    return path.size() >= kEndingSize &&
           strcasecmp(path.c_str() + path.size() - kEndingSize, kEnding) == 0;
}

} // namespace

std::string archiveProblem(const std::string& path)
{
    if (!isArchive(path))
        return {};
    ZipReader archive(path);
    if (!archive.IsOpen())
        return "this is not a zip archive, or it is damaged";
    const HVSimpleFile scratch("mapentry", false, true);
    std::string name;
    bool isDirectory = false;
    for (bool found = archive.GetFirst(name, isDirectory); found;
         found = archive.GetNext(name, isDirectory))
        if (!isDirectory && !archive.ExportFile(scratch.GetGenericPath()))
            return "the archive is not unpacked, since its entry \"" + name +
                   "\" is damaged, too large, or has a name that may lead out of the folder";
    return {};
}
