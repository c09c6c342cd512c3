#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "ExtNameStr.h"
#include "FileServices.h"

/// A folder in the host's temporary directory. The destructor removes it.
class ScratchFolder
{
public:
    ScratchFolder() : folder(CreateTempFolder("test_")), path(ExtNameStr(folder).GetNative()) {}
    ~ScratchFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    /// The path of a file in the folder, in the host's form.
    std::string name(const std::string& file) const { return folder + "\\" + file; }
    /// Writes a file. Creates its folders.
    void put(const std::string& file, const std::string& text = "x") const
    {
        std::filesystem::create_directories((path / file).parent_path());
        std::ofstream(path / file, std::ios::binary) << text;
    }
    bool has(const std::string& file) const
    {
        return std::filesystem::exists(std::filesystem::symlink_status(path / file));
    }
    std::string read(const std::string& file) const
    {
        std::ifstream stream(path / file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    /// The path of the folder, in the host's and in the operating system's form.
    const std::string folder;
    const std::filesystem::path path;
};
