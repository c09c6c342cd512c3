#include "Measure.h"

#include <algorithm>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace bench {

double Stopwatch::milliseconds() const
{
    const std::chrono::duration<double, std::milli> elapsed =
        std::chrono::steady_clock::now() - _start;
    return elapsed.count();
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values.at(middle)
                                  : (values.at(middle - 1) + values.at(middle)) / 2;
}

void synchronize(const std::string& path)
{
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0 || fsync(file) != 0)
        std::perror(path.c_str());
    if (file >= 0)
        close(file);
}

bool report(const std::string& name, const Comparison& comparison, const std::string& unit,
            double limit)
{
    const double ours = median(comparison.ours);
    const double baseline = median(comparison.baseline);
    const double ratio = ours / baseline;
    std::printf("%s: ratio %.2f (ours %.4g %s, baseline %.4g %s; limit %.2f)%s\n", name.c_str(),
                ratio, ours, unit.c_str(), baseline, unit.c_str(), limit,
                ratio <= limit ? "" : " OVER");
    std::fflush(stdout);
    return ratio <= limit;
}

} // namespace bench
