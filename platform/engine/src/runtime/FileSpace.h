#pragma once

#include <string>
#include <vector>

#include "DataFileNames.h"
#include "datafile/NativePath.h"

namespace EmbeddedHV {

class Container;

/// One spelling for all spellings of a file's path, be the file there or not: to compare, not to
/// show. Links are followed, as they are when a file is written.
std::string canonicalPath(const std::string& path);

/// Finds the files that job texts name. Bare names live in the public folder of the analytic root.
class FileSpace
{
public:
    /// Makes the folders of the root that are missing. Throws Exception.
    FileSpace(const std::string& analyticRoot, const std::string& scratchFolder);

    /// The operating system's path for what a job text says: the name of a container of the job, a
    /// file URL, a path, or a bare file name.
    std::string resolve(const std::string& text,
                        const std::vector<const Container*>& containers) const;
    /// Whether a file lies in the engine's folder, where bare names do.
    bool isOwn(const std::string& path) const;
    /// Where scratch files go.
    const std::string& scratchFolder() const { return _scratchFolder; }

private:
    std::string _publicFolder;
    std::string _scratchFolder;
};

} // namespace EmbeddedHV
