#pragma once

#include <functional>
#include <iosfwd>
#include <string>

class InterruptWatch;

/// Where a result goes that is shown: to standard output, or to a file, which gets its name when
/// all of it is there. The watch is borrowed.
class ShownResult
{
public:
    /// An empty path stands for standard output, as "-" does. Throws CommandFault as outputPath.
    ShownResult(const std::string& path, bool mayReplace, const InterruptWatch& watch);

    bool isFile() const { return !_path.empty(); }
    /// Throws CommandFault (JobFailed) for what cannot be written.
    void deliver(const std::string& text) const;
    /// The same for a result that is too large for memory: `write` writes it to a stream, which
    /// throws when it cannot go on. A stop that `write` does not heed ends the process.
    void deliver(const std::function<void(std::ostream&)>& write) const;

private:
    void writeFile(const std::function<void(std::ostream&)>& write) const;

    std::string _name; ///< what the user calls the file
    std::string _path; ///< empty for standard output
    const InterruptWatch& _watch;
};
