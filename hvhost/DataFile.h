#pragma once

#include <memory>
#include <optional>
#include <string>

#include "CommonOptions.h"
#include "DataKind.h"
#include "JobOrigin.h"
#include "ReadableFile.h"

class HVLRead;
class HVLWrite;
class HVSimpleFile;
class InterruptWatch;

/// Whether a command has the options that a hint may speak of.
enum class FileOptions
{
    Offered,
    None
};

/// A file that a command reads, checked.
class InputFile
{
public:
    /// Throws CommandFault: Input as ReadableFile, Usage for a kind that is not clear and for a
    /// password that the kind of file does not take.
    InputFile(const InputOptions& options, FileOptions offered, const InterruptWatch& watch);

    /// What is known of a job that reads it.
    JobOrigin origin() const;
    /// Has the builder read this file.
    void configure(HVLRead& read) const;

private:
    InputOptions _options;
    FileOptions _offered;
    ReadableFile _file;
    std::optional<ReadableFile> _dataModel;
    std::string _password;
    DataKind _kind;
};

/// A file that a command writes. The engine gives it its name once it is whole. The watch is
/// borrowed.
class OutputFile
{
public:
    /// Throws CommandFault (Usage) for a file that is there already, unless it may be replaced, and
    /// (JobFailed) for a folder that is not there. A password that the kind of file does not take
    /// is refused, too: nobody should believe that a file is sealed when it is not.
    OutputFile(const OutputOptions& options, FileOptions offered, const InterruptWatch& watch);
    ~OutputFile();

    /// Has the builder write this file.
    void configure(HVLWrite& write) const;
    /// Copies what was written to standard output, if it is to go there.
    void deliver() const;

private:
    OutputOptions _options;
    const InterruptWatch& _watch;
    std::string _path;
    std::string _password;
    DataKind _kind;
    std::unique_ptr<HVSimpleFile> _collected;
};
