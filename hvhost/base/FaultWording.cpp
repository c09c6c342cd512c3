#include "hvhost/base/FaultWording.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "ErrorIds.h"
#include "base/AsciiText.h"
#include "datafile/FaultJson.h"
#include "hvhost/base/ExpressionWording.h"
#include "hvhost/base/Text.h"
#include "hvhost/base/TextScan.h"

namespace {

namespace errors = EmbeddedHV::errors;
namespace kinds = datafile::kinds;
using datafile::FaultParts;

/// An error of a file that is read, with a hint for commands that have the options for it.
struct InputFault
{
    std::string_view id;
    const char* hint;
};
constexpr const char* kReadStep = "read";
constexpr const char* kPasswordHint = "--password-file FILE or --password WORD gives it";
constexpr std::array<InputFault, 14> kInputFaults{{
    {errors::kFileMissing, ""},
    {errors::kFileIsFolder, ""},
    {errors::kFileUnreadable, ""},
    {errors::kFileEmpty, ""},
    {errors::kNotOfItsKind, kKindHint},
    {errors::kBadRecord, "--max-errors N skips up to N bad records, and says how many there were"},
    {errors::kTooManyBadRecords, "a larger --max-errors skips more bad records, -1 any number"},
    {errors::kPasswordMissing, kPasswordHint},
    {errors::kWrongPassword, kPasswordHint},
    {errors::kDataModel, ""},
    {errors::kDataModelMismatch, ""},
    {errors::kPartsDiffer, ""},
    {errors::kIteratorFailed, ""},
    {errors::kIteratorValue, ""},
}};

/// An error of a job with its parts. The text is only shown, never searched.
struct JobFault
{
    explicit JobFault(const EngineFault& fault) : id(fault.id), text(fault.text)
    {
        auto report = datafile::faultReportIn(fault.detail);
        // Another engine may report JSON of its own.
        if (report && !report->parts.what.empty()) {
            parts = std::move(report->parts);
            detail = std::move(report->detail);
        } else {
            detail = fault.detail;
        }
    }

