#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "FileServices.h"
#include "support/Paths.h"

/// A directory for one test, gone with it. `host` is its name in the host's spelling, with a
/// trailing separator.
class ScratchDir
{
public:
    ScratchDir()
        : path(std::filesystem::temp_directory_path() / ("hv_support_" + unique())),
          host(FormalizeFilePath(path.string(), true))
    {
        std::filesystem::create_directories(path);
    }
    ~ScratchDir()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    ScratchDir(const ScratchDir&) = delete;
    ScratchDir& operator=(const ScratchDir&) = delete;

    void put(const std::string& name, const std::string& text = "x") const
    {
        std::filesystem::create_directories((path / name).parent_path());
        std::ofstream(path / name, std::ios::binary) << text;
    }
    bool has(const std::string& name) const
    {
        return std::filesystem::exists(std::filesystem::symlink_status(path / name));
    }
    std::string read(const std::string& name) const
    {
        std::ifstream file(path / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    const std::filesystem::path path;
    const std::string host;

private:
    static std::string unique()
    {
        const std::string name = FormTempName("t");
        std::string directory;
        return SeparateFileName(name, directory);
    }
};
