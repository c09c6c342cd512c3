#include "support/HVDebug.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <vector>

#include "TnHeading.h"
#include "TnPivotTable.h"
#include "TnStrings.h"
#include "TnValues.h"

namespace {

using Clock = std::chrono::system_clock;

/// In whole milliseconds, like the times of day in the table, so that a reader can add them.
double secondsBetween(Clock::time_point from, Clock::time_point to)
{
    using std::chrono::milliseconds;
    const auto whole = std::chrono::time_point_cast<milliseconds>(to) -
                       std::chrono::time_point_cast<milliseconds>(from);
    return static_cast<double>(whole.count()) / 1000.0;
}

// Share of a whole in percent. Division by 0 is allowed and gives inf or NaN.
__attribute__((no_sanitize("float-divide-by-zero"))) double percent(double part, double whole)
{
    return part / whole * 100.0;
}

// Local time as hh:mm:ss.mmm.
std::string timeOfDay(Clock::time_point time)
{
    const std::time_t seconds = Clock::to_time_t(time);
    std::tm parts{};
#ifdef _WIN32
    localtime_s(&parts, &seconds);
#else
    localtime_r(&seconds, &parts);
#endif
    const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(
                                  time.time_since_epoch() % std::chrono::seconds(1))
                                  .count();
    std::array<char, 48> text{};
    std::snprintf(text.data(), text.size(), "%02d:%02d:%02d.%03d", parts.tm_hour, parts.tm_min,
                  parts.tm_sec, static_cast<int>(milliseconds));
    return text.data();
}

} // namespace

struct HVINTEG_HIDDEN HVDebug::Impl
{
    /// Creates the table and its dimensions.
    explicit Impl(TnHeading& heading);
    /// Adds a row with the present time.
    void addLine(const std::string& comment);
    /// Adds the shares to the existing rows, which the output library finds by number.
    void addSummary();

    // Destroyed after its dimensions; the labels are destroyed first.
    std::unique_ptr<TnPivotTable> table;
    std::unique_ptr<TnDimension> rows;
    std::unique_ptr<TnDimension> columns;
    TnString timeLabel{"Time", false};
    TnString elapsedLabel{"Elapsed Time", false};
    TnString totalLabel{"Total Elapsed Time", false};
    TnString commentLabel{"Comment", false};
    Clock::time_point startTime = Clock::now();
    Clock::time_point lastTime = startTime;
    int lineCount = 0;
    std::vector<double> elapsed;
};

HVDebug::Impl::Impl(TnHeading& heading)
    : table(heading.PivotTable(TnString("Debug", false), TnString("Debug", false), true)),
      rows(table->Dimension(TnString("row", false), TnPivotTable::Unsorted)),
      columns(table->Dimension(TnString("col", false), TnPivotTable::Unsorted))
{
    rows->Position(TnDimension::Row, 1, true, true);
    columns->Position(TnDimension::Column, 1, true, false);
}

void HVDebug::Impl::addLine(const std::string& comment)
{
    const Clock::time_point now = Clock::now();
    const double delta = secondsBetween(lastTime, now);
    elapsed.push_back(delta);
    lastTime = now;
    const double total = secondsBetween(startTime, now);
    rows->Category(TnNumber(lineCount++, TnProcedure::Count()));
    columns->Category(commentLabel).Cell(TnString(comment, false));
    columns->Category(timeLabel).Cell(TnString(timeOfDay(now), false));
    columns->Category(elapsedLabel).Cell(TnNumber(delta, TnProcedure::GeneralStat()));
    columns->Category(totalLabel).Cell(TnNumber(total, TnProcedure::GeneralStat()));
}

void HVDebug::Impl::addSummary()
{
    const double total = secondsBetween(startTime, lastTime);
    double cumulative = 0;
    for (std::size_t i = 0; i < elapsed.size(); ++i) {
        cumulative += elapsed[i];
        rows->Category(TnNumber(static_cast<double>(i), TnProcedure::Count()));
        columns->Category(TnString("Percent", false))
            .Cell(TnNumber(percent(elapsed[i], total), TnProcedure::Percent()));
        columns->Category(TnString("Cumulative Percent", false))
            .Cell(TnNumber(percent(cumulative, total), TnProcedure::Percent()));
    }
}

HVDebug::HVDebug(TnHeading* heading) : _impl(std::make_unique<Impl>(*heading)) {}

HVDebug::~HVDebug()
{
    try {
        _impl->addSummary();
    } catch (...) {
        // An incomplete table must not end the process.
    }
}

HVDebug& HVDebug::addOutputLine(const std::string& comment)
{
    _impl->addLine(comment);
    return *this;
}