    std::string id;
    std::string text;
    FaultParts parts;
    std::string detail;
};

const InputFault* inputFault(const std::string& id)
{
    const auto* const row = std::ranges::find(kInputFaults, id, &InputFault::id);
    return row == kInputFaults.end() ? nullptr : row;
}

/// The write step reports some of the same errors.
bool isInputFault(const JobFault& fault)
{
    return fault.parts.step == kReadStep && inputFault(fault.id) != nullptr;
}

/// The file with this path; null if the user did not name it.
const JobOrigin::File* fileIn(const std::vector<JobOrigin::File>& files, const std::string& path)
{
    const auto found = std::ranges::find(files, path, &JobOrigin::File::path);
    return path.empty() || found == files.end() ? nullptr : &*found;
}

/// The file that the error is about, if the user named it; else null. Components read and write.
const JobOrigin::File* userFile(const FaultParts& parts, const JobOrigin& origin)
{
    if (const auto* input = fileIn(origin.inputs, parts.file); input && parts.step != "write")
        return input;
    return parts.step == kReadStep ? nullptr : fileIn(origin.outputs, parts.file);
}

/// The option that sets the setting, or the setting that contains it: "targets[0]" is one of
/// "targets". Null if no option sets it.
const JobOrigin::Setting* settingOption(const std::string& path, const JobOrigin& origin)
{
    const JobOrigin::Setting* longest = nullptr;
    for (const JobOrigin::Setting& setting : origin.settings)
        if (path.starts_with(setting.path) &&
            (longest == nullptr || setting.path.size() > longest->path.size()))
            longest = &setting;
    return longest;
}

/// The error's text without the step, and with the user's name of the file.
std::string inFile(FaultParts parts, const std::string& name)
{
    parts.step.clear();
    parts.file = name;
    return sentenceOf(parts);
}

/// The error's text without the step.
std::string withoutStep(FaultParts parts)
{
    parts.step.clear();
    return sentenceOf(parts);
}

/// The reason of the host, which serves the rows, begins with the path of the file.
std::string withInputName(const std::string& reason, const JobOrigin& origin)
{
    for (const JobOrigin::File& file : origin.inputs)
        if (reason.starts_with(file.path + ":"))
            return file.name + reason.substr(file.path.size());
    return kReadStep + (": " + reason);
}

/// The user's name for the file that a row iterator serves.
const std::string& servedFile(const std::string& iterator, const JobOrigin& origin)
{
    const auto found = std::ranges::find(origin.inputs, iterator, &JobOrigin::File::iterator);
    return (found == origin.inputs.end() ? origin.inputs.front() : *found).name;
}

/// Rewrites an error of an input. An error of served rows is reported as the engine would report it
/// for the file.
std::string inInput(const JobFault& fault, const JobOrigin& origin)
{
    const FaultParts& parts = fault.parts;
    if (parts.record > 0 && parts.field.empty())
        return withInputName(parts.what, origin);
    if (parts.record > 0 && !origin.inputs.empty())
        return servedFile(parts.iterator, origin) + ": field \"" + parts.field + "\", record " +
               std::to_string(parts.record) + ": " + parts.what;
    const JobOrigin::File* const file = userFile(parts, origin);
    return file ? inFile(parts, file->name) : fault.text;
}

/// The option that derives the field.
std::string derivationOf(const std::string& name, const JobOrigin& origin)
{
    for (const JobOrigin::Expression& expression : origin.expressions)
        if (expression.option.starts_with("--derive " + name) &&
            trimmed(expression.option.substr(9 + name.size())).starts_with('='))
            return expression.option;
    return "--derive";
}

/// A setting of an output of the aggregate step.
struct OutputSetting
{
    std::string option; ///< the option for the output
    std::string name;   ///< for example "function"
};

/// Reads a path, for example output[3].function.
std::optional<OutputSetting> outputSetting(const std::string& path, const JobOrigin& origin)
{
    TextScan scan(path);
    if (!scan.skip("output["))
        return std::nullopt;
    const auto number = scan.number();
    if (!number || *number >= origin.aggregates.size() || !scan.skip("]."))
        return std::nullopt;
    return OutputSetting{origin.aggregates[*number], std::string(scan.rest())};
}

/// Rewrites an error of the aggregate step with the option of the output.
std::string inAggregate(const JobFault& fault, const JobOrigin& origin)
{
    const FaultParts& parts = fault.parts;
    if (const auto named = outputSetting(parts.namedBy, origin))
        return named->option + ": " + parts.what;
    if (const auto output = outputSetting(parts.setting, origin))
        return output->option + ": the " + output->name + " " + parts.what;
    return parts.setting.empty() ? "--stat: " + parts.what : fault.text;
}

/// Rewrites an error of a generated job with the option that caused it.
std::string withOption(const JobFault& fault, const std::string& job, const JobOrigin& origin)
{
    const FaultParts& parts = fault.parts;
    if (parts.inJob.line > 0)
        return inExpression(parts, job, origin);
    // The condition of a generated job is its last expression.
    if (parts.step == "filterRecords" && !origin.expressions.empty())
        return origin.expressions.back().option + ": " + withoutStep(parts);
    if (parts.step == "filterFields")
        return "--keep: " + withoutStep(parts);
    if (parts.step == "deriveField")
        return derivationOf(parts.field, origin) + ": " + withoutStep(parts);
    // This step only restores the types of the file. No option names it.
    if (parts.step == "updateDataModel" && !origin.inputs.empty())
        return origin.inputs.front().name + ": " + withoutStep(parts);
    if (!parts.series.empty())
        return withoutStep(parts);
    return parts.step == "aggregate" ? inAggregate(fault, origin) : fault.text;
}

/// Replaces the name of an intermediate field by the option for which it was composed.
std::string withComposedField(std::string text, const std::string& field, const JobOrigin& origin)
{
    const std::string quoted = "\"" + field + "\"";
    const auto composed = std::ranges::find(origin.composed, quoted, &JobOrigin::Expression::text);
    const std::size_t place = text.find(quoted);
    if (composed != origin.composed.end() && place != std::string::npos)
        text.replace(place, quoted.size(), composed->option);
    return text;
}

/// An error in the user's own job text, in the format of compilers.
std::string withPosition(const JobFault& fault, const std::string& name)
{
    const datafile::TextPlace& place = fault.parts.inJob;
    if (place.line == 0)
        return name + ": " + fault.text;
    return name + ":" + std::to_string(place.line) + ":" + std::to_string(place.column) + ": " +
           fault.parts.what;
}

/// Users of other languages write "wind > 2" or "x.weather == 'sun'".
std::string expressionHint(const JobFault& fault)
{
    const FaultParts& parts = fault.parts;
    if (fault.id == errors::kExpressionName && base::lowerCase(parts.name) == "null")
        return "isMissing(x.name) tests for a missing value";
    if (fault.id == errors::kExpressionName && !parts.name.empty())
        return "a field of the record is written " + fieldText(parts.name) + ", a text \"" +
               parts.name + "\"";
    if (parts.kind == kinds::kFieldInQuotes)
        return "it is written x.`" + parts.name + "`";
    if (parts.kind == kinds::kDateAndText)
        return "a date is written toDate(\"2024-12-31\")";
    if (parts.kind == kinds::kFileExists)
        return "--force replaces it";
    return parts.kind == kinds::kApostrophe
               ? "write a text in double quotes, and a name with blanks as x.`a b`"
               : "";
}

/// A hint for an error of a generated job, or of a file that the user named.
std::string hintFor(const JobFault& fault, const JobOrigin::File* file)
{
    const FaultParts& parts = fault.parts;
    if (parts.kind == kinds::kNoSuchFunction && !parts.hasSuggestion)
        return "hvhost help aggregate lists the functions";
    if (fault.id == errors::kUnknownField && !parts.field.empty() && !parts.hasSuggestion)
        return "hvhost info lists the variables";
    if (parts.kind == kinds::kNotInteger)
        return "--direct reads whole numbers of more than 15 digits as they are";
    if (fault.id == errors::kDiskFull && file && file->name == kTemporaryFile)
        return kTemporaryHint;
    return expressionHint(fault);
}

/// The expression of the option that a text begins with; empty for other texts.
std::string expressionIn(const std::string& text, const JobOrigin& origin)
{
    for (const JobOrigin::Expression& expression : origin.expressions)
        if (text.starts_with(expression.option + ":"))
            return expression.text;
    return {};
}

/// Whether an option is wrong, in the words of `text`. The engine detects that before the job runs,
/// by the text, the plan or the types of the expressions.
bool isOfOption(const JobFault& fault, const std::string& text)
{
    const bool isBeforeRun = fault.id.starts_with("HVEPA") || fault.id.starts_with("HVEPL") ||
                             (fault.id.starts_with("HVEEX") && fault.id != errors::kConversion);
    return isBeforeRun && text.starts_with("--");
}

/// The name of the group that a message is about; empty if it is unknown.
std::string groupOf(const FaultParts& parts, const JobOrigin& origin)
{
    if (parts.group > 0 && parts.group <= origin.groups.size())
        return origin.groups[parts.group - 1];
    return origin.groups.size() == 1 ? origin.groups.front() : "";
}

std::string wordWithoutGroup(const std::string& text, const FaultParts& parts,
                             const JobOrigin& origin)
{
    if (const JobOrigin::File* const file = userFile(parts, origin))
        return inFile(parts, file->name);
    if (const auto* const setting = settingOption(parts.setting, origin))
        return setting->option + ": " + parts.what;
    if (!origin.jobName.empty())
        return text;
    // The records of the data preparation are those of the data.
    if (parts.step == "tsdp:tsdp" && parts.record > 0 && !origin.inputs.empty())
        return origin.inputs.front().name + ": " + withoutStep(parts);
    if (!parts.series.empty())
        return withoutStep(parts);
    return withComposedField(text, parts.field, origin);
}

CommandFault wordInput(const JobFault& fault, const JobOrigin& origin, const std::string& detail)
{
    const std::string text = inInput(fault, origin);
    if (!origin.jobName.empty())
        return {ExitStatus::Input, origin.jobName + ": " + text, "", detail};
    return {ExitStatus::Input, text,
            origin.hasInputOptions ? inputHint(fault.id, fault.parts.kind) : "", detail};
}

} // namespace

