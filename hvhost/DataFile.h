#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "CommonOptions.h"
#include "DataKind.h"
#include "JobOrigin.h"
#include "ReadableFile.h"
#include "UserCaseFile.h"

class Dataset;
class HVLRead;
class HVLUpdateDataModel;
class HVStatDataIterator;
class HVLWrite;
class HVSimpleFile;
class InterruptWatch;
class KeptMissing;

/// Whether a command has the options that a hint may speak of.
enum class FileOptions
{
    Offered,
    None
};

/// A file that a command reads, checked: as a dataset of the host, whose cases are served to the
/// engine, or, if the options say so or only it can, by the engine.
class InputFile
{
public:
    /// Throws CommandFault: Input as ReadableFile, Usage for a kind that is not clear and for
    /// options that the kind of file does not take, or a weight that is none.
    InputFile(const InputOptions& options, FileOptions offered, const InterruptWatch& watch);
    ~InputFile();

    /// What is known of a job that reads it.
    JobOrigin origin() const;
    /// Has the builder read this file.
    void configure(HVLRead& read) const;
    /// Adds what the reading itself cannot say of the fields; after configure.
    void complete(HVLUpdateDataModel& update) const;
    /// Has the host tell what is left to say of the reading, once it is done.
    void finish() const;
    /// Whether the file declares values missing; false if the engine reads it.
    bool declaresMissing() const;
    /// What separates the fields of a csv file; a comma for another kind.
    char separator() const { return _form.separator; }
    /// The dataset, and the rows that the job is handed; null if the engine reads the file.
    const Dataset* dataset() const { return _dataset.get(); }
    Dataset* dataset() { return _dataset.get(); }
    HVStatDataIterator* rows() const;

private:
    void refuseOptions() const;
    void refuseForEngine() const;
    void openDataset();
    void keepMissing();
    void configureFile(HVLRead& read) const;

    InputOptions _options;
    const InterruptWatch& _watch;
    FileOptions _offered;
    ReadableFile _file;
    std::optional<ReadableFile> _dataModel;
    std::string _password;
    DataKind _kind;
    CsvForm _form;
    std::unique_ptr<Dataset> _dataset;
    std::unique_ptr<KeptMissing> _kept; ///< where the engine reads and keeps user-missing values
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
    /// Whether it tells which field is a weight: by itself, or by a document beside it.
    bool keepsWeight() const { return _kind != DataKind::Csv || !_options.dataModel.empty(); }
    /// The files that the job writes, and what the user calls them.
    std::vector<JobOrigin::File> origins() const;
    /// Copies what was written to standard output, if it is to go there.
    void deliver() const;

private:
    OutputOptions _options;
    const InterruptWatch& _watch;
    std::string _path;
    std::string _dataModelPath;
    std::string _password;
    DataKind _kind;
    std::unique_ptr<HVSimpleFile> _collected;         ///< what goes to standard output
    std::unique_ptr<HVSimpleFile> _collectedDocument; ///< or its data model, which alone can
};
