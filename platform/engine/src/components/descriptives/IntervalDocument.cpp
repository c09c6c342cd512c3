#include "components/descriptives/IntervalDocument.h"

#include "components/result/ValueFormat.h"

namespace EmbeddedHV {
namespace {

Json pointAttributes(const TimeInterval& interval, const std::string& text,
                     const std::vector<std::int64_t>& periods)
{
    if (interval.distinct == 0)
        return nullptr;
    if (interval.periods.empty())
        return text;
    Json point = Json::object();
    for (std::size_t i = 0; i < periods.size(); ++i)
        point[interval.fields[i]] = periods[i];
    return point;
}

Json entryOf(const TimeInterval& interval)
{
    Json entry = Json::object();
    entry["fields"] = interval.fields;
    if (!interval.periods.empty()) {
        entry["periods"] = Json::array();
        for (const TimeUnit period : interval.periods)
            entry["periods"].push_back(wordOf(period));
    }
    entry["unit"] = interval.unit ? Json(wordOf(*interval.unit)) : Json();
    entry["increment"] = interval.unit ? numberJson(interval.increment) : Json();
    entry["start"] = pointAttributes(interval, interval.start, interval.startPeriods);
    entry["end"] = pointAttributes(interval, interval.end, interval.endPeriods);
    entry["points"] = interval.points;
    entry["distinctPoints"] = interval.distinct;
    entry["missingPoints"] = interval.missingPoints;
    entry["duplicateRecords"] = interval.duplicates;
    entry["missingRecords"] = interval.missing;
    return entry;
}

Json listOf(const std::vector<TimeInterval>& intervals)
{
    Json list = Json::array();
    for (const TimeInterval& interval : intervals)
        list.push_back(entryOf(interval));
    return list;
}

std::string intervalText(const char* key, Json list)
{
    const Json document = {{"version", 1}, {key, std::move(list)}};
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace

std::string intervalDocument(const std::vector<TimeInterval>& intervals)
{
    return intervalText("timeIntervals", listOf(intervals));
}

std::string groupIntervalDocument(const std::vector<std::vector<TimeInterval>>& groups)
{
    Json list = Json::array();
    for (const std::vector<TimeInterval>& intervals : groups)
        list.push_back({{"timeIntervals", listOf(intervals)}});
    return intervalText("groups", std::move(list));
}

} // namespace EmbeddedHV
