#pragma once

#include <memory>
#include <string>

#include "CommonOptions.h"

class HVLRead;
class HVLWrite;
class HVSimpleFile;

/// What a data file holds.
enum class DataKind
{
    Csv,
    Sav,
    Hvbf
};

/// The kind that a word stands for, or else the extension of a path. Throws CommandFault (Usage).
DataKind dataKind(const std::string& word, const std::string& path, const char* option);

/// The path as the engine takes it.
std::string engineUrl(const std::string& path);

/// A file that a command reads: checked, and fetched from standard input if it comes from there.
class InputFile
{
public:
    /// Throws CommandFault (Input) for a file that is missing, a folder, empty or unreadable.
    explicit InputFile(const InputOptions& options);
    ~InputFile();

    /// The path as the user gave it, for messages.
    const std::string& name() const { return _options.path; }
    /// The absolute path.
    const std::string& path() const { return _path; }
    /// Has the builder read this file.
    void configure(HVLRead& read) const;

private:
    InputOptions _options;
    std::string _path;
    std::string _password;
    DataKind _kind;
    std::unique_ptr<HVSimpleFile> _fetched;
};

/// A file that a command writes. The engine gives it its name once it is whole.
class OutputFile
{
public:
    /// Throws CommandFault (Usage) for a file that is there already, unless it may be replaced, and
    /// (JobFailed) for a folder that is not there.
    explicit OutputFile(const OutputOptions& options);
    ~OutputFile();

    /// Has the builder write this file.
    void configure(HVLWrite& write) const;
    /// Copies what was written to standard output, if it is to go there.
    void deliver() const;

private:
    OutputOptions _options;
    std::string _path;
    std::string _password;
    DataKind _kind;
    std::unique_ptr<HVSimpleFile> _collected;
};
