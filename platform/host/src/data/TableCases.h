#pragma once

#include <memory>
#include <vector>

#include "VexaDataSource.h"
#include "data/CaseColumn.h"
#include "data/CaseRoles.h"
#include "data/Relation.h"
#include "datafile/Duck.h"

/// A dictionary and a relation of the host's database, whose cases are streamed.
class TableCases : public VEXA_DataSource
{
public:
    /// One variable for each column of the relation.
    TableCases(std::vector<VEXA_Variable> variables, std::shared_ptr<const Relation> relation);

    /// Sets the monitor for readers without their own; borrowed.
    void setMonitor(ErrorMonitor* monitor) { _monitor = monitor; }
    void setWeight(int column) { _roles.weight = column; }
    void setSplit(std::vector<int> columns) { _roles.split = std::move(columns); }

    int ColumnCount() const override { return static_cast<int>(_variables.size()); }
    const VEXA_Variable& GetVariable(int column) const override;
    int GetWeightVarIndex() const override { return _roles.weight; }
    int GetNSplitVars() const override { return _roles.splitCount(); }
    int GetSplitVarIndex(int position) const override { return _roles.splitAt(position); }
    VEXA_InputCaseIterator* MakeIterator(ErrorMonitor* monitor) const override;
    VEXA_InputCaseIterator* MakeProjectedIterator(const std::vector<int>& columns,
                                                  ErrorMonitor* monitor) const override;

private:
    std::vector<VEXA_Variable> _variables;
    std::shared_ptr<const Relation> _relation;
    ErrorMonitor* _monitor = nullptr;
    CaseRoles _roles;
};

/// Iterates over cases from the database, a chunk at a time.
class TableCaseIterator final : public VEXA_InputCaseIterator, public VEXA_CaseBlock
{
public:
    /// `columns` are the relation's columns in the order of `buffers`. Throws ErrorText.
    TableCaseIterator(std::shared_ptr<const Relation> relation, const std::vector<int>& columns,
                      std::vector<CaseColumn> buffers, ErrorMonitor* monitor);

    int NextCase() override;
    double GetNumericValue(int column) const override { return GetObsPointer(column)->number; }
    const char* GetStringValue(int column) const override { return GetObsPointer(column)->text; }
    const OBS* GetObsPointer(int column) const override
    {
        return _values[static_cast<std::size_t>(column)];
    }
    long long GetCaseCount() const override { return _count; }
    std::size_t CasesAhead() override;
    const OBS* NumbersAhead(int column) const override;
    void Skip(std::size_t cases) override;

private:
    bool fetch();
    void move(std::size_t cases);
    void end();

    std::shared_ptr<const Relation> _relation;
    std::unique_ptr<datafile::duck::Connection> _connection;
    std::unique_ptr<datafile::duck::Result> _result;
    datafile::duck::Chunk _chunk;
    std::vector<CaseColumn> _buffers;
    std::vector<const OBS*> _values; ///< of the current case, in the buffers
    std::vector<std::size_t> _units; ///< distance of the values of consecutive cases
    ErrorMonitor* _monitor;
    std::size_t _rows = 0;
    std::size_t _row = 0;      ///< that _values point to
    bool _isBeforeRow = false; ///< the case of _row is ahead, and the current one is gone
    long long _count = 0;
};
