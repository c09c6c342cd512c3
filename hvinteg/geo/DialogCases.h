#pragma once

#include <memory>
#include <string>
#include <vector>

#include "UserCaseFile.h"
#include "data/HVRawDataIterator.h"

/// What data a dialog means: a dataset of the host or, with kNoDataset, a file. Variables by name,
/// all of them for none, and the measurement level that each of them is to have, if not their own.
/// Path and names are in the host's encoding.
struct DialogChoice
{
    LocallyUniqueID dataset;
    const std::string& path;
    std::vector<std::string> variables;
    std::vector<MeasurementLevel> levels = {};
};

/// The cases that a dialog works on, for the time of one request: those of a dataset of the host,
/// or those of a data file.
class DialogCases
{
public:
    /// `name` is what jobs read the rows by. Null, with the reason in UTF-8, for a dataset or a
    /// file that cannot be opened; the reason is empty if no file is named.
    static std::unique_ptr<DialogCases> open(const DialogChoice& choice, const char* name,
                                             std::string& reason);

    /// Of a file that is open already, or of the dataset if there is none.
    DialogCases(std::unique_ptr<UserInputCaseFile> file, const DialogChoice& choice,
                const char* name);

    HVRawDataIterator& rows() { return *_rows; }

private:
    // The rows read from the file, so they go first.
    std::unique_ptr<UserInputCaseFile> _file;
    std::unique_ptr<HVRawDataIterator> _rows;
};
