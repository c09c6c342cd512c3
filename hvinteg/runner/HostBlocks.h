#pragma once

#include <cstdint>

/// The host's common blocks as this library uses them. The addresses are taken at first use and
/// kept, since the blocks never move.

/// The host's weight and split settings, each above 0 when in force.
struct HostSettings
{
    std::int32_t weight = 0;
    std::int32_t split = 0;
};

/// The settings as the host has them now. The procedure's thread, like the two below.
HostSettings readHostSettings();
/// 0 switches a setting off.
void writeHostWeight(std::int32_t weight);
void writeHostSplit(std::int32_t split);

/// Tells the host to end the run. Any thread.
void endHostRun();
