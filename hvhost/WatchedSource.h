#pragma once

#include "VexaDataSource.h"

class InterruptWatch;

/// A data source whose cases stop coming when the user interrupts the command: NextCase throws what
/// the watch throws. For work on cases that no job does, and no job's end ends. Both are borrowed.
class WatchedSource : public VEXA_DataSource
{
public:
    WatchedSource(const VEXA_DataSource& source, const InterruptWatch& watch)
        : _source(source), _watch(watch)
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
    VEXA_InputCaseIterator* MakeIterator(ErrorMonitor* monitor) const override;
    VEXA_InputCaseIterator* MakeProjectedIterator(const std::vector<int>& columns,
                                                  ErrorMonitor* monitor) const override;

private:
    const VEXA_DataSource& _source;
    const InterruptWatch& _watch;
};
