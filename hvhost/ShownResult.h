#pragma once

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

private:
    std::string _path; ///< empty for standard output
    const InterruptWatch& _watch;
};
