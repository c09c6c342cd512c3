#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "UserCaseFile.h"
#include "datafile/TextReasons.h"
#include "hvhost/base/CommonOptions.h"
#include "hvhost/base/JobOrigin.h"
#include "hvhost/base/ReadableFile.h"
#include "hvhost/input/DataKind.h"
#include "hvhost/input/JobFile.h"
#include "hvhost/input/TextHead.h"

class Dataset;
enum class DatasetUse;
class HVLRead;
class HVLUpdateDataModel;
class HVStatDataIterator;
class HVSimpleFile;
class InterruptWatch;
class KeptMissing;

/// Who reads the file of a command if its options do not say it.
enum class Reader
{
    Host,  ///< the command needs the dataset
    Either ///< the engine, unless something needs the host
};

/// A file that a command reads. Either the engine reads the file itself, which is fast and loses
/// nothing, or the host opens it as a dataset and serves its cases to the engine. Borrows the
/// watch.
class InputFile
{
public:
    /// Throws CommandFault: Input as ReadableFile does; Usage for an unclear kind, for options that
    /// the kind of file does not support, and for an invalid weight.
    InputFile(const InputOptions& options, FileOptions offered, const InterruptWatch& watch,
              Reader reader = Reader::Host);
    ~InputFile();

    /// What is known about a job that reads this file.
    JobOrigin origin() const;
    /// Makes the builder read this file.
    void configure(HVLRead& read) const;
    /// Adds the metadata that the reading does not provide. Call it after configure.
    void complete(HVLUpdateDataModel& update) const;
    /// Reports what remains to be said after the reading is done.
    void finish() const;
    /// Whether the file declares values missing. If the options make the engine read the file:
    /// whether such values are kept.
    bool declaresMissing() const;
    /// Makes the engine treat such values as missing although it keeps them.
    void excludeMissing();
    /// The kind of the file, or of the file that replaced it to be read.
    DataKind kind() const { return _kind; }
    /// The separator of a csv file; a comma for other kinds.
    char separator() const { return _form.separator; }
    /// The dataset; null if the engine reads the file.
    const Dataset* dataset() const { return _dataset.get(); }
    /// The dataset; null if the engine reads the file.
    Dataset* dataset() { return _dataset.get(); }
    /// The names of the fields that the job reads, in UTF-8. Empty if the engine reads the file and
    /// it cannot be opened here; the engine then reports the reason. Opens such a file. Throws what
    /// the watch throws.
    std::vector<std::string> names() const;
    /// Why fields of a file of text are texts; see datafile::textReasons. Reads the file again.
    /// Throws Fault, QueryError, and what the watch throws.
    std::vector<datafile::TextReason> textReasons() const;
    /// Whether the command has options for the form of a text.
    bool hasFormOptions() const { return _hasFormOptions; }
    /// The option for texts that are missing values.
    const std::string& missingOption() const { return _options.missingOption; }
    /// Who reads the file, and why, and how its text was understood, for the user.
    std::vector<std::string> notes() const;
    /// What may be wrong in the reading of the text, for the user.
    std::vector<std::string> doubts() const;
    /// The rows for the job; null if the engine reads the file.
    HVStatDataIterator* rows() const;

private:
    DataKind unpackedKind();
    bool needsImport() const;
    bool isImportedByHead() const;
    bool hasDictionary() const;
    void import();
    std::unique_ptr<HVSimpleFile> imported(std::vector<TextDoubt>& doubts) const;
    void refuseForEngine() const;
    bool isReadByHost(Reader reader);
    std::string hostReason() const;
    std::unique_ptr<Dataset> openDataset(DatasetUse use) const;
    const Dataset& known() const;
    void keepMissing();
    void keepMissingOfDataset();
    std::vector<std::string> namesForEngine() const;
    void configureFile(HVLRead& read) const;

    InputOptions _options;
    const InterruptWatch& _watch;
    FileOptions _offered;
    ReadableFile _file;
    std::optional<ReadableFile> _dataModel;
    std::string _password;
    DataKind _kind;
    bool _isImported = false;
    bool _hasFormOptions = true; ///< whether the command has options for the form of a text
    TextHead _head;              ///< of a csv file
    CsvForm _form;
    std::unique_ptr<Dataset> _dataset;
    mutable std::unique_ptr<Dataset>
        _known; ///< the dictionary of a file that the engine reads; opened when it is needed
    std::string _hostReason; ///< why the host reads the file
    std::unique_ptr<KeptMissing>
        _kept; ///< set if the engine reads the file and keeps user-missing values
};
