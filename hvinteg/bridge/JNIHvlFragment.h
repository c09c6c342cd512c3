#pragma once

#include <set>

#include "bridge/JNIHvlAccessor.h"

class JNIHvlFunction;

/// A part of a job's text that is rendered as one: a chain of functions, or text given as it is.
/// Operations throw JNIException.
class HVINTEG_EXPORT JNIHvlFragment : public JNIHvlAccessor
{
public:
    JNIHvlFragment(const JNIHvlFragment&) = default;
    JNIHvlFragment& operator=(const JNIHvlFragment&) = default;
    ~JNIHvlFragment() override;

    /// Whether the function is rendered by this fragment.
    bool containsFunction(JNIHvlFunction* function);
    std::string getId();
    /// The ids of the fragments that must stand before this one.
    std::set<std::string> getPredecessorFragmentIds();
    std::string toHVLText();

protected:
    explicit JNIHvlFragment(jobject object);

private:
    friend class WrapperFactory;
    friend class JNIHvlProgram; // renders through a fragment of its own scope
};