std::string wordMessage(const std::string& text, const std::string& detail, const JobOrigin& origin)
{
    const auto report = datafile::faultReportIn(detail);
    if (!report || report->parts.what.empty())
        return text;
    if (const std::string group = groupOf(report->parts, origin); !group.empty()) {
        FaultParts parts = report->parts;
        parts.group = 0;
        return group + ": " + wordWithoutGroup(sentenceOf(parts), parts, origin);
    }
    return wordWithoutGroup(text, report->parts, origin);
}

std::string messageKind(const std::string& text, const std::string& detail)
{
    const auto report = datafile::faultReportIn(detail);
    return report && !report->id.empty() ? report->id : text;
}

std::string inputHint(const std::string& id, const std::string& kind)
{
    if (kind == kinds::kNotUtf8)
        return kForeignTextHint;
    const InputFault* const fault = inputFault(id);
    return fault ? fault->hint : "";
}

std::string logText(const EngineFault& fault)
{
    return fault.id + " " + fault.text + " " + JobFault(fault).detail;
}

bool isSyntaxFault(const EngineFault& fault)
{
    return fault.id == errors::kSyntax;
}

CommandFault wordFault(const EngineFault& reported, const std::string& jobText,
                       const JobOrigin& origin)
{
    const JobFault fault(reported);
    const std::string detail = fault.id + " " + fault.detail;
    if (isInputFault(fault))
        return wordInput(fault, origin, detail);
    if (const JobOrigin::File* const file = userFile(fault.parts, origin))
        return {ExitStatus::JobFailed, inFile(fault.parts, file->name), hintFor(fault, file),
                detail};
    if (const auto* const setting = settingOption(fault.parts.setting, origin))
        return {ExitStatus::Usage, setting->option + ": " + fault.parts.what, "", detail};
    if (!origin.jobName.empty())
        return {ExitStatus::JobFailed, withPosition(fault, origin.jobName), expressionHint(fault),
                detail};
    const std::string text = withOption(fault, jobText, origin);
    std::string hint = hintFor(fault, nullptr);
    if (hint.empty() && (isSyntaxFault(reported) || fault.id == errors::kUnknownStep))
        hint = foreignSyntaxHint(expressionIn(text, origin));
    return {isOfOption(fault, text) ? ExitStatus::Usage : ExitStatus::JobFailed, text, hint,
            detail};
}
