#pragma once

#include <filesystem>

/// Sends standard output and standard error to files for a scope.
class StandardFiles
{
public:
    StandardFiles(const std::filesystem::path& output, const std::filesystem::path& errors);
    ~StandardFiles();
    StandardFiles(const StandardFiles&) = delete;
    StandardFiles& operator=(const StandardFiles&) = delete;

private:
    int _output;
    int _errors;
};
