#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include <minizip/unzip.h>

/// The parts of a workbook: the entries of a zip archive. Never writes them to files, so the names
/// of entries are harmless. One thread at a time.
class WorkbookPackage
{
public:
    /// Throws WorkbookFault for a file that is not such an archive.
    explicit WorkbookPackage(const std::string& path);

    /// Whether there is a part with this name, ignoring letter case.
    bool has(const std::string& name) const;
    /// The content of a small part. Throws WorkbookFault.
    std::string content(const std::string& name) const;
    /// Passes the content of a part in blocks; the last one is empty. Throws WorkbookFault, also
    /// for a part that is too large or compressed more than any workbook is. Exceptions of `take`
    /// pass.
    void read(const std::string& name, const std::function<void(std::string_view)>& take) const;

private:
    struct Closer
    {
        void operator()(void* archive) const { unzClose(archive); }
    };
    std::unique_ptr<void, Closer> _archive;
};
