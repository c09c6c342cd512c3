#include "workbook/WorkbookPackage.h"

#include <array>
#include <cstdint>
#include <fstream>

#include "workbook/WorkbookFault.h"

namespace {

constexpr std::size_t kPartBlock = std::size_t{256} * 1024;
constexpr std::uint64_t kMostEntries = 10'000;
constexpr std::uint64_t kMostOfPart = std::uint64_t{4} << 30;
constexpr std::uint64_t kMostOfSmallPart = std::uint64_t{64} << 20;
/// Small parts may have any ratio. Deflate reaches about 1,000 for bytes that are all equal; sheets
/// of equal numbers reach about 100.
constexpr std::uint64_t kMostRatio = 500;
constexpr std::uint64_t kRatioFrom = std::uint64_t{64} << 20;
constexpr unsigned long kEncrypted = 0x1;
constexpr int kIgnoresCase = 2;

constexpr std::string_view kOldMark = "\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1";
/// The name of a stream in an encrypted workbook, in UTF-16.
constexpr std::string_view kEncryptedStream("E\0n\0c\0r\0y\0p\0t\0e\0d\0P\0a\0c\0k\0a\0g\0e\0", 32);

/// The reason why a file is not an archive.
[[noreturn]] void failOfKind(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string content(kMostOfSmallPart, '\0');
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    content.resize(static_cast<std::size_t>(file.gcount()));
    if (!content.starts_with(kOldMark))
        throw WorkbookFault("this is not an xlsx workbook, or it is cut short");
    if (content.find(kEncryptedStream) != std::string::npos)
        throw WorkbookFault("the workbook is encrypted; save it without a password");
    throw WorkbookFault("this is an old xls workbook; save it as xlsx");
}

/// Closes the current entry on every way out.
class OpenEntry
{
public:
    explicit OpenEntry(unzFile archive) : _archive(archive) {}
    OpenEntry(const OpenEntry&) = delete;
    OpenEntry& operator=(const OpenEntry&) = delete;
    ~OpenEntry()
    {
        if (_archive != nullptr)
            unzCloseCurrentFile(_archive);
    }
    /// Returns false if the content does not have the declared checksum.
    bool close()
    {
        const unzFile archive = _archive;
        _archive = nullptr;
        return unzCloseCurrentFile(archive) == UNZ_OK;
    }

private:
    unzFile _archive;
};

} // namespace

WorkbookPackage::WorkbookPackage(const std::string& path) : _archive(unzOpen64(path.c_str()))
{
    if (!_archive)
        failOfKind(path);
    unz_global_info64 info{};
    if (unzGetGlobalInfo64(_archive.get(), &info) != UNZ_OK || info.number_entry > kMostEntries)
        throw WorkbookFault("the workbook has more than " + std::to_string(kMostEntries) +
                            " parts, or its directory is damaged");
}

bool WorkbookPackage::has(const std::string& name) const
{
    return unzLocateFile(_archive.get(), name.c_str(), kIgnoresCase) == UNZ_OK;
}

std::string WorkbookPackage::content(const std::string& name) const
{
    std::string all;
    read(name, [&](std::string_view block) {
        if (all.size() + block.size() > kMostOfSmallPart)
            throw WorkbookFault("the part " + name + " of the workbook is larger than 64 MiB");
        all += block;
    });
    return all;
}

void WorkbookPackage::read(const std::string& name,
                           const std::function<void(std::string_view)>& take) const
{
    unz_file_info64 info{};
    if (!has(name) || unzGetCurrentFileInfo64(_archive.get(), &info, nullptr, 0, nullptr, 0,
                                              nullptr, 0) != UNZ_OK)
        throw WorkbookFault("the workbook has no part " + name);
    if ((info.flag & kEncrypted) != 0)
        throw WorkbookFault("the workbook is encrypted; save it without a password");
    if (unzOpenCurrentFile(_archive.get()) != UNZ_OK)
        throw WorkbookFault("the part " + name + " of the workbook is damaged");
    OpenEntry entry(_archive.get());
    std::string block(kPartBlock, '\0');
    std::uint64_t total = 0;
    int got = 0;
    while ((got = unzReadCurrentFile(_archive.get(), block.data(), kPartBlock)) > 0) {
        total += static_cast<std::uint64_t>(got);
        const bool isBomb = total > kRatioFrom && total / kMostRatio > info.compressed_size;
        if (total > kMostOfPart || isBomb)
            throw WorkbookFault("the part " + name +
                                " of the workbook unpacks to more than is accepted");
        take({block.data(), static_cast<std::size_t>(got)});
    }
    if (got < 0 || total != info.uncompressed_size || !entry.close())
        throw WorkbookFault("the part " + name + " of the workbook is damaged");
    take({});
}
