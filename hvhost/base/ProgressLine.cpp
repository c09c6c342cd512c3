#include "hvhost/base/ProgressLine.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>

#include "Translation.h"
#include "hvhost/base/StandardStreams.h"
#include "hvhost/base/Text.h"

namespace {

constexpr std::chrono::seconds kPatience(1);
constexpr int kBarWidth = 30;

std::string shownPercent(int percent)
{
    const std::string digits = std::to_string(percent);
    return std::string(digits.size() < 3 ? 3 - digits.size() : 0, ' ') + digits + " %";
}

/// The remaining time, if the work goes on at the same speed. Empty while that is not yet known.
std::string shownRest(std::chrono::duration<double> spent, double fraction)
{
    constexpr double kEnough = 0.05;
    if (spent < kPatience || fraction < kEnough || fraction >= 1)
        return {};
    const auto seconds = std::lround(spent.count() * (1 - fraction) / fraction);
    constexpr long kMinute = 60;
    if (seconds < 2 * kMinute)
        return filled(translate(", about ^1 s left"), {std::to_string(std::max(seconds, 1L))});
    return filled(translate(", about ^1 min left"),
                  {std::to_string((seconds + kMinute / 2) / kMinute)});
}

} // namespace

ProgressLine::ProgressLine(const std::string& mode, std::string label)
    : _enabled(mode == "always" || (mode == "auto" && isatty(STDERR_FILENO) != 0)),
      _always(mode == "always"), _label(std::move(label)), _start(std::chrono::steady_clock::now())
{
}

ProgressLine::~ProgressLine()
{
    clear();
}

void ProgressLine::restart()
{
    const std::lock_guard lock(_mutex);
    _start = std::chrono::steady_clock::now();
    _lastPercent = -1;
}

void ProgressLine::show(double fraction)
{
    if (!_enabled)
        return;
    const std::lock_guard lock(_mutex);
    const int percent = static_cast<int>(std::clamp(fraction, 0.0, 1.0) * 100);
    const auto spent = std::chrono::steady_clock::now() - _start;
    const bool early = spent < kPatience;
    if (percent == _lastPercent || (early && !_always))
        return;
    _lastPercent = percent;
    _drawn = true;
    const auto filled = static_cast<std::size_t>(percent * kBarWidth / 100);
    const std::string bar =
        std::string(filled, '#') + std::string(static_cast<std::size_t>(kBarWidth) - filled, '.');
    printToStandardError("\r" + _label + " [" + bar + "] " + shownPercent(percent) +
                         shownRest(spent, fraction) + "\033[K");
}

void ProgressLine::clear()
{
    const std::lock_guard lock(_mutex);
    if (!_drawn)
        return;
    printToStandardError("\r\033[K");
    _drawn = false;
    _lastPercent = -1;
}
