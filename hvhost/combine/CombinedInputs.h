#pragma once

#include <memory>
#include <string>
#include <vector>

#include "CFField.h"
#include "hvhost/base/JobOrigin.h"
#include "hvhost/combine/CombineOptions.h"
#include "hvhost/input/DataKind.h"
#include "hvhost/job/RecordChain.h"

class Dataset;
class HVLFunction;
class HVLUpdateDataModel;
class HVStatDataIterator;
class HostSession;
class InputFile;
class InterruptWatch;
class JNIHvlProgram;

/// Several files that one job reads. The host opens each as a dataset for its names and types. The
/// engine reads the records itself where it can, so that whole numbers of all digits are compared.
/// Borrows all arguments.
class CombinedInputs
{
public:
    /// `tags` are the names of the inputs in the job. Throws CommandFault as InputFile does, and
    /// Usage for a second use of standard input and for options that fit none of the files.
    CombinedInputs(const CombineOptions& options, const std::vector<std::string>& tags,
                   const InterruptWatch& watch);
    ~CombinedInputs();

    std::size_t count() const { return _files.size(); }
    const Dataset& dataset(std::size_t input) const;
    /// The user's name for a file.
    std::string name(std::size_t input) const;
    /// The tag of a file.
    const std::string& tag(std::size_t input) const { return _tags[input]; }
    /// The type of a field in the job.
    CFField::StorageType storage(std::size_t input, int column) const;
    /// Whether a column has a value. If not, its type means nothing. May read the whole column.
    bool hasValues(std::size_t input, int column) const;

    JobOrigin origin() const;
    std::vector<HVStatDataIterator*> rows() const;
    /// Warns if values that a file declares missing become system-missing without the user's
    /// consent.
    void warnOfMissing(HostSession& session) const;
    /// Reports what remains to be said after the reading is done.
    void finish() const;

    /// The file as the job reads it.
    const InputFile& file(std::size_t input) const
    {
        return _files[input].direct ? *_files[input].direct : *_files[input].served;
    }

private:
    struct File
    {
        InputOptions reading;
        std::unique_ptr<InputFile> served;
        std::unique_ptr<InputFile> direct; ///< null if only the host can read the file
    };

    void open(File& file, const std::string& tag, const InterruptWatch& watch);

    const CombineOptions& _options;
    std::vector<std::string> _tags;
    std::vector<File> _files;
};

/// The steps of a job that read one of the files. Borrows all arguments.
class CombinedInput
{
public:
    CombinedInput(JNIHvlProgram& program, const CombinedInputs& inputs, std::size_t input);
    ~CombinedInput();
    CombinedInput(const CombinedInput&) = delete;
    CombinedInput& operator=(const CombinedInput&) = delete;

    /// Changes the type of a field.
    void retype(const std::string& name, CFField::StorageType storage);
    /// Removes the role of the file's weight, because another input has one.
    void dropWeight(const Dataset& dataset);
    /// The last step. Call it after the changes, once.
    HVLFunction* last();

private:
    RecordChain _chain;
    std::unique_ptr<HVLUpdateDataModel> _changes;
};
