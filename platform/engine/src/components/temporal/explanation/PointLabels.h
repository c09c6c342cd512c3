#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "components/temporal/preparation/TimeAxis.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// How far the time of day is shown.
enum class TimeOfDay
{
    Minutes, ///< hh:mm
    Seconds  ///< hh:mm:ss
};

/// The labels of points of time by their index, 0 for the first one of the training: a date or a
/// time by ISO 8601 with a blank in place of the T, the numbers of cyclic fields with commas, or
/// the number of a record.
class PointLabels
{
public:
    /// The axis is borrowed.
    PointLabels(const TimeAxis& axis, TimeOfDay shown) : _axis(axis), _shown(shown) {}

    /// Whether labels are dates or timestamps.
    bool areMoments() const;
    /// The label; null for a point in no year from 1 to 9999.
    Json json(std::int64_t index) const;
    /// The label; the index for a point without a label.
    std::string text(std::int64_t index) const;

private:
    std::optional<std::string> label(std::int64_t index) const;
    std::string momentLabel(Moment moment) const;

    const TimeAxis& _axis;
    TimeOfDay _shown;
};

} // namespace EmbeddedHV
