#pragma once

#include <memory>
#include <string>

#include "support/HvintegExport.h"

/// A directory and its entries. Names are in the host's encoding and spelling. Failures are
/// reported as false or empty results. One thread at a time.
///
///     DirectorySpecific directory(path);
///     for (bool found = directory.BrowseFile("*.sav"); found; found = directory.Next())
///         directory.GetFileSpec(name, isDirectory);
class HVINTEG_EXPORT DirectorySpecific
{
public:
    /// Looks the path up once. Trailing separators are ignored.
    explicit DirectorySpecific(const std::string& path);
    ~DirectorySpecific();
    DirectorySpecific(const DirectorySpecific&) = delete;
    DirectorySpecific& operator=(const DirectorySpecific&) = delete;

    /// Whether the directory existed at construction.
    bool Exists() const;
    /// Whether it was read-only at construction: no file can be created in it.
    bool ReadOnly() const;
    /// The absolute path with a trailing backslash; empty if it cannot be expanded.
    const std::string& ExpandPath() const;

    /// Starts a listing, in no particular order, of the entries whose names match `mask`, and ends
    /// an earlier listing. "." and ".." are skipped. Returns false if no entry matches or the
    /// directory does not exist.
    bool BrowseFile(const std::string& mask);
    /// Starts a listing of all entries.
    bool BrowseFile();
    /// Moves to the next entry. Returns false at the end.
    bool Next();
    /// Reports the name and kind of the current entry. Before a listing has found one, both
    /// arguments keep their values.
    void GetFileSpec(std::string& name, bool& isDirectory);

    /// Returns a path in this directory that does not exist yet; see the function
    /// FormUniqueFileName for the name.
    std::string FormUniqueFileName(const std::string& name);

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
