#include "hvhost/input/DataKind.h"

#include <filesystem>

#include "base/AsciiText.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/StandardStreams.h"

namespace {

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

} // namespace

DataKind dataKind(const std::string& word, const std::string& path, const char* option)
{
    if (word.empty() && path == kStandardStream)
        return DataKind::Csv;
    const std::string wanted = base::lowerCase(word.empty() ? extensionOf(path) : word);
    for (const DataKindWord& row : kDataKinds)
        if (row.word == wanted)
            return row.kind;
    throw CommandFault(ExitStatus::Usage, path + ": the kind of file is not clear from its name",
                       kindHint(option));
}
