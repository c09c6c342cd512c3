#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "CFField.h"
#include "HostExport.h"
#include "VexaDataSource.h"

/// Opens ahead what the first data file would have to wait for. A host that has a thread to spare
/// calls it there while it does something else. Any thread, at any time; a failure shows when a
/// file is opened.
HOST_API void PreloadCaseFiles();

/// The forms of a data file.
enum class CaseFileKind
{
    ByName, ///< by the extension: .csv; .sav; .hvbf and .parquet
    Csv,
    Sav,
    Parquet
};

/// How a CSV file separates its fields, and whether its numbers are written as in 1.234,5.
struct CsvForm
{
    char separator = ',';
    bool decimalComma = false;

    bool isPlain() const { return separator == ',' && !decimalComma; }
};

/// Which data file is meant, and how it is to be taken.
class HOST_API UserCaseFileSpec
{
public:
    /// `name` is in the host's encoding and spelling. `asIs`: the name is taken as it stands, not
    /// completed by ".sav" where it has no extension. `forOutput`: the file is to be written. False
    /// for an empty name.
    bool Init(const std::string& name, bool asIs, bool forOutput);

    /// What a plain Init leaves at its default: a form by the name, no password, a first record of
    /// names, commas and UTF-8 in a CSV file, variables that declare missing what the file does.
    /// Without these declarations a text that is not there is missing still.
    void SetKind(CaseFileKind kind) { _kind = kind; }
    void SetPassword(std::string password) { _password = std::move(password); }
    void SetHeader(bool hasHeader) { _hasHeader = hasHeader; }
    void SetCodePage(std::string codePage) { _codePage = std::move(codePage); }
    void SetCsvForm(CsvForm form) { _csvForm = form; }
    void SetDeclaresMissing(bool declaresMissing) { _declaresMissing = declaresMissing; }
    /// Hears of values that a case cannot hold as they are, from whatever reads the cases without a
    /// monitor of its own. Borrowed, and lives as long as the file.
    void SetMonitor(ErrorMonitor* monitor) { _monitor = monitor; }
    /// Called now and then while the file is opened, which takes long for a large one. What it
    /// throws ends that, and passes.
    void SetLook(std::function<void()> look) { _look = std::move(look); }

    const std::string& GetName() const { return _name; }
    bool IsForOutput() const { return _forOutput; }
    /// Never ByName: a name without a known extension is SAV.
    CaseFileKind GetKind() const;
    const std::string& GetPassword() const { return _password; }
    bool HasHeader() const { return _hasHeader; }
    const std::string& GetCodePage() const { return _codePage; }
    const CsvForm& GetCsvForm() const { return _csvForm; }
    bool DeclaresMissing() const { return _declaresMissing; }
    ErrorMonitor* GetMonitor() const { return _monitor; }
    void Look() const
    {
        if (_look)
            _look();
    }

private:
    std::string _name;
    bool _forOutput = false;
    CaseFileKind _kind = CaseFileKind::ByName;
    std::string _password;
    bool _hasHeader = true;
    std::string _codePage;
    CsvForm _csvForm;
    bool _declaresMissing = true;
    ErrorMonitor* _monitor = nullptr;
    std::function<void()> _look;
};

/// A data file that is open for reading. Its cases are streamed: memory does not grow with the
/// file.
class HOST_API UserInputCaseFile
{
public:
    /// Opens the file and reads its dictionary; of a CSV file, and of one that another program
    /// made, the whole content, to know types and widths. `procedure`, if not null, gets the file
    /// as its dataset for as long as this object lives. Throws ErrorText.
    UserInputCaseFile(const UserCaseFileSpec& spec, ProcedureDataSource* procedure);
    ~UserInputCaseFile();
    UserInputCaseFile(const UserInputCaseFile&) = delete;
    UserInputCaseFile& operator=(const UserInputCaseFile&) = delete;

    /// Lives as long as this object. Null if no file was named.
    const VEXA_DataSource* DataSource() const;
    /// How many cases there are.
    long long CaseCount() const;
    /// What the file itself says of a column, as a field of a job, in UTF-8: whole numbers,
    /// measures and roles that a variable has no word for. Lives as long as this object.
    const CFField& Field(int column) const;
    /// The lines of the file's documents, in the host's encoding, and the encoding that it was
    /// written in.
    const std::vector<std::string>& Documents() const;
    const std::string& Encoding() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};

/// A dataset that is being made, case by case. The order: variables, weight, split and documents,
/// CommitDictionary, cases, Close. Operations out of order, and failures, throw ErrorText.
class HOST_API IndependentDataStore : public VEXA_DataSource
{
public:
    /// Adds a copy of the variable. The result stays the store's, and may be changed until the
    /// dictionary is committed.
    virtual VEXA_Variable* MakeVariable(const VEXA_Variable& variable) = 0;
    virtual void SetWeightVar(int column) = 0;
    virtual void SetSplitVars(const std::vector<int>& columns) = 0;
    virtual void SetDocuments(const std::vector<std::string>& lines) = 0;
    virtual void CommitDictionary() = 0;
    /// How many units a case takes.
    virtual int GetObsAreaSize() const = 0;
    virtual void AddCase(const VEXA_Case& newCase) = 0;
    /// Writes what is not yet written, and gives the file its name.
    virtual void Close() = 0;
};

/// A data file that is open for writing. It appears under its name when its store is closed; a file
/// that is never closed leaves nothing.
class HOST_API UserOutputCaseFile
{
public:
    /// Nothing is open for a spec that names no file or is not for output. Throws ErrorText.
    explicit UserOutputCaseFile(const UserCaseFileSpec& spec);
    ~UserOutputCaseFile();
    UserOutputCaseFile(const UserOutputCaseFile&) = delete;
    UserOutputCaseFile& operator=(const UserOutputCaseFile&) = delete;

    /// Lives as long as this object. Null if no file for output was named.
    IndependentDataStore* DataSource() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
