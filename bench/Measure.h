#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace bench {

/// Wall time since it was made.
class Stopwatch
{
public:
    double milliseconds() const;

private:
    std::chrono::steady_clock::time_point _start = std::chrono::steady_clock::now();
};

double median(std::vector<double> values);

/// Values of ours and of the baseline, measured in turns so that a change of the machine's speed
/// meets both.
struct Comparison
{
    std::vector<double> ours;
    std::vector<double> baseline;
};

/// Calls the two in turns, `repetitions` times each, after one round that does not count.
template <typename Ours, typename Baseline>
Comparison interleave(int repetitions, Ours ours, Baseline baseline)
{
    Comparison comparison;
    ours();
    baseline();
    for (int i = 0; i < repetitions; ++i) {
        comparison.ours.push_back(ours());
        comparison.baseline.push_back(baseline());
    }
    return comparison;
}

/// Waits until the content of the file is on the disk. The baselines of what writes files do, since
/// a job gives its result a name only then.
void synchronize(const std::string& path);

/// Prints one line with the ratio of the medians. True if it is within the limit.
bool report(const std::string& name, const Comparison& comparison, const std::string& unit,
            double limit);

} // namespace bench
