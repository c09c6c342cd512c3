#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

class TnHeading;
class TnProcedure;
struct OutputHeading;

/// The headings and procedures whose objects are alive, the latest last. They need not end in the
/// order in which they began. Any thread.

void beginHeading(const TnHeading& heading, const TnHeading& parent);
void beginProcedure(const TnProcedure& procedure);
void endHeading(const TnHeading& heading);

/// The latest heading of the current procedure: where a line arises. Null if none is alive.
std::shared_ptr<OutputHeading> currentHeading();
std::vector<std::shared_ptr<OutputHeading>> liveProcedures();

/// Names and values, UTF-8, of the split variables in the present split group.
using SplitList = std::vector<std::pair<std::string, std::string>>;
/// Of the current procedure; empty if none is alive or its data are not split.
SplitList currentSplitList();
/// Of the procedure that a heading belongs to.
SplitList splitListOf(const TnHeading& heading);
