#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "runtime/Overflows.h"
#include "runtime/Session.h"
#include "steps/Plan.h"

namespace EmbeddedHV {

/// Counts the results of an output that exceed the range of a Real and become missing. Registered
/// for statements during its lifetime.
class OverflowedOutput
{
public:
    /// Borrows the session.
    OverflowedOutput(Session& session, std::string name);
    OverflowedOutput(const OverflowedOutput&) = delete;
    OverflowedOutput& operator=(const OverflowedOutput&) = delete;
    ~OverflowedOutput();

    const std::string& name() const { return _name; }
    /// The number of the count in the session's overflows.
    std::int64_t number() const { return _id; }
    /// The count since the previous call.
    std::uint64_t takeCount() { return _count.exchange(0); }

private:
    Session& _session;
    std::string _name;
    OverflowCount _count = 0;
    std::int64_t _id;
};
using OverflowedOutputs = std::vector<std::shared_ptr<OverflowedOutput>>;

/// Reports the results of a step that became missing because they exceed the range of a Real.
class OverflowCheck : public SourceCheck
{
public:
    OverflowCheck(OverflowedOutputs outputs, std::string step);

    void start(Cancellation& cancellation, const Progress& progress) override;
    void finish(Session& session, Reporter& reporter) override;
    void abandon(const StatementFault&) override {}

private:
    OverflowedOutputs _outputs;
    std::string _step;
};

} // namespace EmbeddedHV
