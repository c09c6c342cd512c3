#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "support/Paths.h"
#include "support/ZipReader.h"

/// Any bytes as an archive: it is walked, read and unpacked. Nothing may appear outside the folder
/// that it is unpacked into, and nothing in there may be other than a plain file or a folder.
namespace {

namespace fs = std::filesystem;

/// A directory for the life of the program: the archive and the target are all that may be in it.
class Workshop
{
public:
    Workshop()
    {
        std::string name = (fs::temp_directory_path() / "fuzz_zip_XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr)
            std::abort();
        _path = name;
    }
    ~Workshop()
    {
        std::error_code ignored;
        fs::remove_all(_path, ignored);
    }
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;

    std::string archive() const { return FormalizeFilePath((_path / "archive").string(), false); }
    std::string target() const { return FormalizeFilePath((_path / "target").string(), false); }

    void put(const std::uint8_t* data, std::size_t size) const
    {
        std::ofstream file(_path / "archive", std::ios::binary | std::ios::trunc);
        file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    }

    void checkAndClear() const
    {
        for (const auto& entry : fs::directory_iterator(_path))
            if (entry.path().filename() != "archive" && entry.path().filename() != "target")
                std::abort();
        if (!fs::exists(_path / "target"))
            return;
        for (const auto& entry : fs::recursive_directory_iterator(_path / "target"))
            if (const fs::file_type type = entry.symlink_status().type();
                type != fs::file_type::regular && type != fs::file_type::directory)
                std::abort();
        fs::remove_all(_path / "target");
    }

private:
    fs::path _path;
};

void walk(const std::string& archive)
{
    ZipReader reader(archive);
    std::string name;
    std::string content;
    bool isDirectory = false;
    for (bool found = reader.GetFirst(name, isDirectory); found;
         found = reader.GetNext(name, isDirectory)) {
        if (name.size() > 259)
            std::abort();
        if (!reader.ExportString(content) && !content.empty())
            std::abort();
    }
    if (reader.GetFirst(name, isDirectory))
        std::abort();
    // The last name that was seen leads to an entry again, to the first one of that name.
    ZipReader again(archive);
    if (again.GotoFile(name))
        (void)again.ExportString(content);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const Workshop workshop;
    workshop.put(data, size);
    walk(workshop.archive());
    (void)UnzipToDir(workshop.archive(), workshop.target());
    workshop.checkAndClear();
    return 0;
}
