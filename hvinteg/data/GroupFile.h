#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ErrorText.h"
#include "UserCaseFile.h"

/// The temporary data file of one split group. The constructor creates it with its dictionary; then
/// cases are added, the file is completed, and it can be opened for reading. One thread.
///
/// An error of the host's data library is shown in its output and is final: hasFailed returns true
/// from then on.
class GroupFile
{
public:
    /// The arguments are those of HVSplitRawData. The source is borrowed.
    GroupFile(const VEXA_DataSource& source, std::vector<int> variables,
              const std::vector<std::string>& names, const std::vector<MeasurementLevel>& levels);
    /// Closes and removes the file.
    ~GroupFile();
    GroupFile(const GroupFile&) = delete;
    GroupFile& operator=(const GroupFile&) = delete;

    bool hasFailed() const { return _hasFailed; }
    /// Marks the file as failed and shows the error with a level of TnError.
    void fail(const ErrorText& error, int level);

    /// Whether the file takes cases.
    bool takesCases() const { return _store != nullptr; }
    /// Requires that the file takes cases. Throws ErrorText.
    void addCase(const VEXA_Case& newCase);
    /// Copies from the current case to the end of its group. Cases without groups are one group.
    /// Requires that the file takes cases. Throws ErrorText.
    void copyGroup(VEXA_InputCaseIterator& cases);
    /// The buffer for composing a case; null after releaseBuffer or a failed start.
    VEXA_Case* bufferCase() const { return _bufferCase.get(); }
    void releaseBuffer();
    /// Gives the file its final name, so that it can be read. Returns false if the file has failed.
    bool complete();
    bool isComplete() const { return _isComplete; }

    /// Opens the complete file. Returns its cases, which are valid until closeReader; null on
    /// failure.
    const VEXA_DataSource* openReader();
    void closeReader();
    bool isOpenForReading() const { return _readSource != nullptr; }

    /// The host's name of the file.
    const std::string& name() const { return _name; }
    int caseCount() const { return _caseCount; }
    int variableCount() const { return static_cast<int>(_variables.size()); }

private:
    void create(const std::vector<std::string>& names, const std::vector<MeasurementLevel>& levels);
    void makeVariables(const std::vector<std::string>& names,
                       const std::vector<MeasurementLevel>& levels);
    void nameEmptyVariables(const std::vector<VEXA_Variable*>& made) const;
    void composeCase(const VEXA_InputCaseIterator& cases);

    const VEXA_DataSource& _source;
    std::vector<int> _variables; ///< columns of the source; negative for a variable without values
    std::vector<int> _widths;    ///< of the stored variables
    std::string _name;
    std::string _nativeName; ///< for the destructor, which must not allocate
    // The files may refer to their descriptions.
    UserCaseFileSpec _writeSpec;
    UserCaseFileSpec _readSpec;
    std::unique_ptr<UserOutputCaseFile> _outputFile;
    IndependentDataStore* _store = nullptr; ///< owned by the output file; null after it is closed
    std::vector<OBS> _caseBuffer;
    std::unique_ptr<VEXA_Case> _bufferCase;
    std::unique_ptr<UserInputCaseFile> _inputFile;
    const VEXA_DataSource* _readSource = nullptr;
    int _caseCount = 0;
    bool _isComplete = false;
    bool _hasFailed = false;
};
