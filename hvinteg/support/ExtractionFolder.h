#pragma once

#include <string>
#include <unordered_set>

/// The folder that an archive is unpacked into. Decides which entries may be written there.
class ExtractionFolder
{
public:
    /// `path` is absolute, in the host's spelling, with a trailing separator, and exists.
    explicit ExtractionFolder(const std::string& path);

    /// The path that an entry of this name is written to.
    std::string pathOf(const std::string& name) const { return _path + name; }
    /// Returns true if the entry may be written: it is the first of this name, and its path, with
    /// links resolved, is inside the folder. The parent directory of the entry must exist.
    bool admit(const std::string& name);

private:
    bool isInside(const std::string& directory);

    std::string _path;
    std::string _resolvedPath;
    std::unordered_set<std::string> _admitted;
    // Entries of one folder follow each other.
    std::string _lastInside;
};
