#pragma once

#include <future>
#include <memory>
#include <string>

#include "CommonOptions.h"
#include "DataKind.h"
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

    /// All cases, unweighted; made at the first call. Stays the dataset's.
    HVRawDataIterator& cases();
    /// What is known of the fields beside what the row protocol can say: which numbers are whole,
    /// which variable weighs, which split the file. False if there is nothing to add.
    bool complete(HVLUpdateDataModel& update) const;

private:
    /// Opens what the host reads its data with, while the file is looked at and the Java virtual
    /// machine starts.
    std::future<void> _preload;
    bool _keepsUserMissing;
    std::unique_ptr<UserInputCaseFile> _file;
    std::unique_ptr<HVRawDataIterator> _cases;
};
