#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "HostExport.h"

/// The host's file services. Names are in the host's encoding and spelling; forward slashes are
/// taken as well. Results are 0 for success. All may be called from any thread.

/// What is known of a file or directory.
struct FileState
{
    bool exists = false;   ///< something stands under the name
    bool valid = false;    ///< the system takes the name
    bool readOnly = false; ///< it cannot be written, or has no permission bit to write for anyone
    bool inUse = false;    ///< another process holds a record lock on the file
    bool locked = false;   ///< it cannot be opened for writing though it is not read-only
};

/// Makes a name absolute and tidy: without ".", "..", doubled or trailing separators. Non-zero for
/// an empty name, one with a NUL or one that does not fit into the buffer; nothing is written then.
HOST_API int ExpandFileSpecification(const std::string& name, char* buffer, std::size_t length);
/// The absolute, tidy name of what a name leads to, without links on the way. Non-zero if nothing
/// stands there, or if the host cannot spell the result, which is then empty.
HOST_API int ResolveFileSpecification(const std::string& name, std::string& resolved);
/// `expanded` receives the absolute name, as ExpandFileSpecification makes it. Non-zero only for a
/// name that is none; a directory that is not there is no failure.
HOST_API int ValidateDirSpecification(const std::string& name, std::string& expanded, bool& exists,
                                      bool& readOnly);
/// The same results for a file; `exists` for whatever stands under the name, a directory too.
HOST_API int ValidateFileSpecification(const std::string& name, bool& exists);
HOST_API int ValidateFileSpecificationEx(const std::string& name, FileState& state);

/// What stands behind a name.
enum class FileKind
{
    None,
    File,
    Directory,
    Special ///< a device, a pipe or a socket: to open it may wait for another, or do something
};
/// What a name stands for, by its UTF-16 form; a link counts as what it leads to.
HOST_API FileKind FileAttributesOf(const std::u16string& name);

/// The host's temporary directory, with a trailing separator. The reference stays good.
HOST_API const std::string& GetVexaTempPath();
/// A name in the temporary directory that no file has, and that no other call gives: the prefix and
/// something unique. Makes nothing.
HOST_API std::string FormTempName(const std::string& prefix);
/// A new folder in the temporary directory, for its owner alone; empty on failure.
HOST_API std::string CreateTempFolder(const std::string& prefix);
/// Removes such a folder with all that is in it. False, and nothing removed, for a name outside the
/// temporary directory or one that is no folder; false as well if something could not be removed.
HOST_API bool RemoveFolderFromTempDir(const std::string& folder);

/// One listing of a directory, as it is at construction, in the order of the names' bytes. "." and
/// ".." are passed over, and so are names that the host cannot spell. A directory that cannot be
/// read has no entries.
class HOST_API DirectoryListing
{
public:
    /// Entries of `directory` whose names match `mask`, with `*` and `?`.
    DirectoryListing(const std::string& directory, const std::string& mask);
    ~DirectoryListing();
    DirectoryListing(const DirectoryListing&) = delete;
    DirectoryListing& operator=(const DirectoryListing&) = delete;
    /// The next entry's name, in the host's encoding; false at the end.
    bool Next(std::string& name);

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};

/// Reads a whole file.
class HOST_API FetchFile
{
public:
    /// False if the file cannot be read; then `content` is empty.
    static bool fetch(const std::string& name, std::string& content);
};
