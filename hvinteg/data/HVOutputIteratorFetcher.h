#pragma once

#include <memory>
#include <string>
#include <vector>

#include "RowDataIterator.h"
#include "support/HvintegExport.h"

class HVRunner;
class HVSimpleFile;

/// Reads a data file as rows. It runs a small job that copies the file into a form that the engine
/// returns as rows.
///
///     HVOutputIteratorFetcher fetcher(runner);
///     if (auto* rows = fetcher.Fetch(path, "", HVOutputIteratorFetcher::kCsv, {"day", "sales"}))
///         while (rows->nextRecord() == 0) ...
///     fetcher.Finalize();
///
/// The rows belong to the runner's execution: the runner must run no other job before Finalize.
/// Uses the thread of the runner.
class HVINTEG_EXPORT HVOutputIteratorFetcher
{
public:
    /// Format of the file: CSV without a header line; any other number is HVBF.
    enum HVDataFileType : int
    {
        kCsv = 0,
        kHvbf = 1
    };

    /// The runner is borrowed and must outlive the fetcher.
    explicit HVOutputIteratorFetcher(HVRunner& runner);
    HVOutputIteratorFetcher(const HVOutputIteratorFetcher&) = delete;
    HVOutputIteratorFetcher& operator=(const HVOutputIteratorFetcher&) = delete;
    /// Calls Finalize and ignores what it throws.
    ~HVOutputIteratorFetcher();

    /// Calls Finalize, runs the job and returns the rows, which the fetcher owns. Paths are in the
    /// host's encoding. An empty data model path means no data model; no fields means all fields.
    /// Returns null, with everything released, if the job fails or the engine throws while it runs.
    /// Exceptions from before the run are passed on.
    EmbeddedHV::RowDataIterator* Fetch(const std::string& dataPath,
                                       const std::string& dataModelPath, HVDataFileType type,
                                       const std::vector<std::string>& fields);
    /// Releases the rows, the execution and the files. May be called repeatedly. What the engine
    /// throws is passed on after the release.
    void Finalize();

private:
    HVINTEG_HIDDEN std::string jobText(const std::string& dataPath,
                                       const std::string& dataModelPath, HVDataFileType type,
                                       const std::vector<std::string>& fields) const;
    HVINTEG_HIDDEN void FetchIterator(const std::string& text);

    HVRunner& _runner;
    EmbeddedHV::RowDataIterator* _iterator = nullptr; ///< owned by the execution
    std::unique_ptr<HVSimpleFile> _dataFile;
    std::unique_ptr<HVSimpleFile> _modelFile;
};
