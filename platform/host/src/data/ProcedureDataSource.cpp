#include "VexaDataSource.h"

#include <utility>

#include "Journal.h"

struct ProcedureDataSource::Impl
{
    bool isColumn(int column) const
    {
        return column >= 0 && static_cast<std::size_t>(column) < names.size();
    }

    std::vector<std::string> names;
    std::vector<int> types;
    std::vector<MeasurementLevel> levels;
    int weightColumn = -1;
    std::vector<int> splitColumns;
    std::vector<std::string> splitValues;
    bool splitEndCheck = true;
};

ProcedureDataSource::ProcedureDataSource() : _impl(std::make_unique<Impl>()) {}
ProcedureDataSource::~ProcedureDataSource() = default;

int ProcedureDataSource::ColumnCount() const
{
    return static_cast<int>(_impl->names.size());
}

int ProcedureDataSource::GetWeightVarIndex() const
{
    return _impl->weightColumn;
}

int ProcedureDataSource::GetNSplitVars() const
{
    return static_cast<int>(_impl->splitColumns.size());
}

int ProcedureDataSource::GetSplitVarIndex(int position) const
{
    if (position < 0 || position >= GetNSplitVars())
        return -1;
    return _impl->splitColumns[static_cast<std::size_t>(position)];
}

MeasurementLevel ProcedureDataSource::GetMeasurementLevel(int column) const
{
    return _impl->isColumn(column) ? _impl->levels[static_cast<std::size_t>(column)]
                                   : MeasurementLevel::Unknown;
}

int ProcedureDataSource::GetColumnType(int column) const
{
    return _impl->isColumn(column) ? _impl->types[static_cast<std::size_t>(column)] : 0;
}

void ProcedureDataSource::SetMeasurementLevel(int column, MeasurementLevel level)
{
    if (_impl->isColumn(column))
        _impl->levels[static_cast<std::size_t>(column)] = level;
}

void ProcedureDataSource::SetSplitEndCheck(bool check)
{
    _impl->splitEndCheck = check;
}

bool ProcedureDataSource::SplitEndCheck() const
{
    return _impl->splitEndCheck;
}

void ProcedureDataSource::SetColumns(std::vector<std::string> names)
{
    _impl->names = std::move(names);
    _impl->types.assign(_impl->names.size(), 0);
    _impl->levels.assign(_impl->names.size(), MeasurementLevel::Unknown);
}

void ProcedureDataSource::SetColumnTypes(std::vector<int> types)
{
    types.resize(_impl->names.size());
    _impl->types = std::move(types);
}

void ProcedureDataSource::SetWeightVarIndex(int column)
{
    _impl->weightColumn = column;
}

void ProcedureDataSource::SetSplitVars(std::vector<int> columns)
{
    _impl->splitColumns = std::move(columns);
}

void ProcedureDataSource::SetSplitValues(std::vector<std::string> values)
{
    _impl->splitValues = std::move(values);
}

const std::vector<std::string>& ProcedureDataSource::ColumnNames() const
{
    return _impl->names;
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
