#include "support/ReplacementFile.h"

#include <cerrno>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

#include "FileServices.h"
#include "support/Conversions.h"
#include "support/Paths.h"

namespace {

constexpr std::size_t kGathered = 65536;

/// Whether a rename may take the place of what has the name: a directory, a device or a file that
/// its owner protects is no file of ours to take away.
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
    // A path that ends in a separator names no file.
    if (SeparateFileName(path, directory).empty() || !mayBeReplaced(_target))
        return;
    _buffer.file = createBeside(directory);
    if (!isOpen())
        return;
    keepPermissions();
    _gathered = std::make_unique_for_overwrite<char[]>(kGathered);
    std::setvbuf(_buffer.file, _gathered.get(), _IOFBF, kGathered);
}

// Under a short name of its own: the wanted one may be as long as names can be.
std::FILE* ReplacementFile::createBeside(const std::string& directory)
{
    int number = 0;
    std::FILE* file = nullptr;
    do {
        _unfinished.SetGeneric(directory + "~unfinished" + Integer2String(number++));
        file = ExtNameStr::fopen(_unfinished, "wbx");
    } while (file == nullptr && errno == EEXIST);
    return file;
}

// Whoever could not read the file that is there must not read the one that takes its place.
void ReplacementFile::keepPermissions()
{
    constexpr mode_t kPermissions = S_IRWXU | S_IRWXG | S_IRWXO;
    struct stat replaced = {};
    if (lstat(_target.GetNative().c_str(), &replaced) == 0 && S_ISREG(replaced.st_mode))
        fchmod(fileno(_buffer.file), replaced.st_mode & kPermissions);
}

bool ReplacementFile::finish()
{
    if (!isOpen())
        return false;
    // A crash of the system must not leave the name with a part of the content.
    const bool kept = std::fflush(_buffer.file) == 0 && fsync(fileno(_buffer.file)) == 0;
    const bool finished = close() && kept && ExtNameStr::rename(_unfinished, _target) == 0;
    if (!finished)
        ExtNameStr::remove(_unfinished);
    return finished;
}

bool ReplacementFile::close()
{
    return std::fclose(std::exchange(_buffer.file, nullptr)) == 0;
}

ReplacementFile::~ReplacementFile()
{
    if (!isOpen())
        return;
    close();
    ExtNameStr::remove(_unfinished);
}
