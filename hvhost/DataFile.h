#pragma once

#include <memory>
#include <string>

#include "CommonOptions.h"
#include "JobOrigin.h"

class HVLRead;
class HVLWrite;
class HVSimpleFile;
class InterruptWatch;

/// What a data file holds.
enum class DataKind
{
    Csv,
    Sav,
    Hvbf
};

/// The kind that a word stands for, or else the extension of a path. Throws CommandFault (Usage).
DataKind dataKind(const std::string& word, const std::string& path, const char* option);

/// Throws CommandFault (Input) for a file that is missing, a folder, empty or unreadable.
void checkReadable(const std::string& path);

/// A host path as the operating system spells it.
std::string nativePath(const std::string& hostPath);

/// The path as the engine takes it.
std::string engineUrl(const std::string& path);

/// A file that a command reads: checked, and fetched from standard input if it comes from there.
class InputFile
{
public:
    /// Throws CommandFault: Input as checkReadable, Usage for a password that the kind of file does
    /// not take.
    InputFile(const InputOptions& options, const InterruptWatch& watch);
    ~InputFile();

    /// Where it is, and what the user calls it.
    JobOrigin::File origin() const;
    /// Has the builder read this file.
    void configure(HVLRead& read) const;

private:
    InputOptions _options;
    std::string _path;
    std::string _password;
    DataKind _kind;
    std::unique_ptr<HVSimpleFile> _fetched;
};

/// A file that a command writes. The engine gives it its name once it is whole. The watch is
/// borrowed.
class OutputFile
{
public:
    /// Throws CommandFault (Usage) for a file that is there already, unless it may be replaced, and
    /// (JobFailed) for a folder that is not there. A password that the kind of file does not take
    /// is refused, too: nobody should believe that a file is sealed when it is not.
    OutputFile(const OutputOptions& options, const InterruptWatch& watch);
    ~OutputFile();

    /// Has the builder write this file.
    void configure(HVLWrite& write) const;
    /// Copies what was written to standard output, if it is to go there.
    void deliver() const;

private:
    void checkDestination() const;

    OutputOptions _options;
    const InterruptWatch& _watch;
    std::string _path;
    std::string _password;
    DataKind _kind;
    std::unique_ptr<HVSimpleFile> _collected;
};
