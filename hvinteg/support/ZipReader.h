#pragma once

#include <iosfwd>
#include <memory>
#include <string>

#include "support/HvintegExport.h"

/// Reads a zip archive: one walk over its entries, or some of them by name. Paths and the names of
/// entries are in the host's encoding; a name is given out with backslashes, whatever separators
/// stand in the archive, and up to 259 bytes of it.
///
///     ZipReader reader(path);
///     if (reader.GotoFile("StatXML.xml") && reader.ExportString(text))
///         use(text);
///
/// Nothing throws or says why it failed. Once the archive itself has failed, every later operation
/// gives false without touching it, except for ExportFullDirectory. The end of the list of entries,
/// or a name that is not found, counts as such a failure, so a walk happens once per object.
///
/// Archives come from anywhere, so an entry may be refused: its export gives false, the others can
/// still be had. Refused are
///  - links, devices, entries whose attributes contradict their names, encrypted ones, and methods
///    other than stored and deflated;
///  - on the way to a file, names that are not whole or could lead out of a folder on any system:
///    with ".", ".." or empty components, a leading separator, a colon, control characters;
///  - what would take the sum of all that one object gives out over a limit: 1 GiB or 200 times the
///    size of the archive, whichever is more.
/// Content that is damaged is never given out as good: a checksum that is wrong, data that breaks
/// off and a declared size that is not reached make the export false.
///
/// One thread at a time.
class HVINTEG_EXPORT ZipReader
{
public:
    /// Without an archive, or with one that Open opens.
    ZipReader();
    explicit ZipReader(const std::string& path);
    ~ZipReader();
    ZipReader(const ZipReader&) = delete;
    ZipReader& operator=(const ZipReader&) = delete;

    /// Opens an archive unless one is open already; true if one is open then.
    bool Open(const std::string& path);
    bool IsOpen() const;

    /// Go to the first entry, or to the next one, and report it, a refused one too. A directory is
    /// an entry whose name ends in a separator. On false the arguments stay as they are.
    bool GetFirst(std::string& name, bool& isDirectory);
    bool GetNext(std::string& name, bool& isDirectory);
    /// Goes to the first entry of that name, letter case included; either separator finds the
    /// other.
    bool GotoFile(const std::string& name);

    /// Write the current entry; before any is gone to, that is the first one. A file appears under
    /// its name, and takes the place of another, only when it is whole. A stream may have received
    /// a part when the result is false; a string is empty then.
    bool ExportFile(const std::string& filePath);
    bool ExportStream(std::ostream& stream);
    bool ExportString(std::string& content);

    /// Unpacks everything below `directory`, in the order of the archive, up to the first entry
    /// that fails; the directory is created, its parents are not. Beside the rules above an entry
    /// is refused whose name, as a file or a directory, came before, or whose place lies elsewhere
    /// by way of a link. An archive of more than 1,000,000 entries is not unpacked.
    ///
    /// True for an empty archive, and, with nothing unpacked, for an object that has failed before
    /// or was never open.
    bool ExportFullDirectory(const std::string& directory);

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};

/// Unpacks an archive as ExportFullDirectory does; false for one that does not open.
HVINTEG_EXPORT bool UnzipToDir(const std::string& archive, const std::string& directory);
