#pragma once

#include <memory>
#include <string>

#include "support/HvintegExport.h"

/// The state of a path at construction. A path that cannot be expanded is not valid and does not
/// exist; there are no other errors. Names are in the host's encoding and spelling.
class HVINTEG_EXPORT FileSpecific
{
public:
    /// Looks the path up once. Later changes on disk have no effect on the object.
    explicit FileSpecific(const std::string& path);
    ~FileSpecific();
    FileSpecific(const FileSpecific&) = delete;
    FileSpecific& operator=(const FileSpecific&) = delete;

    /// Whether a file or directory has this path.
    bool Exists() const;
    /// Whether the host accepts the path: it can be expanded, and for a file the host finds its
    /// specification valid.
    bool IsValid() const;
    /// Whether the path is a directory.
    bool IsDir() const;
    /// Whether another process holds a lock on the file. False for a directory.
    bool IsInUse() const;
    /// Whether the file cannot be opened for writing although it is not read-only. False for a
    /// directory.
    bool IsLocked() const;
    /// Whether the file or directory is read-only.
    bool ReadOnly() const;

    /// The absolute path; empty if it cannot be expanded.
    const std::string& ExpandPath() const;
    /// The file name: the part of the expanded path behind its last separator.
    std::string Name() const;
    /// The directory of the expanded path, with its trailing separator.
    std::string Path() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
