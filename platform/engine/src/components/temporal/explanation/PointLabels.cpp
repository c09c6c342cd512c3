#include "components/temporal/explanation/PointLabels.h"

namespace EmbeddedHV {
namespace {

constexpr std::size_t kMinutesLength = 3; ///< of ":mm"

} // namespace

bool PointLabels::areMoments() const
{
    if (_axis.isRecordNumber() || _axis.isCyclic())
        return false;
    const CFField::StorageType storage = _axis.fields.front().GetStorage();
    return storage == CFField::Date || storage == CFField::Timestamp;
}

std::string PointLabels::momentLabel(Moment moment) const
{
    const std::string text = momentText(moment, _axis.fields.front().GetStorage());
    const auto minutes = text.find(':');
    return _shown == TimeOfDay::Seconds || minutes == std::string::npos
               ? text
               : text.substr(0, minutes + kMinutesLength);
}

std::optional<std::string> PointLabels::label(std::int64_t index) const
{
    if (_axis.isRecordNumber())
        return std::to_string(index + 1);
    const auto point = _axis.calendar->pointAt(index);
    if (!point)
        return std::nullopt;
    if (!_axis.clock)
        return momentLabel(*point);
    std::string numbers;
    for (const std::int64_t number : _axis.clock->numbersOf(*point))
        numbers += (numbers.empty() ? "" : ", ") + std::to_string(number);
    return numbers;
}

Json PointLabels::json(std::int64_t index) const
{
    const auto found = label(index);
    return found ? Json(*found) : Json();
}

std::string PointLabels::text(std::int64_t index) const
{
    return label(index).value_or(std::to_string(index));
}

} // namespace EmbeddedHV
