#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "steps/Settings.h"

namespace EmbeddedHV {

/// How far the time of day is shown.
enum class TimeOfDay
{
    Minutes, ///< hh:mm
    Seconds  ///< hh:mm:ss
};

/// A point of time as people read it. "2024-03-01T10:15:00Z" becomes "2024-03-01 10:15:00"; any
/// other text stays.
std::string pointLabel(std::string_view text, TimeOfDay shown);

/// The labels of the points of time by their index, 0 for the first one of the training.
class PointLabels
{
public:
    PointLabels() = default;
    PointLabels(const std::vector<std::string>& points, TimeOfDay shown);

    /// The label; null for a point that has none.
    Json json(std::int64_t index) const;
    /// The label; the index for a point that has none.
    std::string text(std::int64_t index) const;

private:
    bool has(std::int64_t index) const;

    std::vector<std::string> _labels;
};

} // namespace EmbeddedHV
