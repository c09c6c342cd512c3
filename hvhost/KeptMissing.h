#pragma once

#include <memory>
#include <string>
#include <vector>

#include "CFField.h"

class CFMetaData;
class HVLUpdateDataModel;
class HVSimpleFile;
class UserInputCaseFile;

/// What a field declares missing, without the numbers that no value of it can be, as 1.5 of whole
/// ones: a job refuses those.
CFMissingValues possibleMissing(const CFField& field);

/// Has the engine read values that their fields declare missing: the document that it is given
/// declares none, and the declarations are made again behind the reading, for what the job writes.
class KeptMissing
{
public:
    explicit KeptMissing(const CFMetaData& model);
    explicit KeptMissing(const UserInputCaseFile& file);
    ~KeptMissing();
    KeptMissing(const KeptMissing&) = delete;
    KeptMissing& operator=(const KeptMissing&) = delete;

    /// Whether any field declares a value missing; without one there is no document.
    bool isNeeded() const { return !_declared.empty(); }
    /// The document, an absolute path; it lives as long as this object.
    const std::string& path() const { return _path; }
    void redeclare(HVLUpdateDataModel& update) const;

private:
    void take(const std::vector<CFField>& fields);

    std::vector<CFField> _declared;
    std::unique_ptr<HVSimpleFile> _document;
    std::string _path;
};
