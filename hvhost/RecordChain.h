#pragma once

#include <memory>
#include <string>
#include <vector>

#include "CommonOptions.h"
#include "JobOrigin.h"

class HVLExpressionFun;
class HVLFunction;
class HVLRead;
class HVLUpdateDataModel;
class InputFile;
class JNIHvlProgram;

/// The first steps of a generated job: an input file, derived fields, a filter.
class RecordChain
{
public:
    RecordChain(JNIHvlProgram& program, const InputFile& input, const RecordOptions& options);
    ~RecordChain();
    RecordChain(const RecordChain&) = delete;
    RecordChain& operator=(const RecordChain&) = delete;

    /// The step that the next one follows.
    HVLFunction* last() { return _last; }
    /// The options behind the expressions, in the order of the steps.
    const std::vector<JobOrigin::Expression>& expressions() const { return _expressions; }

private:
    HVLExpressionFun& append();
    void derive(const std::string& derivation);

    JNIHvlProgram& _program;
    std::unique_ptr<HVLRead> _read;
    std::unique_ptr<HVLUpdateDataModel> _update; ///< what the reading itself cannot say of fields
    std::vector<std::unique_ptr<HVLExpressionFun>> _steps;
    std::vector<JobOrigin::Expression> _expressions;
    HVLFunction* _last;
};

/// The job text of a chain that ends with `last`. Throws CommandFault for one that cannot be made.
std::string generateJob(JNIHvlProgram& program, HVLFunction& last);
