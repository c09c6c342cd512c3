#include "hvhost/input/TextForm.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "CaseFileError.h"
#include "base/ListText.h"
#include "datafile/FaultIds.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/base/ReadableFile.h"
#include "hvhost/input/Dataset.h"

namespace {

constexpr std::array<std::pair<std::string_view, CFField::StorageType>, 6> kTypes{
    {{"text", CFField::String},
     {"integer", CFField::Integer},
     {"real", CFField::Real},
     {"date", CFField::Date},
     {"time", CFField::Time},
     {"timestamp", CFField::Timestamp}}};

constexpr std::string_view kBoolean = "boolean";

/// Adds the type of a field.
void addType(const std::string& option, TextImport& form)
{
    const std::size_t equals = option.rfind('=');
    const bool hasName = equals != std::string::npos && equals > 0;
    const std::string name = option.substr(0, hasName ? equals : 0);
    const std::string type = hasName ? option.substr(equals + 1) : std::string();
    const auto known =
        std::ranges::find(kTypes, type, &std::pair<std::string_view, CFField::StorageType>::first);
    if (type == kBoolean)
        form.booleans.push_back(name);
    else if (known != kTypes.end())
        form.types.emplace_back(name, known->second);
    else
        throw CommandFault(ExitStatus::Usage, "--type " + option + ": no NAME=TYPE",
                           "the types are text, integer, real, boolean, date, time and timestamp");
}

constexpr const char* kConversionHint =
    "--missing TEXT reads a text as missing; --type NAME=text keeps all texts of a field";

/// A character cannot have two meanings.
void refuseEqual(char given, char other, const std::string& option, const char* meaning)
{
    if (given != '\0' && given == other)
        throw CommandFault(ExitStatus::Usage, option + " " + given + ": this is " + meaning);
}

char characterOf(const std::string& option)
{
    return option.empty() ? '\0' : option.front();
}

} // namespace

TextImport textImport(const InputOptions& options, DataKind kind, const TextHead& head,
                      const InterruptWatch& watch)
{
    TextImport result;
    result.look = [&watch] { watch.check(); };
    if (kind == DataKind::Json) {
        result.kind = TextImport::Kind::Json;
        return result;
    }
    result.hasHeader = !options.noHeader;
    result.missing = options.missing;
    for (const std::string& type : options.types)
        addType(type, result);
    if (kind == DataKind::Sheet) {
        result.kind = TextImport::Kind::Sheet;
        result.sheet = options.sheet;
        result.skippedLines = static_cast<std::uint64_t>(options.skippedLines.value_or(0));
        return result;
    }
    result.codePage = options.encoding;
    result.separator = head.dialect.separator;
    result.quote = head.dialect.quote;
    result.escape = head.dialect.escape;
    result.decimalComma = options.decimalComma;
    result.thousands = characterOf(options.thousands);
    result.comment = options.comment.empty() ? head.dialect.comment : characterOf(options.comment);
    const char decimal = options.decimalComma ? ',' : '.';
    refuseEqual(result.thousands, decimal, "--thousands", "the decimal mark");
    refuseEqual(result.thousands, head.dialect.separator, "--thousands", "the separator");
    refuseEqual(result.comment, head.dialect.separator, "--comment", "the separator");
    result.skippedLines = static_cast<std::uint64_t>(options.skippedLines.value_or(0)) +
                          head.skipped + head.blankLines;
    result.dateFormat = options.dateFormat;
    return result;
}

std::vector<TextDoubt> importText(const ReadableFile& file, const TextImport& form,
                                  const std::string& target, const std::string& kindOption)
try {
    const TextImported told = ImportTextFile(file.path(), form, target);
    std::vector<TextDoubt> doubts;
    if (!told.dayFirst.empty())
        doubts.push_back({base::joined(told.dayFirst, ", ") +
                              ": dates were read with the day first, and the month could be first",
                          "--date-format sets the order, as in %m/%d/%Y"});
    if (!told.yearUnclear.empty())
        doubts.push_back({base::joined(told.yearUnclear, ", ") +
                              ": dates with years of two digits were read as texts",
                          "--date-format reads them, as in %d.%m.%y"});
    if (told.impossibleDates > 0)
        doubts.push_back({std::to_string(told.impossibleDates) +
                              (told.impossibleDates == 1 ? " number has" : " numbers have") +
                              " a format of dates, and no such dates exist; they are missing",
                          ""});
    return doubts;
} catch (const ErrorText& error) {
    const CommandFault fault = inputFault(error, file, {}, kindOption);
    // Records cannot be skipped here.
    if (!fault.hint().starts_with("--max-errors"))
        throw fault;
    const auto* const known = dynamic_cast<const CaseFileError*>(&error);
    const bool isOfCount = known != nullptr && known->kind() == datafile::kinds::kFieldCount;
    throw CommandFault(fault.status(), fault.what(), isOfCount ? "" : kConversionHint);
}
