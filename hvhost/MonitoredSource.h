#pragma once

#include "VexaDataSource.h"

/// A data source whose monitor hears of each reading that brings none along, as that of a job does.
/// Both are borrowed.
class MonitoredSource : public VEXA_DataSource
{
public:
    MonitoredSource(const VEXA_DataSource& source, ErrorMonitor& monitor)
        : _source(source), _monitor(monitor)
    {
    }

    int ColumnCount() const override { return _source.ColumnCount(); }
    const VEXA_Variable& GetVariable(int column) const override
    {
        return _source.GetVariable(column);
    }
    int GetWeightVarIndex() const override { return _source.GetWeightVarIndex(); }
    int GetNSplitVars() const override { return _source.GetNSplitVars(); }
    int GetSplitVarIndex(int position) const override { return _source.GetSplitVarIndex(position); }
    VEXA_InputCaseIterator* MakeIterator(ErrorMonitor* monitor) const override
    {
        return _source.MakeIterator(monitor != nullptr ? monitor : &_monitor);
    }
    VEXA_InputCaseIterator* MakeProjectedIterator(const std::vector<int>& columns,
                                                  ErrorMonitor* monitor) const override
    {
        return _source.MakeProjectedIterator(columns, monitor != nullptr ? monitor : &_monitor);
    }

private:
    const VEXA_DataSource& _source;
    ErrorMonitor& _monitor;
};
