#include "support/DirectorySpecific.h"

#include <cstdint>

#include "FileServices.h"
#include "support/Files.h"
#include "support/Paths.h"
#include "support/Separators.h"

/// The state at construction, and the present listing if there is one.
struct HVINTEG_HIDDEN DirectorySpecific::Impl
{
    std::string expandedPath;
    bool exists = false;
    bool readOnly = false;
    std::unique_ptr<DirectoryListing> listing;
    std::string currentName;
    bool currentIsDirectory = false;
    std::int64_t entriesSeen = 0;

    /// Sets the first three members, which never change afterwards.
    void lookUp(std::string path);
    /// Starts a new listing.
    bool browse(const std::string& mask);
    /// Moves to the next entry, without "." and "..".
    bool next();
};

void DirectorySpecific::Impl::lookUp(std::string path)
{
    const bool rooted = !path.empty();
    trimTrailingSeparators(path);
    // A path of separators only is the root.
    if (rooted && path.empty())
        path = "\\";
    std::string expanded;
    // Leave the path empty if it cannot be expanded: a single backslash would be the root.
    if (ValidateDirSpecification(path, expanded, exists, readOnly) == 0)
        expandedPath = FormalizeFilePath(expanded, true);
}

bool DirectorySpecific::Impl::browse(const std::string& mask)
{
    listing.reset();
    entriesSeen = 0;
    if (!exists)
        return false;
    listing = std::make_unique<DirectoryListing>(expandedPath, mask);
    return next();
}

bool DirectorySpecific::Impl::next()
{
    std::string name;
    do {
        if (listing == nullptr || !listing->Next(name))
            return false;
    } while (name == "." || name == "..");
    // Use the bytes of the name, which may be invalid text. A link reports the kind of its target.
    std::string whole;
    bool entryReadOnly = false;
    ValidateDirSpecification(expandedPath + name, whole, currentIsDirectory, entryReadOnly);
    currentName = name;
    ++entriesSeen;
    return true;
}

DirectorySpecific::DirectorySpecific(const std::string& path) : _impl(std::make_unique<Impl>())
{
    _impl->lookUp(path);
}

DirectorySpecific::~DirectorySpecific() = default;

bool DirectorySpecific::Exists() const
{
    return _impl->exists;
}

bool DirectorySpecific::ReadOnly() const
{
    return _impl->readOnly;
}

const std::string& DirectorySpecific::ExpandPath() const
{
    return _impl->expandedPath;
}

bool DirectorySpecific::BrowseFile(const std::string& mask)
{
    return _impl->browse(mask);
}

bool DirectorySpecific::BrowseFile()
{
    return BrowseFile("*");
}

bool DirectorySpecific::Next()
{
    return _impl->next();
}

void DirectorySpecific::GetFileSpec(std::string& name, bool& isDirectory)
{
    if (_impl->entriesSeen == 0)
        return;
    name = _impl->currentName;
    isDirectory = _impl->currentIsDirectory;
}

std::string DirectorySpecific::FormUniqueFileName(const std::string& name)
{
    return ::FormUniqueFileName(_impl->expandedPath + name);
}
