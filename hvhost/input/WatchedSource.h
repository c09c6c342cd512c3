#pragma once

#include "VexaDataSource.h"

class InterruptWatch;

/// A data source that checks the watch: NextCase throws the watch's exception when the user
/// interrupts the command. For work on cases outside jobs, which a cancellation does not stop.
/// Borrows both.
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
