#pragma once

#include <memory>
#include <string>

class HVSimpleFile;
class InterruptWatch;

/// Throws CommandFault (Usage) for a path that cannot be passed to the engine.
void checkPath(const std::string& path);

/// A host path in the operating system's form.
std::string nativePath(const std::string& hostPath);

/// Whether a folder, or a pattern of names, is accepted for a file.
enum class FileParts
{
    Refused,
    Accepted ///< they are not checked; their reader does that
};

/// A file that the user names and a command reads. Standard input and pipes are first copied to a
/// scratch file, which exists as long as this object.
class ReadableFile
{
public:
    /// Throws CommandFault (Input) if the file is missing, a folder, empty or unreadable.
    ReadableFile(const std::string& name, const InterruptWatch& watch,
                 FileParts parts = FileParts::Refused);
    ~ReadableFile();

    /// The location of the content, an absolute path.
    const std::string& path() const { return _path; }
    /// The user's name for it.
    const std::string& name() const { return _name; }

    /// Whether this is a folder or a pattern of names.
    bool hasParts() const { return _hasParts; }

    /// From now on, path is that of this file, which has the same content in another form.
    void replaceBy(std::unique_ptr<HVSimpleFile> file);

private:
    void fetch(const std::string& source, const InterruptWatch& watch);

    std::string _name;
    std::string _path;
    bool _hasParts = false;
    std::unique_ptr<HVSimpleFile> _fetched;
};
