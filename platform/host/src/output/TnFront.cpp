#include "TnFront.h"

#include "Journal.h"
#include "text/CodePage.h"

namespace {

constexpr long long kLineView = 1;

} // namespace

void TN_ToFront(const long long& channel, const TN_Character& line)
{
    const std::string text = hostToUtf8(line);
    // The lines of the line view have no name.
    if (channel == kLineView)
        HostJournal::instance().add({HostJournal::Kind::Line, text});
    else
        HostJournal::instance().add(
            {HostJournal::Kind::Output, "TN_ToFront " + std::to_string(channel) + " " + text});
}
