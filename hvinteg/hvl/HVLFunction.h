#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hvl/HVFunction.h"
#include "support/HvintegExport.h"

class JNIHvlFunction;
class JNIHvlProgram;
class JNIJSONObject;

/// One step of a job that is being composed.
///
/// The caller creates all builders of a job on one JNIHvlProgram and configures them; setters store
/// values without validation. It links each to its inputs with AddPredFunction and calls
/// GenerateHVL on the last one only. Generation runs backwards through the chain and creates each
/// step once. JNIHvlProgram::getHvlText then returns the text of the job.
///
///     JNIHvlProgram program;
///     HVLRead read(&program);
///     read.ReadCSV(NormalizeHvlPathU(input, "file"), true);
///     HVLWrite write(&program);
///     write.WriteHVBF(NormalizeHvlPathU(output, "file"));
///     write.AddPredFunction(&read);
///     std::string job;
///     if (write.GenerateHVL())
///         program.getHvlText(job);
///
/// Ownership: program and predecessors are borrowed and must outlive the use of the builder. The
/// object manager owns the created function, which lives until cleanJRef. A copy shares all three
/// and whether the step is created.
///
/// Threads: the thread that composes the job. Errors: GenerateHVL returns false if something is
/// missing and passes on JNIException. The builder is then unchanged and may try again.
class HVINTEG_EXPORT HVLFunction
{
public:
    /// The program is borrowed and may be null.
    explicit HVLFunction(JNIHvlProgram* program);
    /// Shares program, inputs and created function.
    HVLFunction(const HVLFunction& other);
    /// Shares those of `other` instead.
    HVLFunction& operator=(const HVLFunction& other);

    virtual ~HVLFunction();
    /// The created function; null before generation. Owned by the object manager.
    virtual JNIHvlFunction* GetHVFunction();
    /// Creates this step and those before it in the program. Returns whether this step is created,
    /// and false without a program.
    virtual bool GenerateHVL() = 0;

    /// Adds a borrowed input. Its tag is chosen during generation. Ignores null.
    void AddPredFunction(HVLFunction* pred);
    /// Adds a borrowed input with a tag. Ignores null.
    void AddPredFunction(HVLFunction* pred, const std::string& tag);

    /// The kind of this builder.
    HVFunction GetFunctionType() const { return _functionType; }
    /// Whether the step is created.
    bool IsCreatedHvl() const { return _isCreated; }
    /// Sets another program, borrowed. A step that is created stays in its old program.
    void SetJNIHvlProgram(JNIHvlProgram* program) { _program = program; }

protected:
    /// Sets the kind of this builder.
    void SetFunctionType(HVFunction functionType) { _functionType = functionType; }
    /// Sets whether the step is created.
    void SetIsCreatedHvl(bool isCreated) { _isCreated = isCreated; }
    /// Makes the tags unique: an empty tag becomes `base` and a number, and a number is appended to
    /// a tag that an earlier input has. One counter is used for all tags of the step.
    void CompleteTags(const char* base);

    /// The program of the step, borrowed; null if none was set.
    JNIHvlProgram* GetProgram() const { return _program; }
    /// The inputs, borrowed, in the order in which they were added.
    const std::vector<HVLFunction*>& GetPredecessors() const { return _predecessors; }
    /// One tag for each predecessor, at the same index.
    const std::vector<std::string>& GetTags() const { return _tags; }
    /// The first input, or null. Steps with one input ignore the others.
    HVLFunction* GetFirstPredecessor() const;

    /// The result of GenerateHVL if nothing needs to be done: false without a program, true if the
    /// step is already created. Otherwise empty.
    std::optional<bool> GetKnownResult() const;
    /// Generates the first input, if there is one, and ignores the result: without it the step is
    /// created all the same, and the engine reports what is missing.
    void GenerateFirstPredecessor();
    /// Creates the function with its configuration and, if there is one, the first input. Keeps the
    /// function.
    bool CreateFunction(const std::string& name, JNIJSONObject& configuration);
    /// Generates all inputs in order and ignores the results: an input without a function is left
    /// out later. A caller that needs every input calls GenerateHVL of each before.
    void GenerateAllPredecessors();
    /// Creates the function with its configuration and all inputs by tag. Requires CompleteTags.
    bool CreateTaggedFunction(const std::string& name, JNIJSONObject& configuration);
    /// Keeps a function that the program created. Returns false for null.
    bool KeepFunction(JNIHvlFunction* function);

    /// For a function that the caller has created.
    void SetFunction(JNIHvlFunction* function) { _function = function; }

private:
    HVINTEG_HIDDEN bool isTagTaken(const std::string& tag, std::size_t before) const;

    JNIHvlProgram* _program;
    JNIHvlFunction* _function = nullptr;
    std::vector<HVLFunction*> _predecessors;
    std::vector<std::string> _tags;
    HVFunction _functionType = GenericFunction;
    bool _isCreated = false;
};
