#pragma once

#include <set>

#include "bridge/JNIHvlAccessor.h"

class JNIHvlFunction;

/// A part of a job's text: a chain of functions, or text that is used unchanged. Operations throw
/// JNIException.
class HVINTEG_EXPORT JNIHvlFragment : public JNIHvlAccessor
{
public:
    JNIHvlFragment(const JNIHvlFragment&) = default;
    JNIHvlFragment& operator=(const JNIHvlFragment&) = default;
    ~JNIHvlFragment() override;

    /// Whether this fragment contains the text of the function.
    bool containsFunction(JNIHvlFunction* function);
    /// The id that the program gave the fragment.
    std::string getId();
    /// The ids of the fragments that must precede this one.
    std::set<std::string> getPredecessorFragmentIds();
    /// Generates the text of the fragment.
    std::string toHVLText();

protected:
    /// Wraps an object of Java with a new global reference. The caller keeps `object`.
    explicit JNIHvlFragment(jobject object);

private:
    friend class WrapperFactory;
    friend class JNIHvlProgram; // generates text from a temporary fragment
};
