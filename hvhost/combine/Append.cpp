#include "hvhost/combine/Append.h"

#include <iostream>
#include <memory>

#include "bridge/JNIHvlProgram.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/base/UserMessages.h"
#include "hvhost/combine/AppendedFields.h"
#include "hvhost/combine/CombinedInputs.h"
#include "hvhost/input/Dataset.h"
#include "hvhost/input/FieldTypes.h"
#include "hvhost/input/OutputFile.h"
#include "hvhost/job/HostSession.h"
#include "hvhost/show/ResultWords.h"
#include "hvl/HVLUnion.h"

namespace {

/// The number of fields that a message names.
constexpr std::size_t kNamedFields = 5;

/// One tag for each file. The engine appends the inputs in the order of their tags.
std::vector<std::string> tagsOf(const std::vector<std::string>& files)
{
    std::vector<std::string> tags;
    for (std::size_t i = 0; i < files.size(); ++i)
        tags.push_back("file" + std::to_string(i + 1));
    return tags;
}

/// The steps that read the files, ready to be appended. Fields without values get the types of the
/// other files.
std::vector<std::unique_ptr<CombinedInput>> readingSteps(JNIHvlProgram& program,
                                                         const CombinedInputs& inputs,
                                                         const std::vector<AppendedField>& fields)
{
    std::vector<std::unique_ptr<CombinedInput>> steps;
    bool hasWeight = false;
    for (std::size_t i = 0; i < inputs.count(); ++i) {
        steps.push_back(std::make_unique<CombinedInput>(program, inputs, i));
        for (const AppendedField& field : fields)
            if (field.columns[i] >= 0 &&
                !areComparable(inputs.storage(i, field.columns[i]), field.storage))
                steps[i]->retype(inputs.dataset(i).nameOf(field.columns[i]), field.storage);
        if (hasWeight)
            steps[i]->dropWeight(inputs.dataset(i));
        hasWeight = hasWeight || inputs.dataset(i).weight() >= 0;
    }
    return steps;
}

void tellLacking(const std::vector<AppendedField>& fields, const CombinedInputs& inputs)
{
    for (std::size_t i = 0; i < inputs.count(); ++i) {
        const std::vector<std::string> names = lackingFields(fields, i);
        std::string text;
        for (std::size_t name = 0; name < names.size() && name < kNamedFields; ++name)
            text += (name == 0 ? "\"" : ", \"") + names[name] + "\"";
        if (names.size() > kNamedFields)
            text = sentence("^1 and ^2 more", {text, std::to_string(names.size() - kNamedFields)});
        if (!names.empty())
            printMessage("hvhost: " + sentence("^1 has no field ^2, missing in its records",
                                               {inputs.name(i), text}));
    }
}

} // namespace

void append(const AppendOptions& options, const CommonOptions& common)
{
    const InterruptWatch watch(common.timeout);
    const CombinedInputs inputs(options, tagsOf(options.files), watch);
    const std::vector<AppendedField> fields = appendedFields(inputs, options.byPosition);
    const OutputFile output(options.output, FileOptions::Offered, watch);
    HostSession session("append", common, watch);
    JNIHvlProgram program;
    const auto steps = readingSteps(program, inputs, fields);
    HVLUnion joint(&program);
    joint.SetMatchByPosition(options.byPosition);
    for (std::size_t i = 0; i < steps.size(); ++i)
        joint.AddPredFunction(steps[i]->last(), inputs.tag(i));
    std::vector<std::string> names;
    names.reserve(fields.size());
    for (const AppendedField& field : fields)
        names.push_back(field.name);
    RecordChain records(program, joint, RecordNames(names, options.records), options.records);
    const std::string job = writingJob(program, *records.last(), output);
    if (options.printJob) {
        std::cout << job << '\n';
        return;
    }
    inputs.warnOfMissing(session);
    JobOrigin origin = inputs.origin();
    origin.outputs = output.origins();
    origin.expressions = records.expressions();
    session.run(job, origin, inputs.rows());
    output.deliver();
    if (!common.quiet)
        tellLacking(fields, inputs);
    inputs.finish();
    session.finish();
}
