#include "support/FileSpecific.h"

#include <array>

#include "ExtNameStr.h"
#include "FileServices.h"
#include "support/Paths.h"

/// The state at construction.
struct HVINTEG_HIDDEN FileSpecific::Impl
{
    std::string expandedPath;
    FileState state;
    bool directory = false;

    /// Asks the host once. All flags stay false if it cannot expand the path.
    void lookUp(const std::string& path);
};

void FileSpecific::Impl::lookUp(const std::string& path)
{
    // Longer than any path that an operating system accepts.
    constexpr std::size_t kLongestPath = 32768;
    const auto buffer = std::make_unique<std::array<char, kLongestPath>>();
    if (ExpandFileSpecification(path, buffer->data(), buffer->size()) != 0)
        return;
    expandedPath = buffer->data();
    state.valid = true;
    directory = FileAttributesOf(ExtNameStr(expandedPath).GetU16()) == FileKind::Directory;
    // The host reports in-use and locked only for files.
    if (directory) {
        std::string expanded;
        ValidateDirSpecification(expandedPath, expanded, state.exists, state.readOnly);
    } else {
        ValidateFileSpecificationEx(expandedPath, state);
    }
}

FileSpecific::FileSpecific(const std::string& path) : _impl(std::make_unique<Impl>())
{
    _impl->lookUp(path);
}

FileSpecific::~FileSpecific() = default;

bool FileSpecific::Exists() const
{
    return _impl->state.exists;
}

bool FileSpecific::IsValid() const
{
    return _impl->state.valid;
}

bool FileSpecific::IsDir() const
{
    return _impl->directory;
}

bool FileSpecific::IsInUse() const
{
    return _impl->state.inUse;
}

bool FileSpecific::IsLocked() const
{
    return _impl->state.locked;
}

bool FileSpecific::ReadOnly() const
{
    return _impl->state.readOnly;
}

const std::string& FileSpecific::ExpandPath() const
{
    return _impl->expandedPath;
}

std::string FileSpecific::Name() const
{
    std::string directory;
    return SeparateFileName(_impl->expandedPath, directory);
}

std::string FileSpecific::Path() const
{
    std::string directory;
    SeparateFileName(_impl->expandedPath, directory);
    return directory;
}
