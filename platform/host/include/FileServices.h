#pragma once

#include <cstddef>
#include <string>

#include "HostExport.h"

/// The host's file services. Names are in the host's encoding and spelling; forward slashes are
/// taken as well. Results are 0 for success.

/// What is known of a file or directory.
struct FileState
{
    bool exists = false;
    bool valid = false;
    bool readOnly = false;
    bool inUse = false;  ///< another process holds a lock on it
    bool locked = false; ///< it cannot be opened for writing though it is not read-only
};

/// Makes a name absolute and tidy. Non-zero for an empty name, one with a NUL or one that does not
/// fit into the buffer.
HOST_API int ExpandFileSpecification(const std::string& name, char* buffer, std::size_t length);
/// `expanded` receives the absolute name.
HOST_API int ValidateDirSpecification(const std::string& name, std::string& expanded, bool& exists,
                                      bool& readOnly);
HOST_API int ValidateFileSpecification(const std::string& name, bool& exists);
HOST_API int ValidateFileSpecificationEx(const std::string& name, FileState& state);

enum class FileKind
{
    None,
    File,
    Directory
};
/// What a name stands for, by its UTF-16 form.
HOST_API FileKind FileAttributesOf(const std::u16string& name);

/// The host's temporary directory, with a trailing separator.
HOST_API const std::string& GetVexaTempPath();
/// A name in the temporary directory that no file has: the prefix and something unique.
HOST_API std::string FormTempName(const std::string& prefix);
/// A new folder in the temporary directory, for its owner alone; empty on failure.
HOST_API std::string CreateTempFolder(const std::string& prefix);
/// Removes such a folder with all that is in it.
HOST_API bool RemoveFolderFromTempDir(const std::string& folder);

/// One listing of a directory; "." and ".." are passed over.
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
    void* _handle;
    std::string _mask;
};

/// Reads a whole file.
class HOST_API FetchFile
{
public:
    /// False if the file cannot be read; then `content` is empty.
    static bool fetch(const std::string& name, std::string& content);
};
