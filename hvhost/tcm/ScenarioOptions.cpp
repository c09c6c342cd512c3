#include "hvhost/tcm/ScenarioOptions.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "hvhost/base/CommandFault.h"

namespace {

constexpr const char* kScenarioHint =
    "for example --set 'north,advertising[+1]=120'; [2025-01-01] is a point, [*] all points,\n"
    "=+10% a change";

[[noreturn]] void refuseScenario(const std::string& option, const std::string& why)
{
    throw CommandFault(ExitStatus::Usage, option + ": " + why, kScenarioHint);
}

/// "+10%" is a change, "10" a value.
void readScenarioValue(std::string text, const std::string& option, HVScenarioValue& value)
{
    value.isRelative = text.ends_with('%');
    if (value.isRelative)
        text.pop_back();
    // from_chars does not accept a plus sign.
    const std::size_t begin = text.starts_with('+') ? 1 : 0;
    const auto [end, error] =
        std::from_chars(text.data() + begin, text.data() + text.size(), value.value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value.value))
        refuseScenario(option, "\"" + text + "\" is not a number");
    if (value.isRelative)
        value.value /= 100;
}

/// Enough of the points to show how they are written.
std::string listedPoints(const std::vector<std::string>& times)
{
    constexpr std::size_t kFew = 4;
    if (times.empty())
        return {};
    std::string list = "; its points are " + times.front();
    if (times.size() > kFew)
        return list + ", " + times[1] + ", .., " + times.back();
    for (std::size_t at = 1; at < times.size(); ++at)
        list += ", " + times[at];
    return list;
}

/// The number of a point that is counted, from 1; 0 for all points. Nothing for a point by name.
std::optional<int> countedPoint(const std::string& text)
{
    if (text == "*")
        return 0;
    int ahead = 0;
    const auto [end, error] =
        text.starts_with('+') ? std::from_chars(text.data() + 1, text.data() + text.size(), ahead)
                              : std::from_chars_result{text.data(), std::errc::invalid_argument};
    return error == std::errc() && end == text.data() + text.size() && ahead > 0
               ? std::optional(ahead)
               : std::nullopt;
}

} // namespace

bool ScenarioOption::namesTime() const
{
    return !countedPoint(point.text);
}

std::vector<ScenarioOption> parseScenario(const std::vector<std::string>& options,
                                          const TcmModelFacts& facts)
{
    std::vector<ScenarioOption> scenario;
    for (const std::string& text : options) {
        const std::string option = "--set " + text;
        // Names of series may hold brackets and equals signs, numbers do not.
        const std::size_t equals = text.rfind('=');
        const std::size_t bracket = equals == text.npos ? text.npos : text.rfind('[', equals);
        if (bracket == text.npos || bracket == 0 || equals < bracket + 3 || text[equals - 1] != ']')
            refuseScenario(option, "not of the form SERIES[TIME]=VALUE");
        ScenarioOption read;
        read.value.series = facts.find(text.substr(0, bracket), "--set").name;
        read.point = {option, text.substr(bracket + 1, equals - bracket - 2)};
        readScenarioValue(text.substr(equals + 1), option, read.value);
        scenario.push_back(std::move(read));
    }
    return scenario;
}

std::vector<HVScenarioValue> placedScenario(const std::vector<ScenarioOption>& options,
                                            const std::vector<std::string>& times)
{
    std::vector<HVScenarioValue> values;
    for (const ScenarioOption& option : options) {
        HVScenarioValue value = option.value;
        if (const std::optional<int> ahead = countedPoint(option.point.text)) {
            value.ahead = *ahead;
        } else {
            const auto found = std::ranges::find(times, option.point.text);
            if (found == times.end())
                refuseScenario(option.point.option, "the forecast has no point \"" +
                                                        option.point.text + "\"" +
                                                        listedPoints(times));
            value.ahead = static_cast<int>(found - times.begin()) + 1;
        }
        if (static_cast<std::size_t>(value.ahead) > times.size() && !times.empty())
            refuseScenario(option.point.option, "the forecast ends before this point");
        values.push_back(std::move(value));
    }
    return values;
}
