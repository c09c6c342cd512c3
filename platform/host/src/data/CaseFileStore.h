#pragma once

#include <memory>
#include <string>
#include <vector>

#include "CFField.h"
#include "UserCaseFile.h"
#include "data/CaseRoles.h"
#include "data/CaseTable.h"
#include "text/CodePage.h"

/// A SAV file that is being written. The cases are kept in a table and written when the store
/// closes, because only all values show whether a date is a whole day.
class CaseFileStore : public IndependentDataStore
{
public:
    explicit CaseFileStore(const UserCaseFileSpec& spec);

    int ColumnCount() const override { return static_cast<int>(_variables.size()); }
    const VEXA_Variable& GetVariable(int column) const override;
    int GetWeightVarIndex() const override { return _roles.weight; }
    int GetNSplitVars() const override { return _roles.splitCount(); }
    int GetSplitVarIndex(int position) const override { return _roles.splitAt(position); }
    VEXA_InputCaseIterator* MakeIterator(ErrorMonitor* monitor) const override;

    VEXA_Variable* MakeVariable(const VEXA_Variable& variable) override;
    void SetWeightVar(int column) override;
    void SetSplitVars(const std::vector<int>& columns) override;
    void SetDocuments(const std::vector<std::string>& lines) override;
    void CommitDictionary() override;
    int GetObsAreaSize() const override;
    void AddCase(const VEXA_Case& newCase) override;
    void Close() override;

private:
    void needOpenDictionary() const;
    void write();
    using Storages = std::vector<CFField::StorageType>;
    Storages storages();
    std::string selectAsStored(const Storages& storages) const;
    std::string copyStatement(const std::string& target);
    std::string dictionary(const Storages& storages) const;

    UserCaseFileSpec _spec;
    std::string _path;
    std::vector<std::unique_ptr<VEXA_Variable>> _variables; ///< callers may hold them
    CaseRoles _roles;
    std::vector<std::string> _documents;
    std::shared_ptr<CodePage> _page;
    std::string _converted;
    std::unique_ptr<CaseTable> _table; ///< exists while cases are added
    bool _committed = false;
};
