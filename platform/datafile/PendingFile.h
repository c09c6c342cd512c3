#pragma once

#include <string>

namespace datafile {

/// A file under construction: it stands under a name of its own in the destination's folder until
/// it is whole, and takes its final name then. Left unfinished, it is removed.
class PendingFile
{
public:
    /// Chooses the name; nothing is made yet. Throws Fault if the folder of the destination is
    /// missing or cannot be written, or the destination is a folder.
    PendingFile(std::string destination, std::string step);
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;
    ~PendingFile();

    /// Where to write.
    const std::string& path() const { return _path; }
    const std::string& destination() const { return _destination; }
    /// Replaces the content by a text. Throws Fault.
    void write(const std::string& text);
    /// Gives the file its final name. Throws Fault.
    void commit();
    /// Takes the committed file away again: its companion could not be committed.
    void revoke();

    /// The fault of a file that could not be written.
    [[noreturn]] static void refuse(const std::string& step, const std::string& path, int code);

private:
    std::string _destination;
    std::string _step;
    std::string _path;
    bool _committed = false;
};

} // namespace datafile
