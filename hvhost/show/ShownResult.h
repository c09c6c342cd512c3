#pragma once

#include <functional>
#include <iosfwd>
#include <string>

class InterruptWatch;

/// The destination of a shown result: standard output, or a file that gets its name when it is
/// complete. Borrows the watch.
class ShownResult
{
public:
    /// An empty path or "-" means standard output. Throws CommandFault as outputPath does.
    ShownResult(const std::string& path, bool mayReplace, const InterruptWatch& watch);

    bool isFile() const { return !_path.empty(); }
    /// Throws CommandFault (JobFailed) if the text cannot be written.
    void deliver(const std::string& text) const;
    /// The same for a result that is too large for memory. `write` writes it to a stream, which
    /// throws if it cannot continue. If `write` ignores a stop, the process ends.
    void deliver(const std::function<void(std::ostream&)>& write) const;

private:
    void writeFile(const std::function<void(std::ostream&)>& write) const;

    std::string _name; ///< the user's name for the file
    std::string _path; ///< empty for standard output
    const InterruptWatch& _watch;
};
