#include "runtime/FileSpace.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "Container.h"
#include "EngineException.h"
#include "datafile/PrivateFolder.h"

namespace EmbeddedHV {
namespace {

constexpr std::string_view kFileProtocol = "file://";
constexpr const char* kPublicFolder = "/zor/public";

void makeFolder(const std::string& path, const char* purpose)
{
    std::error_code error;
    datafile::makeOwnersFolders(path, error);
    if (error)
        throw Exception("the engine cannot make its folder for " + std::string(purpose) + ", " +
                        path + ": " + error.message());
}

/// The path of a file URL. The URL form adds a slash to any path. A path that began with a slash
/// then has two; if it lost its own, it has none.
std::string pathOfUrl(std::string_view url)
{
    std::string_view path = url.substr(kFileProtocol.size());
    while (!path.empty() && path.front() == '/')
        path.remove_prefix(1);
    return hasDrive(path) ? std::string(path) : "/" + std::string(path);
}

} // namespace

std::string canonicalPath(const std::string& path)
{
    std::error_code error;
    // A write follows links, so two names of one file are the same destination.
    const auto canonical = std::filesystem::weakly_canonical(path, error);
    return error ? path : canonical.string();
}

FileSpace::FileSpace(const std::string& analyticRoot, const std::string& scratchFolder)
    : _publicFolder(nativePath(analyticRoot) + kPublicFolder),
      _scratchFolder(scratchFolder.empty() ? _publicFolder : nativePath(scratchFolder))
{
    makeFolder(_publicFolder, "jobs' files");
}

std::string FileSpace::resolve(const std::string& text,
                               const std::vector<const Container*>& containers) const
{
    for (const Container* container : containers)
        if (container->getName() == text)
            return nativePath(container->getAbsolutePath());
    std::string path = text;
    std::replace(path.begin(), path.end(), '\\', '/');
    if (path.starts_with(kFileProtocol))
        return pathOfUrl(path);
    return path.find('/') == std::string::npos ? _publicFolder + "/" + path : path;
}

bool FileSpace::isOwn(const std::string& path) const
{
    return folderOf(canonicalPath(path)) == canonicalPath(_publicFolder);
}

} // namespace EmbeddedHV
