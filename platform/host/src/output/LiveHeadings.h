#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

class TnHeading;
class TnProcedure;
struct OutputHeading;

/// The headings and procedures whose objects exist, the latest last. They may end in any order. Any
/// thread.

void beginHeading(const TnHeading& heading, const TnHeading& parent);
void beginProcedure(const TnProcedure& procedure);
void endHeading(const TnHeading& heading);

/// The latest heading of the current procedure, where new lines are written. Null if there is no
/// procedure.
std::shared_ptr<OutputHeading> currentHeading();
std::vector<std::shared_ptr<OutputHeading>> liveProcedures();

/// Names and values (UTF-8) of the split variables in the present split group.
using SplitList = std::vector<std::pair<std::string, std::string>>;
/// For the current procedure. Empty without a procedure, or if its data are not split.
SplitList currentSplitList();
/// For the procedure of a heading.
SplitList splitListOf(const TnHeading& heading);
