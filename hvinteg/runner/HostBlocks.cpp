#include "runner/HostBlocks.h"

#include "CommonBlocks.h"

namespace {

constexpr std::int64_t kEndOfRun = -1;

/// Asked for at the first use and not before, since a host sets its blocks up after this library is
/// loaded.
CmnGlb& globalBlock()
{
    static CmnGlb* const block = pvGetCmnGlb();
    return *block;
}

CmnSys& systemBlock()
{
    static CmnSys* const block = pvGetCmnSys();
    return *block;
}

} // namespace

HostSettings readHostSettings()
{
    // The host stores 64 bits, of which the lower half counts.
    return {static_cast<std::int32_t>(globalBlock().weight),
            static_cast<std::int32_t>(globalBlock().split)};
}

void writeHostWeight(std::int32_t weight)
{
    globalBlock().weight = weight;
}

void writeHostSplit(std::int32_t split)
{
    globalBlock().split = split;
}

void endHostRun()
{
    // The one setting that is written from a cancelling thread while others may look at it.
    systemBlock().runIndicator.store(kEndOfRun);
}
