#include "components/temporal/training/TrainingWindows.h"

#include <algorithm>
#include <map>
#include <optional>

namespace EmbeddedHV {
namespace {

/// Of the points, that a series of the common window may lack.
constexpr Eigen::Index kLargestGapPart = 10;

bool takesPart(const ScaledSeries& series, const TrainingOptions& options, std::size_t place)
{
    return series.columns[place].state == SeriesState::Usable &&
           (options.isTarget[place] || options.isCandidate[place]);
}

bool isNearlyWhole(const TimeRange& range, Eigen::Index points)
{
    return (points - range.size()) * kLargestGapPart <= points;
}

/// Nothing if no series has nearly all points.
std::optional<TimeRange> commonRange(const ScaledSeries& series, const TrainingOptions& options)
{
    std::optional<TimeRange> common;
    for (std::size_t i = 0; i < series.columns.size(); ++i) {
        const TimeRange& range = series.columns[i].range;
        if (!takesPart(series, options, i) || !isNearlyWhole(range, series.values.rows()))
            continue;
        if (!common)
            common = range;
        common->first = std::max(common->first, range.first);
        common->end = std::min(common->end, range.end);
    }
    return common;
}

/// Whether the series may be in an equation, as a predictor by choice or by force.
std::vector<bool> possiblePredictors(const TrainingOptions& options)
{
    std::vector<bool> possible = options.isCandidate;
    for (const auto& [predictor, target] : options.forced)
        possible[predictor] = true;
    return possible;
}

} // namespace

int mostLags(Eigen::Index points)
{
    const Eigen::Index lags = (points - leastPoints(0)) / (leastPoints(1) - leastPoints(0));
    return static_cast<int>(std::max(Eigen::Index{0}, lags));
}

std::vector<TrainingWindow> trainingWindows(const ScaledSeries& series,
                                            const TrainingOptions& options)
{
    const Eigen::Index points = series.values.rows();
    const std::optional<TimeRange> common = commonRange(series, options);
    std::map<TimeRange, TrainingWindow> others;
    TrainingWindow first;
    if (common)
        first.range = *common;
    for (std::size_t i = 0; i < series.columns.size(); ++i) {
        if (!options.isTarget[i] || !takesPart(series, options, i))
            continue;
        TimeRange range = series.columns[i].range;
        if (isNearlyWhole(range, points)) {
            first.targets.push_back(i);
            continue;
        }
        if (common) {
            range.first = std::max(range.first, common->first);
            range.end = std::max(range.first, std::min(range.end, common->end));
        }
        others[range].range = range;
        others[range].targets.push_back(i);
    }
    std::vector<TrainingWindow> windows;
    if (!first.targets.empty())
        windows.push_back(std::move(first));
    for (auto& [range, window] : others)
        windows.push_back(std::move(window));
    const std::vector<bool> possible = possiblePredictors(options);
    for (TrainingWindow& window : windows) {
        window.members = window.targets;
        for (std::size_t i = 0; i < series.columns.size(); ++i)
            if (possible[i] && series.columns[i].state == SeriesState::Usable &&
                series.columns[i].range.contains(window.range) &&
                !std::binary_search(window.targets.begin(), window.targets.end(), i))
                window.members.push_back(i);
    }
    return windows;
}

} // namespace EmbeddedHV
