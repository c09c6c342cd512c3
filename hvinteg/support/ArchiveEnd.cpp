#include "support/ArchiveEnd.h"

#include <algorithm>
#include <fstream>
#include <string_view>

#include "ExtNameStr.h"

namespace {

// A comment of any length may follow the record.
constexpr std::size_t kRecordSize = 22;
constexpr std::size_t kLongestComment = 0xffff;
constexpr std::string_view kSignature("PK\5\6");
// The disk numbers, the counts of entries and the size of their directory: two, two and four bytes
// each.
constexpr std::string_view kNothing("\0\0\0\0\0\0\0\0\0\0\0\0", 12);

/// Whether the record counts no entries and its comment ends exactly at the end of the file.
/// Otherwise the signature is part of something else.
bool isRecordOfNothing(std::string_view rest)
{
    if (rest.size() < kRecordSize || rest.substr(kSignature.size(), kNothing.size()) != kNothing)
        return false;
    const auto low = static_cast<unsigned char>(rest[kRecordSize - 2]);
    const auto high = static_cast<unsigned char>(rest[kRecordSize - 1]);
    return rest.size() - kRecordSize == low + 0x100U * high;
}

} // namespace

ArchiveEnd::ArchiveEnd(const std::string& path)
{
    std::ifstream file;
    ExtNameStr::Open(file, ExtNameStr(path), std::ios::in | std::ios::binary);
    const std::streamoff size = file.seekg(0, std::ios::end).tellg();
    if (size <= 0)
        return;
    _fileSize = static_cast<std::uint64_t>(size);
    std::string tail(std::min<std::uint64_t>(_fileSize, kRecordSize + kLongestComment), '\0');
    file.seekg(-static_cast<std::streamoff>(tail.size()), std::ios::end);
    if (!file.read(tail.data(), static_cast<std::streamsize>(tail.size())))
        return;
    // Search backwards: a comment or an entry may contain the signature.
    const std::size_t place = tail.rfind(kSignature);
    _isOfEmptyArchive =
        place != std::string::npos && isRecordOfNothing(std::string_view(tail).substr(place));
}
