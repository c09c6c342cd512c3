#pragma once

#include <memory>
#include <string>

#include "DataFileNames.h"
#include "datafile/FileKind.h"
#include "datafile/ScratchFile.h"
#include "steps/JobContext.h"
#include "steps/OutputFiles.h"
#include "steps/Plan.h"

namespace EmbeddedHV {

/// The settings of a write step for its files.
struct FileOutputSettings
{
    std::string path;
    std::string modelPath; ///< empty: no data model document
    FileKind kind = FileKind::Csv;
    std::string password; ///< SAV only; empty: not encrypted
};

/// Writes a data file and its data model document. Both get their final names after both are
/// complete.
class FileOutput : public Output
{
public:
    /// Checks the destinations. Creates no file yet. Borrows the context, and the dialect in which
    /// the statement is written. Throws JobError.
    FileOutput(JobContext& context, FileOutputSettings settings, Fields fields,
               const Dialect& dialect);

    std::string target() const override { return _settings.path; }
    bool writesFile() const override { return true; }
    std::string statement(const std::string& select) override;
    void commit() override;

private:
    void seal();
    void forgetProfiles();
    void describeFields(FileTarget& target) const;
    void reportCutMissing() const;

    JobContext& _context;
    const Dialect& _dialect;
    FileOutputSettings _settings;
    Fields _fields;
    OutputFiles _files;
    std::unique_ptr<ScratchFile> _plain; ///< the file before it is encrypted
};

} // namespace EmbeddedHV
