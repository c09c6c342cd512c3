#include "support/ReplacementFile.h"

#include <cerrno>

#include "FileServices.h"
#include "support/Conversions.h"
#include "support/Paths.h"

namespace {

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

ReplacementFile::ReplacementFile(const std::string& path) : _target(path)
{
    std::string directory;
    // A path that ends in a separator names no file.
    if (SeparateFileName(path, directory).empty() || !mayBeReplaced(_target))
        return;
    if (reserveName(directory))
        ExtNameStr::Open(_stream, _unfinished, std::ios::out | std::ios::binary | std::ios::trunc);
}

bool ReplacementFile::reserveName(const std::string& directory)
{
    // A short name of its own: the wanted one may be as long as names can be.
    int number = 0;
    std::FILE* file = nullptr;
    do {
        _unfinished.SetGeneric(directory + "~unfinished" + Integer2String(number++));
        file = ExtNameStr::fopen(_unfinished, "wbx");
    } while (file == nullptr && errno == EEXIST);
    _exists = file != nullptr;
    return _exists && std::fclose(file) == 0;
}

bool ReplacementFile::finish()
{
    if (!isOpen())
        return false;
    _stream.close();
    if (_stream.fail() || ExtNameStr::rename(_unfinished, _target) != 0)
        return false;
    _exists = false;
    return true;
}

ReplacementFile::~ReplacementFile()
{
    if (!_exists)
        return;
    _stream.close();
    ExtNameStr::remove(_unfinished);
}
