#pragma once

#include <memory>
#include <string>

#include "DataFileNames.h"
#include "datafile/FieldNames.h"
#include "datafile/FileKind.h"
#include "runtime/WrittenFile.h"
#include "steps/Plan.h"

namespace EmbeddedHV {

class RowSource;
struct CsvReadSettings;
struct FileOutputSettings;
struct JobContext;
struct ParquetReadSettings;

/// How the steps of a job read and write records outside the backend. A path is what
/// FileSpace::resolve returns. Used by the thread that runs the job. All operations throw JobError.
class DataFiles
{
public:
    virtual ~DataFiles() = default;

    /// Whether a file of this path exists. Never throws.
    virtual bool exists(const std::string& path) const = 0;
    /// Checks that a file can be read, if that is known before it is planned.
    virtual void checkInput(const std::string& path, FileKind kind,
                            const std::string& step) const = 0;
    /// The content of a data model document.
    virtual std::string document(const std::string& path, const std::string& step) const = 0;

    virtual NodePtr csv(JobContext& context, const CsvReadSettings& settings) const = 0;
    /// An HVBF or SAV file.
    virtual NodePtr parquet(JobContext& context, const ParquetReadSettings& settings) const = 0;
    /// The records of a row iterator. The result has no fields yet. Borrows the source.
    virtual NodePtr rows(JobContext& context, RowSource& source) const = 0;
    /// A file that the job has written, in a form that this process can read.
    virtual WrittenFile fetched(JobContext& context, const WrittenFile& file) const = 0;
    virtual std::unique_ptr<Output> output(JobContext& context, const FileOutputSettings& settings,
                                           const Fields& fields) const = 0;

    /// Collects records of a cluster into a table of the local session. `step` is the component
    /// that needs them, and `fields` are those that it reads. Null if the backend is local.
    virtual std::unique_ptr<Stage> collection(JobContext&, const std::string& /*step*/,
                                              const Fields& /*fields*/) const
    {
        return nullptr;
    }
    /// A relation of the local session as one of the backend. `step` needs the records.
    virtual NodePtr sent(NodePtr local, const std::string& /*step*/) const { return local; }
};

/// Files of this machine, which the embedded database reads and writes itself.
std::unique_ptr<const DataFiles> localFiles();

} // namespace EmbeddedHV
