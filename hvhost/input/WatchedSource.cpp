#include "hvhost/input/WatchedSource.h"

#include <memory>
#include <utility>

#include "hvhost/base/InterruptWatch.h"

namespace {

/// The number of cases between two checks of the watch.
constexpr long long kCasesBetweenLooks = 1024;

class WatchedCases : public VEXA_InputCaseIterator
{
public:
    WatchedCases(std::unique_ptr<VEXA_InputCaseIterator> cases, const InterruptWatch& watch)
        : _cases(std::move(cases)), _watch(watch)
    {
    }

    int NextCase() override
    {
        if (_cases->GetCaseCount() % kCasesBetweenLooks == 0)
            _watch.check();
        return _cases->NextCase();
    }
    double GetNumericValue(int column) const override { return _cases->GetNumericValue(column); }
    const char* GetStringValue(int column) const override { return _cases->GetStringValue(column); }
    const OBS* GetObsPointer(int column) const override { return _cases->GetObsPointer(column); }
    long long GetCaseCount() const override { return _cases->GetCaseCount(); }

private:
    std::unique_ptr<VEXA_InputCaseIterator> _cases;
    const InterruptWatch& _watch;
};

VEXA_InputCaseIterator* watched(VEXA_InputCaseIterator* made, const InterruptWatch& watch)
{
    std::unique_ptr<VEXA_InputCaseIterator> cases(made);
    return std::make_unique<WatchedCases>(std::move(cases), watch).release();
}

} // namespace

VEXA_InputCaseIterator* WatchedSource::MakeIterator(ErrorMonitor* monitor) const
{
    return watched(source().MakeIterator(monitor), _watch);
}

VEXA_InputCaseIterator* WatchedSource::MakeProjectedIterator(const std::vector<int>& columns,
                                                             ErrorMonitor* monitor) const
{
    return watched(source().MakeProjectedIterator(columns, monitor), _watch);
}
