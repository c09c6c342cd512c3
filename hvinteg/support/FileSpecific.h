#pragma once

#include <memory>
#include <string>

#include "support/HvintegExport.h"

/// What is known of a path at the moment of construction. It never throws: a path that cannot be
/// expanded is neither valid nor existing. Names are in the host's encoding and spelling.
class HVINTEG_EXPORT FileSpecific
{
public:
    /// Looks the path up once; what changes afterwards is not seen.
    explicit FileSpecific(const std::string& path);
    ~FileSpecific();
    FileSpecific(const FileSpecific&) = delete;
    FileSpecific& operator=(const FileSpecific&) = delete;

    bool Exists() const;
    bool IsValid() const;
    bool IsDir() const;
    /// Both are about files and false for a directory: another process holds a lock on it; it
    /// cannot be opened for writing though it is not read-only.
    bool IsInUse() const;
    bool IsLocked() const;
    bool ReadOnly() const;

    /// The absolute path; empty if it cannot be expanded.
    const std::string& ExpandPath() const;
    /// Its two halves; the directory keeps its trailing separator.
    std::string Name() const;
    std::string Path() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
