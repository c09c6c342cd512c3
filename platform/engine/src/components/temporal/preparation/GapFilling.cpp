#include "components/temporal/preparation/GapFilling.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace EmbeddedHV {
namespace {

/// Fills the gap between two values; `gap` is what lies between them.
void fillGap(std::span<double> gap, double before, double after, GapFilling filling)
{
    const double steps = static_cast<double>(gap.size() + 1);
    for (std::size_t i = 0; i < gap.size(); ++i)
        switch (filling) {
        case GapFilling::Linear:
            gap[i] = std::lerp(before, after, static_cast<double>(i + 1) / steps);
            break;
        case GapFilling::Neighbours:
            gap[i] = std::midpoint(before, after);
            break;
        case GapFilling::Last:
            gap[i] = before;
            break;
        case GapFilling::None:
            break;
        }
}

} // namespace

GapCount countGaps(std::span<const double> values)
{
    GapCount count;
    std::int64_t open = 0;
    for (const double value : values)
        if (std::isnan(value)) {
            ++open;
        } else {
            count.missing += count.observed > 0 ? open : 0;
            open = 0;
            ++count.observed;
        }
    return count;
}

void fillGaps(std::span<double> values, GapFilling filling)
{
    std::size_t last = values.size();
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (std::isnan(values[i]))
            continue;
        if (last < i)
            fillGap(values.subspan(last + 1, i - last - 1), values[last], values[i], filling);
        last = i;
    }
}

} // namespace EmbeddedHV
