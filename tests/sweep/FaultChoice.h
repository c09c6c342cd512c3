#pragma once

#include <memory>
#include <string>
#include <vector>

class Road;

/// A kind of fault, and its number on a road.
class FaultChoice
{
public:
    virtual ~FaultChoice() = default;
    /// From now on the call with this number fails, from 1; 0 counts only.
    virtual void arm(long number) = 0;

    struct Outcome
    {
        long calls = 0;
        bool delivered = false;
        const void* site = nullptr; ///< where the call was made, if that is known
        std::string function;       ///< which it was, if that is known
        std::string cause;          ///< what a failure must name; empty if it need not
    };
    virtual Outcome disarm() = 0;
};

/// All names of kinds.
std::vector<std::string> faultKinds();
/// The road is borrowed and was run once. Null for a name that is not known.
std::unique_ptr<FaultChoice> makeFault(const std::string& kind, Road& road);
