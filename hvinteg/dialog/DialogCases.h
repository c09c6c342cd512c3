#pragma once

#include <memory>
#include <string>
#include <vector>

#include "UserCaseFile.h"
#include "data/HVRawDataIterator.h"

/// The data that a dialog works on: a dataset of the host or, with kNoDataset, a file. An empty
/// list of variables means all of them. Each variable may have a measurement level that replaces
/// its own. Path and names are in the host's encoding.
struct DialogChoice
{
    LocallyUniqueID dataset;
    const std::string& path;
    std::vector<std::string> variables;
    std::vector<MeasurementLevel> levels = {};
};

/// The cases of a dataset or a data file, open during one request of a dialog.
class DialogCases
{
public:
    /// Opens the cases. `name` is the name of the rows in jobs. Returns null if the dataset or file
    /// cannot be opened. `reason` then receives the host's text in UTF-8, or is unchanged if the
    /// file has no data source.
    static std::unique_ptr<DialogCases> open(const DialogChoice& choice, const char* name,
                                             std::string& reason);

    /// Uses a file that is open already, or the dataset if `file` is null.
    DialogCases(std::unique_ptr<UserInputCaseFile> file, const DialogChoice& choice,
                const char* name);

    HVRawDataIterator& rows() { return *_rows; }

private:
    // Declared first, so that it is destroyed after the rows that read from it.
    std::unique_ptr<UserInputCaseFile> _file;
    std::unique_ptr<HVRawDataIterator> _rows;
};
