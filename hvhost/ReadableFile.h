#pragma once

#include <memory>
#include <string>

class HVSimpleFile;
class InterruptWatch;

/// Throws CommandFault (Usage) for a path that cannot be handed to the engine.
void checkPath(const std::string& path);

/// A host path as the operating system spells it.
std::string nativePath(const std::string& hostPath);

/// A file that the user names and a command reads. What comes from standard input or through a pipe
/// is fetched into a scratch file first, which lives as long as this object.
class ReadableFile
{
public:
    /// Throws CommandFault (Input) for a file that is missing, a folder, empty or unreadable.
    ReadableFile(const std::string& name, const InterruptWatch& watch);
    ~ReadableFile();

    /// Where the bytes are: an absolute path.
    const std::string& path() const { return _path; }
    /// What the user calls it.
    const std::string& name() const { return _name; }

private:
    void fetch(const std::string& source, const InterruptWatch& watch);

    std::string _name;
    std::string _path;
    std::unique_ptr<HVSimpleFile> _fetched;
};
