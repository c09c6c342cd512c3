#include "support/ZipEntry.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "ExtNameStr.h"
#include "support/Paths.h"
#include "support/Separators.h"

namespace {

constexpr std::size_t kNameBuffer = 260;
constexpr std::uint64_t kStored = 0;
constexpr std::uint64_t kDeflated = 8;
constexpr std::uint64_t kEncrypted = 0x1;

// The upper half of the attributes is a Unix mode or 0. It is tested whatever system the archive
// claims to come from, because the claim may be false.
constexpr unsigned kModeShift = 16;
constexpr std::uint64_t kTypeOfMode = 0170000;
constexpr std::uint64_t kFileMode = 0100000;
constexpr std::uint64_t kFolderMode = 0040000;
// Bits of the lower half: volume label, folder, device and reparse point.
constexpr std::uint64_t kFolderAttribute = 0x10;
constexpr std::uint64_t kOddAttributes = 0x08 | 0x40 | 0x400;

bool isControlCharacter(char character)
{
    const auto code = static_cast<unsigned char>(character);
    return code < 0x20 || code == 0x7f;
}

/// False for components that would lead upwards or have no effect in a path.
bool isTrustedComponent(std::string_view component)
{
    return !component.empty() && component != "." && component != "..";
}

} // namespace

int ZipEntry::read(unzFile archive)
{
    unz_file_info info = {};
    // minizip does not terminate a name that fills the buffer.
    char buffer[kNameBuffer + 1] = {};
    const int result =
        unzGetCurrentFileInfo(archive, &info, buffer, kNameBuffer, nullptr, 0, nullptr, 0);
    if (result != UNZ_OK)
        return result;
    buffer[kNameBuffer - 1] = '\0';
    _name = FormalizeFilePath(buffer, false);
    _isDirectory = endsWithBackslash(_name);
    // False for a name that was cut and for one that contains a NUL.
    _isNameWhole = std::strlen(buffer) == info.size_filename;
    _size = info.uncompressed_size;
    _flags = info.flag;
    _method = info.compression_method;
    _attributes = info.external_fa;
    return result;
}

bool ZipEntry::isReadable() const
{
    const bool isPlain = (_flags & kEncrypted) == 0 && (_method == kStored || _method == kDeflated);
    return isPlain && (_attributes & kOddAttributes) == 0 && !contradictsItsName();
}

bool ZipEntry::contradictsItsName() const
{
    const std::uint64_t type = (_attributes >> kModeShift) & kTypeOfMode;
    const bool isMarkedFolder = (_attributes & kFolderAttribute) != 0;
    if (_isDirectory)
        return _size != 0 || (type != 0 && type != kFolderMode);
    return isMarkedFolder || (type != 0 && type != kFileMode);
}

bool ZipEntry::hasTrustedName() const
{
    return _isNameWhole && isTrustedEntryName(_name);
}

bool isTrustedEntryName(const std::string& name)
{
    // Test the operating system's spelling, which decides where the file goes.
    const std::string native = ExtNameStr(name).GetNative();
    if (name.size() >= kNameBuffer || native.find(':') != std::string::npos ||
        std::any_of(native.begin(), native.end(), isControlCharacter))
        return false;
    std::string_view rest = native;
    if (endsWithBackslash(name))
        rest.remove_suffix(1);
    for (std::size_t slash; (slash = rest.find('/')) != std::string_view::npos;
         rest.remove_prefix(slash + 1))
        if (!isTrustedComponent(rest.substr(0, slash)))
            return false;
    return isTrustedComponent(rest);
}
