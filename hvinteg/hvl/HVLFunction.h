#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hvl/HVFunction.h"
#include "support/HvintegExport.h"

class JNIHvlFunction;
class JNIHvlProgram;
class JNIJSONObject;

/// One step of a job under composition.
///
/// A caller makes every builder of a job on one JNIHvlProgram, configures it with setters that
/// store and never validate, links it to its inputs with AddPredFunction, and calls GenerateHVL on
/// the last one only: generation runs backwards through the chain, and a step that is reached twice
/// is created once. The text of the job then comes from JNIHvlProgram::getHvlText.
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
/// Ownership: program and predecessors are borrowed and must live as long as the builder is used;
/// the created function belongs to the object manager and lasts until `cleanJRef`. A copy shares
/// all three, and counts as created if its source does.
///
/// Threads: the one that composes the job. Errors: GenerateHVL gives false for a job that lacks
/// something, and lets JNIException pass; the builder is then as it was before and may try again.
class HVINTEG_EXPORT HVLFunction
{
public:
    explicit HVLFunction(JNIHvlProgram* program);
    HVLFunction(const HVLFunction& other);
    HVLFunction& operator=(const HVLFunction& other);

    virtual ~HVLFunction();
    /// The created function, null before generation.
    virtual JNIHvlFunction* GetHVFunction();
    /// Creates this step and those before it in the program. True if the step stands there.
    virtual bool GenerateHVL() = 0;

    /// Adds an input, under a tag that CompleteTags finds or under the caller's own. A null pointer
    /// is ignored.
    void AddPredFunction(HVLFunction* pred);
    void AddPredFunction(HVLFunction* pred, const std::string& tag);

    /// What kind of builder this is, whether its step stands in the program, and another program
    /// for it: what was created stays in the one it was created in.
    HVFunction GetFunctionType() const { return _functionType; }
    bool IsCreatedHvl() const { return _isCreated; }
    void SetJNIHvlProgram(JNIHvlProgram* program) { _program = program; }

protected:
    void SetFunctionType(HVFunction functionType) { _functionType = functionType; }
    void SetIsCreatedHvl(bool isCreated) { _isCreated = isCreated; }
    /// Gives every input a tag of its own: an empty one becomes `base` and a number, one that an
    /// earlier input has already gains a number. One count runs through the call, so the numbers of
    /// a step do not repeat.
    void CompleteTags(const char* base);

    JNIHvlProgram* GetProgram() const { return _program; }
    const std::vector<HVLFunction*>& GetPredecessors() const { return _predecessors; }
    /// One for each predecessor, at the same index.
    const std::vector<std::string>& GetTags() const { return _tags; }
    /// The first input, null if there is none; the others do not concern a step with one input.
    HVLFunction* GetFirstPredecessor() const;

    /// What GenerateHVL gives without any work: false without a program, true for a step that was
    /// created before. Nothing otherwise.
    std::optional<bool> GetKnownResult() const;
    /// Generates the first input, if there is one, whatever comes of it: a step whose input is
    /// missing is created all the same, and the engine names what it lacks.
    void GenerateFirstPredecessor();
    /// Creates the function with its configuration and the function of the first input, if there is
    /// an input, and keeps it.
    bool CreateFunction(const std::string& name, JNIJSONObject& configuration);
    /// The same two for a step that takes all its inputs: generates each in order, and hands their
    /// functions over by tag. The tags are complete by then. An input without a function is left
    /// out, so a caller checks GenerateHVL of each input before.
    void GenerateAllPredecessors();
    bool CreateTaggedFunction(const std::string& name, JNIJSONObject& configuration);
    /// Keeps what a factory of the program returned, and tells whether it is there.
    bool KeepFunction(JNIHvlFunction* function);

    /// For a function that somebody else created.
    void SetFunction(JNIHvlFunction* function) { _function = function; }

private:
    bool isTagTaken(const std::string& tag, std::size_t before) const;

    JNIHvlProgram* _program;
    JNIHvlFunction* _function = nullptr;
    std::vector<HVLFunction*> _predecessors;
    std::vector<std::string> _tags;
    HVFunction _functionType = GenericFunction;
    bool _isCreated = false;
};
