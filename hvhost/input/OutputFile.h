#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hvhost/base/CommonOptions.h"
#include "hvhost/base/JobOrigin.h"
#include "hvhost/input/DataKind.h"
#include "hvhost/input/JobFile.h"

class HVLWrite;
class HVSimpleFile;
class InterruptWatch;

/// A file that a command writes. The engine gives it its name when it is complete. Borrows the
/// watch.
class OutputFile
{
public:
    /// Throws CommandFault (Usage) for a file that exists and may not be replaced, (JobFailed) for
    /// a folder that does not exist, and (Usage) for a password that the kind of file does not
    /// support, so that the user does not believe that the file is encrypted.
    OutputFile(const OutputOptions& options, FileOptions offered, const InterruptWatch& watch);
    ~OutputFile();

    /// Makes the builder write this file.
    void configure(HVLWrite& write) const;
    /// Whether the output declares a weight, in the file itself or in a data model document.
    bool keepsWeight() const { return _kind != DataKind::Csv || !_options.dataModel.empty(); }
    /// The files that the job writes, and their names in messages.
    std::vector<JobOrigin::File> origins() const;
    /// Copies the output to standard output if it belongs there.
    void deliver() const;

private:
    OutputOptions _options;
    const InterruptWatch& _watch;
    std::string _path;
    std::string _dataModelPath;
    std::string _password;
    DataKind _kind;
    std::unique_ptr<HVSimpleFile> _collected; ///< the output for standard output
    std::unique_ptr<HVSimpleFile>
        _collectedDocument; ///< or its data model, if only that goes there
};
