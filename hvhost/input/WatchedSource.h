#pragma once

#include "VexaDataViews.h"

class InterruptWatch;

/// A data source that checks the watch: NextCase throws the watch's exception when the user
/// interrupts the command. For work on cases outside jobs, which a cancellation does not stop.
/// Borrows both.
class WatchedSource : public VEXA_DataView
{
public:
    WatchedSource(const VEXA_DataSource& source, const InterruptWatch& watch)
        : VEXA_DataView(source), _watch(watch)
    {
    }

    VEXA_InputCaseIterator* MakeIterator(ErrorMonitor* monitor) const override;
    VEXA_InputCaseIterator* MakeProjectedIterator(const std::vector<int>& columns,
                                                  ErrorMonitor* monitor) const override;

private:
    const InterruptWatch& _watch;
};
