#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hvhost/base/CommonOptions.h"
#include "hvhost/base/JobOrigin.h"
#include "hvhost/job/RecordNames.h"

class HVLExpressionFun;
class HVLFunction;
class HVLRead;
class HVLUpdateDataModel;
class InputFile;
class OutputFile;
class JNIHvlProgram;

/// How a file is read whose records are then changed: without records that --limit would drop.
InputOptions limitedReading(const InputOptions& input, const RecordOptions& records);

/// The first steps of a generated job: an input, then what the options do with its records, in this
/// order: derived fields, a filter, distinct records, a sample, sorting, a limit, fields to keep.
/// Borrows all arguments.
class RecordChain
{
public:
    /// Begins with an input file, which was opened with limitedReading.
    RecordChain(JNIHvlProgram& program, const InputFile& input, const RecordOptions& options);
    /// Begins with the records of a step. `names` are the names of their fields.
    RecordChain(JNIHvlProgram& program, HVLFunction& first, const RecordNames& names,
                const RecordOptions& options);
    ~RecordChain();
    RecordChain(const RecordChain&) = delete;
    RecordChain& operator=(const RecordChain&) = delete;

    /// The last step of the chain. The next step follows it.
    HVLFunction* last() { return _last; }
    /// The options for the expressions, in the order of the steps.
    const std::vector<JobOrigin::Expression>& expressions() const { return _expressions; }
    /// The names of the fields to keep; empty for all.
    const std::vector<std::string>& kept() const { return _kept; }

private:
    void read(const InputFile& input);
    void change(const RecordNames& names, const RecordOptions& options);
    void select(const RecordNames& names, const RecordOptions& options);
    HVLExpressionFun& appendExpression();
    void append(std::unique_ptr<HVLFunction> step);
    void derive(const std::string& derivation);

    JNIHvlProgram& _program;
    HVLFunction* _last;
    std::vector<std::unique_ptr<HVLFunction>> _steps;
    std::vector<JobOrigin::Expression> _expressions;
    std::vector<std::string> _kept;
};

/// The job text of a chain that ends with `last`. Throws CommandFault if the job cannot be
/// composed.
std::string generateJob(JNIHvlProgram& program, HVLFunction& last);
/// The same for several statements, in their order.
std::string generateJob(JNIHvlProgram& program, const std::vector<HVLFunction*>& statements);
/// The same for a job whose last statement writes the records of `records` to a file.
std::string writingJob(JNIHvlProgram& program, HVLFunction& records, const OutputFile& output,
                       std::vector<HVLFunction*> earlier = {});
