#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "HostExport.h"

/// The host's file services. Names are in the host's encoding and spelling; forward slashes are
/// accepted. Integer results are 0 for success. Any thread.

/// State of a file or directory.
struct FileState
{
    bool exists = false;   ///< there is a file or directory of this name
    bool valid = false;    ///< the system accepts the name
    bool readOnly = false; ///< not writable, or without any write permission bit
    bool inUse = false;    ///< another process holds a record lock on the file
    bool locked = false;   ///< cannot be opened for writing although it is not read-only
};

/// Makes a name absolute and removes ".", "..", doubled and trailing separators. Returns non-zero,
/// and writes nothing, for an empty name, a name with a NUL, or if the result does not fit into
/// `length` bytes.
HOST_API int ExpandFileSpecification(const std::string& name, char* buffer, std::size_t length);
/// Returns the absolute name with links resolved. Returns non-zero if there is no such file, or if
/// the host cannot spell the result; `resolved` is then empty.
HOST_API int ResolveFileSpecification(const std::string& name, std::string& resolved);
/// Tests a directory. `expanded` receives the name as ExpandFileSpecification makes it. Returns
/// non-zero only for an invalid name; a missing directory is not an error.
HOST_API int ValidateDirSpecification(const std::string& name, std::string& expanded, bool& exists,
                                      bool& readOnly);
/// Tests a name. `exists` is also true for a directory. Returns non-zero only for an invalid name.
HOST_API int ValidateFileSpecification(const std::string& name, bool& exists);
/// Tests a name and fills in all properties of `state`. Returns non-zero only for an invalid name.
HOST_API int ValidateFileSpecificationEx(const std::string& name, FileState& state);

/// What a name refers to.
enum class FileKind
{
    None,      ///< no file has this name
    File,      ///< a regular file
    Directory, ///< a directory
    Special    ///< a device, pipe or socket: opening it may block or have effects
};
/// The kind of the file with this UTF-16 name. Follows links.
HOST_API FileKind FileAttributesOf(const std::u16string& name);

/// The host's temporary directory, with a trailing separator. The reference stays valid.
HOST_API const std::string& GetVexaTempPath();
/// Returns a name in the temporary directory that no file has and that no other call returns: the
/// prefix and a unique part. Creates nothing.
HOST_API std::string FormTempName(const std::string& prefix);
/// Creates a folder in the temporary directory, accessible to its owner only. Returns an empty name
/// on failure.
HOST_API std::string CreateTempFolder(const std::string& prefix);
/// Removes a folder of CreateTempFolder and its content. Returns false, and removes nothing, for a
/// name outside the temporary directory or one that is not a folder. Returns false also if
/// something could not be removed.
HOST_API bool RemoveFolderFromTempDir(const std::string& folder);

/// The entries of a directory at construction, sorted by the bytes of their names. "." and ".." are
/// left out, and also names that the host cannot spell. An unreadable directory has no entries.
class HOST_API DirectoryListing
{
public:
    /// Lists the entries of `directory` whose names match `mask`, with `*` and `?`.
    DirectoryListing(const std::string& directory, const std::string& mask);
    ~DirectoryListing();
    DirectoryListing(const DirectoryListing&) = delete;
    DirectoryListing& operator=(const DirectoryListing&) = delete;
    /// Returns the next entry's name, in the host's encoding. Returns false at the end.
    bool Next(std::string& name);

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};

/// Reads a whole file.
class HOST_API FetchFile
{
public:
    /// Replaces `content` by the file's bytes. If the file cannot be read, returns false and
    /// `content` is empty.
    static bool fetch(const std::string& name, std::string& content);
};
