#include "components/temporal/PointLabels.h"

#include <algorithm>

namespace EmbeddedHV {
namespace {

constexpr std::string_view kDateForm = "dddd-dd-dd";
constexpr std::string_view kTimeForm = "dd:dd:dd";
constexpr std::size_t kSecondsAt = 5; ///< in a time of day

/// Whether the text begins as the form says, with a digit for each "d".
bool beginsAs(std::string_view text, std::string_view form)
{
    return text.size() >= form.size() &&
           std::equal(form.begin(), form.end(), text.begin(), [](char wanted, char c) {
               return wanted == 'd' ? c >= '0' && c <= '9' : c == wanted;
           });
}

std::string timeLabel(std::string_view text, TimeOfDay shown)
{
    if (!beginsAs(text, kTimeForm))
        return std::string(text);
    if (text.back() == 'Z')
        text.remove_suffix(1);
    return std::string(shown == TimeOfDay::Minutes ? text.substr(0, kSecondsAt) : text);
}

} // namespace

std::string pointLabel(std::string_view text, TimeOfDay shown)
{
    const std::size_t time = kDateForm.size();
    if (!beginsAs(text, kDateForm) || text.size() == time ||
        (text[time] != 'T' && text[time] != ' '))
        return timeLabel(text, shown);
    return std::string(text.substr(0, time)) + " " + timeLabel(text.substr(time + 1), shown);
}

PointLabels::PointLabels(const std::vector<std::string>& points, TimeOfDay shown)
{
    _labels.reserve(points.size());
    for (const std::string& point : points)
        _labels.push_back(pointLabel(point, shown));
}

bool PointLabels::has(std::int64_t index) const
{
    return index >= 0 && index < static_cast<std::int64_t>(_labels.size());
}

Json PointLabels::json(std::int64_t index) const
{
    return has(index) ? Json(_labels[static_cast<std::size_t>(index)]) : Json();
}

std::string PointLabels::text(std::int64_t index) const
{
    return has(index) ? _labels[static_cast<std::size_t>(index)] : std::to_string(index);
}

} // namespace EmbeddedHV
