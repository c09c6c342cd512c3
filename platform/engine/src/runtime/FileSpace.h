#pragma once

#include <string>
#include <vector>

#include "DataFileNames.h"
#include "base/NativePath.h"

namespace EmbeddedHV {

class Container;

/// A canonical path for comparisons, not for display. The file need not exist. Links are followed,
/// as a write does.
std::string canonicalPath(const std::string& path);

/// Finds the files that job texts name. Plain file names are in the public folder of the analytic
/// root.
class FileSpace
{
public:
    /// Creates the folders of the root that are missing. Throws Exception.
    FileSpace(const std::string& analyticRoot, const std::string& scratchFolder);

    /// The operating system's path for a name in a job text. The name may be that of a container of
    /// the job, a file URL, a path, or a plain file name.
    std::string resolve(const std::string& text,
                        const std::vector<const Container*>& containers) const;
    /// Whether a file is in the engine's public folder.
    bool isOwn(const std::string& path) const;
    /// The folder for scratch files.
    const std::string& scratchFolder() const { return _scratchFolder; }

private:
    std::string _publicFolder;
    std::string _scratchFolder;
};

} // namespace EmbeddedHV
