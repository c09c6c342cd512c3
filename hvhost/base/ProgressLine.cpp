#include "hvhost/base/ProgressLine.h"

#include <unistd.h>

#include <algorithm>

#include "hvhost/base/StandardStreams.h"

namespace {

constexpr std::chrono::seconds kPatience(1);
constexpr int kBarWidth = 30;

std::string shownPercent(int percent)
{
    const std::string digits = std::to_string(percent);
    return std::string(digits.size() < 3 ? 3 - digits.size() : 0, ' ') + digits + " %";
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

void ProgressLine::show(double fraction)
{
    if (!_enabled)
        return;
    const std::lock_guard lock(_mutex);
    const int percent = static_cast<int>(std::clamp(fraction, 0.0, 1.0) * 100);
    const bool early = std::chrono::steady_clock::now() - _start < kPatience;
    if (percent == _lastPercent || (early && !_always))
        return;
    _lastPercent = percent;
    _drawn = true;
    const auto filled = static_cast<std::size_t>(percent * kBarWidth / 100);
    const std::string bar =
        std::string(filled, '#') + std::string(static_cast<std::size_t>(kBarWidth) - filled, '.');
    printToStandardError("\r" + _label + " [" + bar + "] " + shownPercent(percent));
}

void ProgressLine::clear()
{
    const std::lock_guard lock(_mutex);
    if (!_drawn)
        return;
    printToStandardError("\r\033[K");
    _drawn = false;
}
