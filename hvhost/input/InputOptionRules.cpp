#include "hvhost/input/InputOptionRules.h"

#include <string>

#include "hvhost/base/CommandFault.h"

void refuseOptionsOfOtherKinds(const InputOptions& options, DataKind kind)
{
    const bool isCsv = kind == DataKind::Csv;
    const bool isSheet = kind == DataKind::Sheet;
    const auto refuse = [&options](bool given, const std::string& option, const char* wanted) {
        if (given)
            throw CommandFault(ExitStatus::Usage,
                               option + ": " + options.path + " is not " + wanted + " file",
                               "leave " + option + " out, or choose another kind");
    };
    refuse(!isSheet && !options.sheet.empty(), "--sheet", "an xlsx");
    if (isCsv)
        return;
    refuse(!options.encoding.empty(), "--encoding", "a csv");
    refuse(!options.separator.empty(), "--separator", "a csv");
    refuse(options.decimalComma, "--decimal-comma", "a csv");
    refuse(!options.dateFormat.empty(), "--date-format", "a csv");
    refuse(!options.thousands.empty(), "--thousands", "a csv");
    refuse(!options.comment.empty(), "--comment", "a csv");
    refuse(options.maxErrors.has_value(), "--max-errors", "a csv");
    if (isSheet)
        return;
    refuse(options.noHeader, "--no-header", "a csv or xlsx");
    refuse(options.header, "--header", "a csv or xlsx");
    refuse(!options.missing.empty(), options.missingOption, "a csv or xlsx");
    refuse(!options.types.empty(), "--type", "a csv or xlsx");
    refuse(options.skippedLines.has_value(), "--skip", "a csv or xlsx");
}
