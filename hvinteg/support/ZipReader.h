#pragma once

#include <iosfwd>
#include <memory>
#include <string>

#include "support/HvintegExport.h"

/// Reads a zip archive: one walk over its entries, or entries by name. Paths and names of entries
/// are in the host's encoding. Reported names have backslashes, whatever separators the archive
/// has, and at most 259 bytes.
///
///     ZipReader reader(path);
///     if (reader.GotoFile("StatXML.xml") && reader.ExportString(text))
///         use(text);
///
/// Operations return false on failure; they report no reason. After the archive itself has failed,
/// every later operation except ExportFullDirectory returns false without reading it. The end of
/// the list of entries and a name that is not found count as such failures, so an object allows one
/// walk.
///
/// Archives may come from anywhere. The following entries are refused: their export returns false,
/// and the other entries stay readable.
///  - links, devices, encrypted entries, entries whose attributes contradict their names, and
///    methods other than stored and deflated;
///  - for an export to a file, names that are cut or could leave the folder on any system: with
///    ".", ".." or empty components, a leading separator, a colon or control characters;
///  - entries that would take the total output of the object over 1 GiB or 200 times the size of
///    the archive, whichever is more.
/// Damaged content makes the export return false: a wrong checksum, data that ends early, or a size
/// below the declared one.
///
/// One thread at a time.
class HVINTEG_EXPORT ZipReader
{
public:
    /// Creates an object without an archive.
    ZipReader();
    /// Opens an archive; IsOpen returns whether that succeeded.
    explicit ZipReader(const std::string& path);
    /// Closes the archive.
    ~ZipReader();
    ZipReader(const ZipReader&) = delete;
    ZipReader& operator=(const ZipReader&) = delete;

    /// Opens an archive if the object has none open. Returns whether one is open afterwards.
    bool Open(const std::string& path);
    /// Whether an archive is open.
    bool IsOpen() const;

    /// Goes to the first entry and reports it, even a refused one. The name of a directory ends in
    /// a separator. If the result is false, the arguments are unchanged.
    bool GetFirst(std::string& name, bool& isDirectory);
    /// Goes to the next entry and reports it, even a refused one. The name of a directory ends in a
    /// separator. If the result is false, the arguments are unchanged.
    bool GetNext(std::string& name, bool& isDirectory);
    /// Goes to the first entry of that name. Letter case must match; backslash and "/" are
    /// equivalent.
    bool GotoFile(const std::string& name);

    /// Writes the current entry to a file; before any move that is the first entry. The file gets
    /// its name, and replaces another, only when it is complete.
    bool ExportFile(const std::string& filePath);
    /// Writes the current entry to a stream. If the result is false, the stream may have received a
    /// part of it.
    bool ExportStream(std::ostream& stream);
    /// Replaces `content` by the current entry. If the result is false, `content` is empty.
    bool ExportString(std::string& content);

    /// Unpacks all entries below `directory`, in archive order, and stops at the first failure.
    /// Creates the directory, but not its parents. Besides the entries listed above, it refuses an
    /// entry whose name came before, and one whose path leads out of the directory through a link.
    /// It does not unpack an archive of more than 1,000,000 entries.
    ///
    /// Returns true for an empty archive. Also returns true, with nothing unpacked, if the object
    /// has failed before or was never open.
    bool ExportFullDirectory(const std::string& directory);

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};

/// Unpacks an archive with ExportFullDirectory. Returns false if the archive cannot be opened.
HVINTEG_EXPORT bool UnzipToDir(const std::string& archive, const std::string& directory);
