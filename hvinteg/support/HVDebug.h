#pragma once

#include <memory>
#include <string>

#include "support/HvintegExport.h"

class TnHeading;

/// A timing log in the host's output, for developers. It is a pivot table "Debug" with a row for
/// each call of addOutputLine: the time of the call, and the seconds since the previous call and
/// since the construction. The destructor adds to each row its share of the total time and the
/// cumulative share, in percent.
///
///     HVDebug debug(&procedure);
///     prepare();
///     debug.addOutputLine("prepared");
///
/// One thread at a time. What the host's output library throws is passed on, except by the
/// destructor.
class HVINTEG_EXPORT HVDebug
{
public:
    /// Adds the table under `heading` and starts the clock. The heading is borrowed, must not be
    /// null, and must outlive the log.
    explicit HVDebug(TnHeading* heading);
    HVDebug(const HVDebug&) = delete;
    HVDebug& operator=(const HVDebug&) = delete;
    /// Adds the columns with the shares.
    ~HVDebug();

    /// Adds a row with a comment in the host's encoding. Returns *this.
    HVDebug& addOutputLine(const std::string& comment);

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
