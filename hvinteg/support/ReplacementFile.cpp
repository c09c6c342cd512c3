#include "support/ReplacementFile.h"

#include <system_error>
#include <utility>

#include "FileServices.h"
#include "support/Paths.h"

namespace {

constexpr std::size_t kGathered = 65536;
constexpr mode_t kNewFileMode = 0666; // minus the process's umask

/// Whether the target may be replaced: it does not exist or is a writable file, not a directory or
/// device.
bool mayBeReplaced(const ExtNameStr& target)
{
    const FileKind kind = FileAttributesOf(target.GetU16());
    if (kind == FileKind::None)
        return true;
    FileState state;
    ValidateFileSpecificationEx(target.GetGeneric(), state);
    return kind == FileKind::File && !state.readOnly;
}

} // namespace

std::streamsize ReplacementFile::FileBuffer::xsputn(const char* bytes, std::streamsize size)
{
    const std::size_t written = std::fwrite(bytes, 1, static_cast<std::size_t>(size), file);
    return static_cast<std::streamsize>(written);
}

ReplacementFile::FileBuffer::int_type ReplacementFile::FileBuffer::overflow(int_type character)
{
    const char byte = traits_type::to_char_type(character);
    return xsputn(&byte, 1) == 1 ? traits_type::not_eof(character) : traits_type::eof();
}

ReplacementFile::ReplacementFile(const std::string& path) : _target(path)
{
    std::string directory;
    // A path that ends in a separator or contains a NUL has no file name.
    const std::string native = _target.GetNative();
    if (SeparateFileName(path, directory).empty() || native.find('\0') != native.npos ||
        !mayBeReplaced(_target))
        return;
    try {
        _part = base::PartFile(native, kNewFileMode);
    } catch (const std::system_error&) {
        return;
    }
    // Nobody who could not read the old file may read the new one.
    _part.takePermissions(native);
    _gathered = std::make_unique_for_overwrite<char[]>(kGathered);
    open();
}

void ReplacementFile::open()
{
    _buffer.file = _part.openStream();
    if (isOpen())
        std::setvbuf(_buffer.file, _gathered.get(), _IOFBF, kGathered);
}

bool ReplacementFile::finish()
{
    if (!isOpen())
        return false;
    // Sync, so that a system crash cannot leave an incomplete file under the name.
    const bool kept = std::fflush(_buffer.file) == 0 && _part.sync();
    const bool finished =
        close() && kept && std::rename(_part.path().c_str(), _target.GetNative().c_str()) == 0;
    if (finished)
        _part.release();
    else
        _part = base::PartFile();
    return finished;
}

bool ReplacementFile::close()
{
    return std::fclose(std::exchange(_buffer.file, nullptr)) == 0;
}

ReplacementFile::~ReplacementFile()
{
    if (isOpen())
        close();
}
