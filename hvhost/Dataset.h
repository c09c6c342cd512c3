#pragma once

#include <future>
#include <memory>
#include <string>
#include <vector>

#include "CommonOptions.h"
#include "DataKind.h"
#include "ErrorMonitor.h"
#include "UserCaseFile.h"
#include "VexaDataSource.h"
#include "data/HVRawDataIterator.h"

class HVLUpdateDataModel;
class InterruptWatch;
class ReadableFile;

/// A data file that the host has opened as a dataset, with what the host knows of it and the user
/// sets: the weight and the split of the file; and its cases as a job reads them. The file
/// is borrowed and must outlive the dataset.
class Dataset
{
public:
    /// Throws CommandFault (Input) for a file that cannot be read, with the place where it is
    /// wrong; and what the watch throws, which is asked while a large file is opened.
    Dataset(const InputOptions& options, const ReadableFile& file, DataKind kind,
            const CsvForm& form, const std::string& password, const InterruptWatch& watch);
    ~Dataset();

    const VEXA_DataSource& source() const { return *_file->DataSource(); }
    const UserInputCaseFile& file() const { return *_file; }
    /// Tells how many values could not be taken as they are; when the cases have been read.
    void finish() { _monitor.Finish(); }

    /// The column of a variable by its UTF-8 name, letter case apart. Throws CommandFault (Usage)
    /// that begins with `origin`, the option that names it or nothing, if there is none.
    int columnOf(const std::string& name, const std::string& origin) const;
    /// The name of a column's variable in UTF-8, and what its values are.
    std::string nameOf(int column) const;
    CFField::StorageType storageOf(int column) const;

    /// The field of a column as jobs get it; `known` is what the library makes of the variable.
    CFField served(int column, const CFField& known) const;

    /// The variables that weigh the cases and split the file: the file's own unless others are set.
    /// -1 for no weight. A weight must be a number; throws CommandFault (Usage).
    int weight() const { return _weight; }
    const std::vector<int>& split() const { return _split; }
    void setWeight(const std::string& name);
    void setSplit(const std::vector<std::string>& names);

    /// All cases, unweighted; made at the first call. Stays the dataset's. Throws CommandFault
    /// (Input) for cases that cannot be read.
    HVRawDataIterator& cases();
    /// Adds what is known of the fields beside what variables and rows can say: which numbers are
    /// whole, which variable weighs, measures and roles without a level or role of the host,
    /// missing values that are served as values. After cases.
    void complete(HVLUpdateDataModel& update) const;

private:
    std::unique_ptr<HVRawDataIterator> makeCases();

    /// Opens what the host reads its data with, while the file is looked at and the Java virtual
    /// machine starts.
    std::future<void> _preload;
    const ReadableFile& _readable;
    VexaErrorMonitor _monitor{Reporter};
    std::unique_ptr<UserInputCaseFile> _file;
    int _weight = -1;
    std::vector<int> _split;
    ProcedureDataSource _unweighted;
    std::unique_ptr<HVRawDataIterator> _cases;
};
