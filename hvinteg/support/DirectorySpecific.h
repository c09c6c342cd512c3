#pragma once

#include <memory>
#include <string>

#include "support/HvintegExport.h"

/// A directory and its entries. It never throws. Names are in the host's encoding and spelling.
///
///     DirectorySpecific directory(path);
///     for (bool found = directory.BrowseFile("*.sav"); found; found = directory.Next())
///         directory.GetFileSpec(name, isDirectory);
class HVINTEG_EXPORT DirectorySpecific
{
public:
    /// Trailing separators make no difference.
    explicit DirectorySpecific(const std::string& path);
    ~DirectorySpecific();
    DirectorySpecific(const DirectorySpecific&) = delete;
    DirectorySpecific& operator=(const DirectorySpecific&) = delete;

    /// As found at construction. Read-only: nothing can be created in it.
    bool Exists() const;
    bool ReadOnly() const;
    /// The absolute path with a trailing backslash; empty if it cannot be expanded.
    const std::string& ExpandPath() const;

    /// Begins a listing, in no particular order, of the entries whose names match `mask`, "*"
    /// without one; an earlier listing ends. False if there is none. "." and ".." are passed over.
    bool BrowseFile(const std::string& mask);
    bool BrowseFile();
    /// Moves to the next entry; false at the end.
    bool Next();
    /// The current entry. Before the first one both arguments stay as they are.
    void GetFileSpec(std::string& name, bool& isDirectory);

    /// A path in this directory that does not exist yet.
    std::string FormUniqueFileName(const std::string& name);

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
