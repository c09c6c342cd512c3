#include "runner/HostBlocks.h"

#include "CommonBlocks.h"

namespace {

constexpr std::int64_t kEndOfRun = -1;

/// Looked up at first use: a host creates its blocks after it loads this library.
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
    // The host stores 64 bits; only the lower 32 count.
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
    // Atomic: a cancelling thread writes it while other threads may read it.
    systemBlock().runIndicator.store(kEndOfRun);
}
