#include "ErrorMonitor.h"

#include "ErrorText.h"
#include "TnOutput.h"

namespace {

/// Enough to understand the problem.
constexpr long long kMostReports = 10;

} // namespace

ErrorText::~ErrorText() = default;
ErrorMonitor::~ErrorMonitor() = default;

void Reporter(const std::string& text)
{
    TnError(TnUTF8String(text), kShowInOutput, kLevelWarning);
}

VexaErrorMonitor::VexaErrorMonitor(void (*reporter)(const std::string& text)) : _reporter(reporter)
{
}

VexaErrorMonitor::~VexaErrorMonitor()
{
    try {
        Finish();
    } catch (const std::exception&) {
        // No memory for the line.
        return;
    }
}

void VexaErrorMonitor::Finish()
{
    if (_count > _told)
        _reporter("In all, " + std::to_string(_count) + " values could not be taken as they are.");
    _told = _count;
}

void VexaErrorMonitor::Report(const std::string& text)
{
    // Further reports are only counted, because a bad column would fill the output.
    if (++_count > kMostReports)
        return;
    _told = _count;
    _reporter(text);
}
