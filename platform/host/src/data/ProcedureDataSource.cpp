#include <string>
#include <utility>

#include "ErrorText.h"
#include "Journal.h"
#include "VexaDataSource.h"
#include "data/CaseRoles.h"
#include "data/ProcedureCases.h"

/// The columns as the procedure sees them. They are copies, because a procedure may change their
/// measurement levels.
struct ProcedureDataSource::Impl
{
    bool isColumn(int column) const
    {
        return column >= 0 && static_cast<std::size_t>(column) < variables.size();
    }

    const VEXA_DataSource* dataset = nullptr;
    std::vector<VEXA_Variable> variables;
    CaseRoles roles;
    std::vector<std::string> splitValues;
    bool splitEndCheck = true;
};

ProcedureDataSource::ProcedureDataSource() : _impl(std::make_unique<Impl>()) {}
ProcedureDataSource::~ProcedureDataSource() = default;

int ProcedureDataSource::ColumnCount() const
{
    return static_cast<int>(_impl->variables.size());
}

const VEXA_Variable& ProcedureDataSource::GetVariable(int column) const
{
    if (!_impl->isColumn(column))
        throw ErrorText("the procedure's data have no column " + std::to_string(column));
    return _impl->variables[static_cast<std::size_t>(column)];
}

int ProcedureDataSource::GetWeightVarIndex() const
{
    return _impl->roles.weight;
}

int ProcedureDataSource::GetNSplitVars() const
{
    return _impl->roles.splitCount();
}

int ProcedureDataSource::GetSplitVarIndex(int position) const
{
    return _impl->roles.splitAt(position);
}

VEXA_InputCaseIterator* ProcedureDataSource::MakeIterator(ErrorMonitor* monitor) const
{
    ProcedureCases::Group group;
    group.columns = _impl->roles.split;
    for (const int column : group.columns)
        group.variables.push_back(GetVariable(column));
    Impl& state = *_impl;
    group.begun = [&state](std::vector<std::string> values) {
        state.splitValues = std::move(values);
    };
    group.isWatched = [&state] { return state.splitEndCheck; };
    std::unique_ptr<VEXA_InputCaseIterator> cases;
    if (_impl->dataset)
        cases.reset(_impl->dataset->MakeIterator(monitor));
    return std::make_unique<ProcedureCases>(std::move(cases), std::move(group)).release();
}

VEXA_InputCaseIterator* ProcedureDataSource::MakeProjectedIterator(const std::vector<int>& columns,
                                                                   ErrorMonitor* monitor) const
{
    return _impl->dataset ? _impl->dataset->MakeProjectedIterator(columns, monitor)
                          : VEXA_DataSource::MakeProjectedIterator(columns, monitor);
}

MeasurementLevel ProcedureDataSource::GetMeasurementLevel(int column) const
{
    return _impl->isColumn(column) ? GetVariable(column).GetMeasurementLevel()
                                   : MeasurementLevel::Unknown;
}

int ProcedureDataSource::GetColumnType(int column) const
{
    return _impl->isColumn(column) ? GetVariable(column).GetType() : 0;
}

void ProcedureDataSource::SetMeasurementLevel(int column, MeasurementLevel level)
{
    if (_impl->isColumn(column))
        _impl->variables[static_cast<std::size_t>(column)].SetMeasurementLevel(level);
}

void ProcedureDataSource::SetSplitEndCheck(bool check)
{
    _impl->splitEndCheck = check;
}

bool ProcedureDataSource::SplitEndCheck() const
{
    return _impl->splitEndCheck;
}

void ProcedureDataSource::SetDataset(const VEXA_DataSource* dataset)
{
    _impl->dataset = dataset;
    _impl->variables.clear();
    _impl->roles.split.clear();
    _impl->splitValues.clear();
    _impl->roles.weight = dataset ? dataset->GetWeightVarIndex() : -1;
    for (int column = 0; dataset && column < dataset->ColumnCount(); ++column)
        _impl->variables.push_back(dataset->GetVariable(column));
    for (int i = 0; dataset && i < dataset->GetNSplitVars(); ++i)
        _impl->roles.split.push_back(dataset->GetSplitVarIndex(i));
}

void ProcedureDataSource::SetColumns(std::vector<std::string> names)
{
    SetDataset(nullptr);
    for (std::string& name : names) {
        _impl->variables.emplace_back(0);
        _impl->variables.back().SetName(std::move(name));
    }
}

void ProcedureDataSource::SetColumnTypes(const std::vector<int>& types)
{
    for (std::size_t i = 0; i < _impl->variables.size(); ++i) {
        VEXA_Variable typed(i < types.size() ? types[i] : 0);
        typed.SetName(_impl->variables[i].GetName());
        typed.SetMeasurementLevel(_impl->variables[i].GetMeasurementLevel());
        _impl->variables[i] = typed;
    }
}

void ProcedureDataSource::SetWeightVarIndex(int column)
{
    _impl->roles.weight = column;
}

void ProcedureDataSource::SetSplitVars(std::vector<int> columns)
{
    _impl->roles.split = std::move(columns);
}

void ProcedureDataSource::SetSplitValues(std::vector<std::string> values)
{
    _impl->splitValues = std::move(values);
}

std::vector<std::string> ProcedureDataSource::ColumnNames() const
{
    std::vector<std::string> names;
    for (const VEXA_Variable& variable : _impl->variables)
        names.push_back(variable.GetName());
    return names;
}

const std::vector<std::string>& ProcedureDataSource::SplitValues() const
{
    return _impl->splitValues;
}

void AdjustMeasurementLevels(ProcedureDataSource& source)
{
    HostJournal::instance().add({HostJournal::Kind::Output, "AdjustMeasurementLevels"});
    for (int column = 0; column < source.ColumnCount(); ++column) {
        if (source.GetMeasurementLevel(column) != MeasurementLevel::Unknown)
            continue;
        const bool isString = source.GetColumnType(column) > 0;
        source.SetMeasurementLevel(column,
                                   isString ? MeasurementLevel::Nominal : MeasurementLevel::Scale);
    }
}
