#pragma once

#include <memory>
#include <string>
#include <vector>

#include "RowDataIterator.h"
#include "support/HvintegExport.h"

class HVRunner;
class HVSimpleFile;

/// Turns a data file on disk into rows, by a small job that reads the file and writes it where the
/// engine hands rows out.
///
///     HVOutputIteratorFetcher fetcher(runner);
///     if (auto* rows = fetcher.Fetch(path, "", HVOutputIteratorFetcher::kCsv, {"day", "sales"}))
///         while (rows->nextRecord() == 0) ...
///     fetcher.Finalize();
///
/// The rows depend on the runner's execution: it runs no other job until Finalize. The thread is
/// the runner's.
class HVINTEG_EXPORT HVOutputIteratorFetcher
{
public:
    /// The form of the file: CSV without a line of names, or HVBF for any other number.
    enum HVDataFileType : int
    {
        kCsv = 0,
        kHvbf = 1
    };

    /// The runner is borrowed.
    explicit HVOutputIteratorFetcher(HVRunner& runner);
    HVOutputIteratorFetcher(const HVOutputIteratorFetcher&) = delete;
    HVOutputIteratorFetcher& operator=(const HVOutputIteratorFetcher&) = delete;
    /// Finalize.
    ~HVOutputIteratorFetcher();

    /// Runs the job, after a Finalize of what was fetched before. Paths are in the host's encoding;
    /// an empty data model path stands for none, no fields for all. The rows stay the fetcher's;
    /// null if the job failed or the engine threw while it ran, with everything released. What is
    /// thrown before the job runs passes.
    EmbeddedHV::RowDataIterator* Fetch(const std::string& dataPath,
                                       const std::string& dataModelPath, HVDataFileType type,
                                       const std::vector<std::string>& fields);
    /// Ends the rows, the execution and the files; may be called again.
    void Finalize();

private:
    std::string jobText(const std::string& dataPath, const std::string& dataModelPath,
                        HVDataFileType type, const std::vector<std::string>& fields) const;
    void FetchIterator(const std::string& text);

    HVRunner& _runner;
    EmbeddedHV::RowDataIterator* _iterator = nullptr; ///< the execution's
    std::unique_ptr<HVSimpleFile> _dataFile;
    std::unique_ptr<HVSimpleFile> _modelFile;
};
