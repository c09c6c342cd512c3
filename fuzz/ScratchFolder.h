#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

/// A folder for the files of a target, which goes with the program.
class ScratchFolder
{
public:
    ScratchFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "hvfuzz_XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr)
            std::abort();
        _path = name;
    }
    ~ScratchFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(_path, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& path() const { return _path; }
    /// A path in it as the operating system spells it, and as the host does.
    std::string native(const std::string& name) const { return (_path / name).string(); }
    std::string host(const std::string& name) const
    {
        std::string path = native(name);
        std::replace(path.begin(), path.end(), '/', '\\');
        return path;
    }
    /// Writes a file in place of an earlier one of its name.
    void put(const std::string& name, std::string_view content) const
    {
        std::ofstream file(_path / name, std::ios::binary | std::ios::trunc);
        file.write(content.data(), static_cast<std::streamsize>(content.size()));
    }

private:
    std::filesystem::path _path;
};

/// The input of a target as a text.
inline std::string_view textOf(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

/// A rule that is broken is a finding.
inline void require(bool holds)
{
    if (!holds)
        std::abort();
}
