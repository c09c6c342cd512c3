#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hvhost/base/CommonOptions.h"
#include "hvhost/base/JobOrigin.h"

class HVLExpressionFun;
class HVLFunction;
class HVLRead;
class HVLUpdateDataModel;
class InputFile;
class JNIHvlProgram;

/// The first steps of a generated job: an input file, derived fields, a filter. Borrows all
/// arguments.
class RecordChain
{
public:
    RecordChain(JNIHvlProgram& program, const InputFile& input, const RecordOptions& options);
    ~RecordChain();
    RecordChain(const RecordChain&) = delete;
    RecordChain& operator=(const RecordChain&) = delete;

    /// The last step of the chain. The next step follows it.
    HVLFunction* last() { return _last; }
    /// The options for the expressions, in the order of the steps.
    const std::vector<JobOrigin::Expression>& expressions() const { return _expressions; }

private:
    HVLExpressionFun& append();
    void derive(const std::string& derivation);

    JNIHvlProgram& _program;
    std::unique_ptr<HVLRead> _read;
    std::unique_ptr<HVLUpdateDataModel> _update; ///< metadata that the reading does not provide
    std::vector<std::unique_ptr<HVLExpressionFun>> _steps;
    std::vector<JobOrigin::Expression> _expressions;
    HVLFunction* _last;
};

/// The job text of a chain that ends with `last`. Throws CommandFault if the job cannot be
/// composed.
std::string generateJob(JNIHvlProgram& program, HVLFunction& last);
