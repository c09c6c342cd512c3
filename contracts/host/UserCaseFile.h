#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "CFField.h"
#include "HostExport.h"
#include "VexaDataSource.h"

/// Prepares in advance what the first data file needs. A host may call it on a spare thread. Any
/// thread, at any time. A failure is reported when a file is opened.
HOST_API void PreloadCaseFiles();

/// Formats of data files.
enum class CaseFileKind
{
    ByName, ///< by extension: .csv; .sav; .hvbf and .parquet
    Csv,    ///< a text file; see CsvForm
    Sav,    ///< the host's data file, with a dictionary; may be encrypted
    Parquet ///< a column file of other programs, or an HVBF file
};

/// The field separator of a CSV file, and whether numbers are written as 1.234,5.
struct CsvForm
{
    char separator = ',';      ///< between the fields of a line
    bool decimalComma = false; ///< whether 1.234,5 is a number

    /// Whether the file uses commas between fields and decimal points.
    bool isPlain() const { return separator == ',' && !decimalComma; }
};

/// Describes a data file and how to read or write it.
class HOST_API UserCaseFileSpec
{
public:
    /// Sets the name, in the host's encoding and spelling. Without `asIs`, ".sav" is appended to a
    /// name without extension. `forOutput`: the file is to be written. Returns false for an empty
    /// name.
    bool Init(const std::string& name, bool asIs, bool forOutput);

    /// Sets the format. The default is by name.
    void SetKind(CaseFileKind kind) { _kind = kind; }
    /// Sets the password; none by default.
    void SetPassword(std::string password) { _password = std::move(password); }
    /// Sets whether a CSV file begins with a line of names; true by default.
    void SetHeader(bool hasHeader) { _hasHeader = hasHeader; }
    /// Sets the code page of a CSV file; UTF-8 by default.
    void SetCodePage(std::string codePage) { _codePage = std::move(codePage); }
    /// Sets separator and decimal sign of a CSV file.
    void SetCsvForm(CsvForm form) { _csvForm = form; }
    /// Sets whether variables declare the missing values that the file declares; true by default.
    /// Otherwise a missing text is still read as missing.
    void SetDeclaresMissing(bool declaresMissing) { _declaresMissing = declaresMissing; }
    /// Sets whether only the dictionary is wanted, and no cases; false by default. If so, the
    /// content of a Parquet file is not read to determine the widths of texts: a text without a
    /// declared width gets the greatest width.
    void SetDictionaryOnly(bool dictionaryOnly) { _dictionaryOnly = dictionaryOnly; }
    /// Sets the monitor for values that a case cannot hold unchanged. It is used by readers without
    /// their own monitor. Borrowed; must outlive the file.
    void SetMonitor(ErrorMonitor* monitor) { _monitor = monitor; }
    /// Sets a function that is called repeatedly while the file is opened, which is slow for a
    /// large one. An exception of the function ends the opening and is passed on.
    void SetLook(std::function<void()> look) { _look = std::move(look); }

    /// The name, completed as Init describes.
    const std::string& GetName() const { return _name; }
    /// Whether the file is to be written.
    bool IsForOutput() const { return _forOutput; }
    /// The format; never ByName. A name without a known extension is SAV.
    CaseFileKind GetKind() const;
    /// The password; empty for none.
    const std::string& GetPassword() const { return _password; }
    /// Whether a CSV file begins with a line of names.
    bool HasHeader() const { return _hasHeader; }
    /// The code page of a CSV file; empty for the default.
    const std::string& GetCodePage() const { return _codePage; }
    /// Separator and decimal sign of a CSV file.
    const CsvForm& GetCsvForm() const { return _csvForm; }
    /// Whether variables declare the missing values of the file.
    bool DeclaresMissing() const { return _declaresMissing; }
    /// Whether only the dictionary is wanted.
    bool IsDictionaryOnly() const { return _dictionaryOnly; }
    /// The borrowed monitor, or null.
    ErrorMonitor* GetMonitor() const { return _monitor; }
    /// Calls the function of SetLook, if it is set.
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
    bool _dictionaryOnly = false;
    ErrorMonitor* _monitor = nullptr;
    std::function<void()> _look;
};

/// A data file that is open for reading. Cases are streamed, so memory does not grow with the file.
class HOST_API UserInputCaseFile
{
public:
    /// Opens the file and reads its dictionary. Reads the whole content of a CSV file, or of a file
    /// from another program, to determine types and widths, unless only a dictionary is wanted. A
    /// non-null `procedure` uses the file as its dataset as long as this object lives. Throws
    /// ErrorText.
    UserInputCaseFile(const UserCaseFileSpec& spec, ProcedureDataSource* procedure);
    ~UserInputCaseFile();
    UserInputCaseFile(const UserInputCaseFile&) = delete;
    UserInputCaseFile& operator=(const UserInputCaseFile&) = delete;

    /// The dataset, valid as long as this object. Null if the name is empty.
    const VEXA_DataSource* DataSource() const;
    /// The number of cases.
    long long CaseCount() const;
    /// The description of a column in the file itself, as a field of a job, in UTF-8: integers,
    /// measures and roles that a variable cannot express. Valid as long as this object.
    const CFField& Field(int column) const;
    /// The lines of the file's documents, in the host's encoding.
    const std::vector<std::string>& Documents() const;
    /// The encoding that the file was written in.
    const std::string& Encoding() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};

/// A dataset that is written case by case. Required order: variables, weight, split and documents,
/// CommitDictionary, cases, Close. Operations out of order, and failures, throw ErrorText.
class HOST_API IndependentDataStore : public VEXA_DataSource
{
public:
    /// Adds a copy of the variable. The store owns the result, which may be changed until
    /// CommitDictionary.
    virtual VEXA_Variable* MakeVariable(const VEXA_Variable& variable) = 0;
    /// Sets the weight variable by its 0-based column.
    virtual void SetWeightVar(int column) = 0;
    /// Sets the split variables by their 0-based columns.
    virtual void SetSplitVars(const std::vector<int>& columns) = 0;
    /// Sets the lines of the documents, in the host's encoding.
    virtual void SetDocuments(const std::vector<std::string>& lines) = 0;
    /// Ends the dictionary; cases may be added afterwards.
    virtual void CommitDictionary() = 0;
    /// The number of units of a case.
    virtual int GetObsAreaSize() const = 0;
    /// Appends a copy of the case.
    virtual void AddCase(const VEXA_Case& newCase) = 0;
    /// Writes the remaining data and gives the file its final name.
    virtual void Close() = 0;
};

/// A data file that is open for writing. It gets its final name when its store is closed. A file
/// that is not closed is removed.
class HOST_API UserOutputCaseFile
{
public:
    /// Opens the file. Opens nothing if its name is empty or `spec` is not for output. Throws
    /// ErrorText.
    explicit UserOutputCaseFile(const UserCaseFileSpec& spec);
    ~UserOutputCaseFile();
    UserOutputCaseFile(const UserOutputCaseFile&) = delete;
    UserOutputCaseFile& operator=(const UserOutputCaseFile&) = delete;

    /// The store, valid as long as this object. Null if nothing is open.
    IndependentDataStore* DataSource() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
