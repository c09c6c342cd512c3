#include "hvhost/input/DataKind.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>

#include "base/AsciiText.h"
#include "datafile/ParquetParts.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/StandardStreams.h"

namespace {

/// The number of bytes at the start of a file that show its kind.
constexpr std::size_t kLooked = 64;

/// The extension of a path, without the dot.
std::string extensionOf(const std::string& path)
{
    const std::string extension = std::filesystem::path(path).extension().string();
    return extension.empty() ? extension : extension.substr(1);
}

std::string kindHint(const char* option)
{
    std::string hint = "a name ends in .csv, .sav, .hvbf or .parquet";
    if (option != nullptr)
        hint += std::string("; for another one, ") + option + " sets the kind";
    return hint;
}

std::string firstBytes(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string bytes(kLooked, '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

DataKind kindOfContent(const std::string& path)
{
    const std::string bytes = firstBytes(path);
    if (bytes.starts_with("PAR1"))
        return DataKind::Hvbf;
    if (bytes.starts_with("PK\x03\x04"))
        return DataKind::Sheet;
    const std::size_t begin = bytes.find_first_not_of(" \t\r\n");
    const bool isJson = begin != std::string::npos && (bytes[begin] == '{' || bytes[begin] == '[');
    return isJson ? DataKind::Json : DataKind::Csv;
}

std::optional<DataKind> kindOfWord(const std::string& word, std::size_t count)
{
    const std::string wanted = base::lowerCase(word);
    for (std::size_t i = 0; i < count; ++i)
        if (kDataKinds.at(i).word == wanted)
            return kDataKinds.at(i).kind;
    return std::nullopt;
}

[[noreturn]] void failUnclear(const std::string& path, const std::string& hint)
{
    throw CommandFault(ExitStatus::Usage, path + ": the kind of file is not clear from its name",
                       hint);
}

} // namespace

DataKind inputKind(const std::string& word, const std::string& path, const std::string& content,
                   const char* option)
{
    if (word.empty() && path == kStandardStream)
        return kindOfContent(content);
    std::string extension = extensionOf(path);
    if (extension == "gz" || extension == "zst")
        extension = extensionOf(std::filesystem::path(path).stem().string());
    if (const auto kind =
            word.empty() ? kindOfWord(extension, kDataKinds.size()) : kindOfWord(word, kInputKinds))
        return *kind;
    if (word.empty() && datafile::hasParts(path))
        return DataKind::Hvbf;
    std::error_code error;
    if (word.empty() && extension.empty() && !std::filesystem::is_regular_file(path, error))
        return kindOfContent(content);
    failUnclear(path, kindHint(option));
}

DataKind outputKind(const std::string& word, const std::string& path, const char* option)
{
    if (word.empty() && path == kStandardStream)
        return DataKind::Csv;
    if (const auto kind = kindOfWord(word.empty() ? extensionOf(path) : word, kOutputKinds))
        return *kind;
    failUnclear(path, kindHint(option));
}

bool isUtf16(const std::string& path)
{
    const std::string bytes = firstBytes(path);
    return bytes.starts_with("\xff\xfe") || bytes.starts_with("\xfe\xff");
}
