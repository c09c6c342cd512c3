#pragma once

#include <memory>
#include <string>

#include "DataFileNames.h"
#include "datafile/FileTables.h"
#include "steps/JobContext.h"
#include "steps/OutputFiles.h"
#include "steps/Plan.h"

namespace EmbeddedHV {

/// What a write step says about its files.
struct FileOutputSettings
{
    std::string path;
    std::string modelPath; ///< empty if no data model document is wanted
    FileKind kind = FileKind::Csv;
    std::string password; ///< SAV only; empty for a file in the clear
};

/// Writes a data file and its data model document. Both get their names when both are whole.
class FileOutput : public Output
{
public:
    /// Looks at the destinations, makes nothing yet. Throws JobError. The context is borrowed.
    FileOutput(JobContext& context, FileOutputSettings settings, Fields fields);

    std::string target() const override { return _settings.path; }
    std::string statement(const std::string& select) override;
    void commit() override;

private:
    void seal();
    void forgetProfiles();
    std::string describedFields() const;
    void reportCutMissing() const;

    JobContext& _context;
    FileOutputSettings _settings;
    Fields _fields;
    OutputFiles _files;
    std::unique_ptr<ScratchFile> _plain; ///< what is to be sealed
};

} // namespace EmbeddedHV
