#pragma once

#include <memory>
#include <string>

#include "CommonOptions.h"
#include "DataKind.h"
#include "ErrorMonitor.h"
#include "UserCaseFile.h"
#include "data/HVRawDataIterator.h"

class HVLUpdateDataModel;
class ReadableFile;

/// A data file that the host has opened as a dataset, and its cases as a job reads them. The file
/// is borrowed and must outlive the dataset.
class Dataset
{
public:
    /// Throws CommandFault (Input) for a file that cannot be read, with the place where it is
    /// wrong.
    Dataset(const InputOptions& options, const ReadableFile& file, DataKind kind,
            const std::string& password);
    ~Dataset();

    const VEXA_DataSource& source() const { return *_file->DataSource(); }
    const UserInputCaseFile& file() const { return *_file; }
    /// Tells how many values could not be taken as they are; when the cases have been read.
    void finish() { _monitor.Finish(); }

    /// All cases, unweighted; made at the first call. Stays the dataset's. Throws CommandFault
    /// (Input) for cases that cannot be read.
    HVRawDataIterator& cases();
    /// Adds what the file tells of the fields beside what variables and rows can say: which numbers
    /// are whole, measures and roles without a level or role of the host, missing values that are
    /// served as values. After cases.
    void complete(HVLUpdateDataModel& update) const;

private:
    const ReadableFile& _readable;
    VexaErrorMonitor _monitor{Reporter};
    std::unique_ptr<UserInputCaseFile> _file;
    std::unique_ptr<HVRawDataIterator> _cases;
};
