#pragma once

#include <cstdint>

/// Access to the host's common blocks. The addresses are looked up once, because the blocks never
/// move.

/// The host's weight and split settings; a value above 0 is in force.
struct HostSettings
{
    std::int32_t weight = 0;
    std::int32_t split = 0;
};

/// Reads the present settings. This and the next two run on the procedure's thread.
HostSettings readHostSettings();
/// 0 turns the setting off.
void writeHostWeight(std::int32_t weight);
void writeHostSplit(std::int32_t split);

/// Tells the host to end the run. Any thread.
void endHostRun();
