#pragma once

#include <future>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "ErrorMonitor.h"
#include "UserCaseFile.h"
#include "VexaDataSource.h"
#include "data/HVRawDataIterator.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/CommonOptions.h"
#include "hvhost/input/DataKind.h"

class HVLUpdateDataModel;
class ErrorText;
class InterruptWatch;
class ReadableFile;

/// The error of the host's data library, with the user's name of the file and a hint. `kindOption`
/// is the option of the command for the kind of a file.
CommandFault inputFault(const ErrorText& error, const ReadableFile& file, const CsvForm& form = {},
                        const std::string& kindOption = "--from");

/// What a dataset is opened for.
enum class DatasetUse
{
    Cases,     ///< its dictionary and its cases
    Dictionary ///< only its dictionary; no cases may be read. Faster for large files
};

/// A data file that the host has opened as a dataset: its metadata, its weight and split, which the
/// user can change, and its cases for a job. Borrows the file, which must outlive the dataset.
class Dataset
{
public:
    /// Throws CommandFault (Input) for an unreadable file, with the position of the error. While a
    /// large file is opened, the watch is checked; its exceptions pass.
    Dataset(const InputOptions& options, const ReadableFile& file, DataKind kind,
            const CsvForm& form, const std::string& password, const InterruptWatch& watch,
            DatasetUse use = DatasetUse::Cases);
    ~Dataset();

    const VEXA_DataSource& source() const { return *_file->DataSource(); }
    const UserInputCaseFile& file() const { return *_file; }
    /// Reports how many values were replaced. Call it after the cases have been read.
    void finish() { _monitor.Finish(); }

    /// The column of a variable that the user names, in UTF-8, by the rule of placeOfName. Throws
    /// CommandFault (Usage) if there is no such variable. The message begins with `origin`, the
    /// option that names it, or with the file if `origin` is empty.
    int columnOf(const std::string& name, const std::string& origin) const;
    /// The name of a column's variable, in UTF-8.
    std::string nameOf(int column) const;
    /// The names of all variables by column, in UTF-8.
    std::vector<std::string> names() const;
    /// The storage of a column's values.
    CFField::StorageType storageOf(int column) const;

    /// The field of a column for jobs. `known` is the library's description of the variable.
    CFField served(int column, const CFField& known) const;

    /// The variable that weighs the cases; -1 for none. It is the file's own weight unless another
    /// one is set.
    int weight() const { return _weight; }
    /// The variables that split the file. They are the file's own unless others are set.
    const std::vector<int>& split() const { return _split; }
    /// Sets the weight. Throws CommandFault (Usage) if the variable does not exist or is not a
    /// number.
    void setWeight(const std::string& name);
    /// Sets the split variables. Throws CommandFault (Usage) if one does not exist.
    void setSplit(const std::vector<std::string>& names);

    /// All cases, unweighted. Made by the first call; the dataset owns them. Throws CommandFault
    /// (Input) if the cases cannot be read.
    HVRawDataIterator& cases();
    /// Adds metadata that variables and rows cannot express: which numbers are whole, which
    /// variable is the weight, measures and roles that the host does not have, and missing values
    /// that are served as values. Call it after cases.
    void complete(HVLUpdateDataModel& update) const;

private:
    std::unique_ptr<HVRawDataIterator> makeCases();

    /// Opens the host's data reader in parallel with the check of the file and the start of the
    /// Java virtual machine.
    std::future<void> _preload;
    const ReadableFile& _readable;
    VexaErrorMonitor _monitor{Reporter};
    std::unique_ptr<UserInputCaseFile> _file;
    int _weight = -1;
    std::vector<int> _split;
    mutable std::vector<CFField::StorageType> _storages;   ///< of all columns; filled by storageOf
    mutable std::unordered_map<std::string, int> _columns; ///< by exact name; filled by columnOf
    ProcedureDataSource _unweighted;
    std::unique_ptr<HVRawDataIterator> _cases;
};
