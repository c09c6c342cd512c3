#include "ErrorMonitor.h"

#include "ErrorText.h"
#include "TnOutput.h"

namespace {

/// Enough to know what is wrong.
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
    if (_count > kMostReports)
        _reporter("In all, " + std::to_string(_count) + " values could not be taken as they are.");
}

void VexaErrorMonitor::Report(const std::string& text)
{
    if (++_count <= kMostReports)
        _reporter(text);
}
