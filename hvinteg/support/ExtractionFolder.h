#pragma once

#include <string>
#include <unordered_set>

/// The folder that an archive is unpacked into, and the watch over what goes where.
class ExtractionFolder
{
public:
    /// `path` is absolute, in the host's spelling, with a trailing separator, and exists.
    explicit ExtractionFolder(const std::string& path);

    /// Where an entry of this name goes.
    std::string pathOf(const std::string& name) const { return _path + name; }
    /// Whether it may go there: it is the first of its name, and its place lies in this folder even
    /// if links stand on the way. The parent of the entry must exist.
    bool admit(const std::string& name);

private:
    bool isInside(const std::string& directory);

    std::string _path;
    std::string _resolvedPath;
    std::unordered_set<std::string> _admitted;
    // Entries of one folder follow each other.
    std::string _lastInside;
};
