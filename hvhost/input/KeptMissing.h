#pragma once

#include <memory>
#include <string>
#include <vector>

#include "CFField.h"

class CFMetaData;
class HVLUpdateDataModel;
class HVSimpleFile;
class UserInputCaseFile;

/// The values that a field declares missing, without numbers that its storage cannot hold, for
/// example 1.5 for integers. A job rejects those.
CFMissingValues possibleMissing(const CFField& field);

/// Makes the engine read values that their fields declare missing. The engine gets a data model
/// document without these declarations. They are made again after the reading, for the output of
/// the job.
class KeptMissing
{
public:
    explicit KeptMissing(const CFMetaData& model);
    explicit KeptMissing(const UserInputCaseFile& file);
    ~KeptMissing();
    KeptMissing(const KeptMissing&) = delete;
    KeptMissing& operator=(const KeptMissing&) = delete;

    /// Whether a field declares missing values. If not, there is no document.
    bool isNeeded() const { return !_declared.empty(); }
    /// The document, an absolute path. It exists as long as this object.
    const std::string& path() const { return _path; }
    void redeclare(HVLUpdateDataModel& update) const;

private:
    void take(const std::vector<CFField>& fields);

    std::vector<CFField> _declared;
    std::unique_ptr<HVSimpleFile> _document;
    std::string _path;
};
