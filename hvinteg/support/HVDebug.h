#pragma once

#include <memory>
#include <string>

#include "support/HvintegExport.h"

class TnHeading;

/// A timing log in the host's output, for developers: a pivot table "Debug" with a row for each
/// call of addOutputLine, which says when it came and how many seconds had passed since the call
/// before and since the log began. The destructor adds to each row its share of the whole time, in
/// percent, and the shares up to there.
///
///     HVDebug debug(&procedure);
///     prepare();
///     debug.addOutputLine("prepared");
///
/// One thread at a time.
class HVINTEG_EXPORT HVDebug
{
public:
    /// The table stands under the heading, which is borrowed and must live as long as the log. The
    /// time begins now.
    explicit HVDebug(TnHeading* heading);
    HVDebug(const HVDebug&) = delete;
    HVDebug& operator=(const HVDebug&) = delete;
    ~HVDebug();

    /// Adds a row with a comment in the host's encoding. Returns the log.
    HVDebug& addOutputLine(const std::string& comment);

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
