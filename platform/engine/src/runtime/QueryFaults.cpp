#include "runtime/QueryFaults.h"

#include <utility>

namespace EmbeddedHV {
namespace {

FaultParts targetParts(const std::string& problem, const std::string& target, bool isFile)
{
    if (isFile)
        return {.step = "write", .file = target, .what = problem};
    return {.step = "write", .what = target + ": " + problem};
}

} // namespace

JobError faultOf(const StatementFault& fault, const std::string& steps, const std::string& target,
                 bool targetIsFile)
{
    const JobError& error = fault.error();
    if (fault.about() == StatementFault::About::Itself)
        return error;
    FaultParts parts = fault.about() == StatementFault::About::Steps
                           ? FaultParts{.step = steps, .what = error.parts().what}
                           : targetParts(error.parts().what, target, targetIsFile);
    return {error.id(), std::move(parts), error.detail()};
}

} // namespace EmbeddedHV
