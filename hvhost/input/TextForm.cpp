#include "hvhost/input/TextForm.h"

#include <array>
#include <string_view>
#include <utility>

#include "CaseFileError.h"
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

std::pair<std::string, CFField::StorageType> typeOf(const std::string& option)
{
    const std::size_t equals = option.rfind('=');
    for (const auto& [word, storage] : kTypes)
        if (equals != std::string::npos && equals > 0 && option.substr(equals + 1) == word)
            return {option.substr(0, equals), storage};
    throw CommandFault(ExitStatus::Usage, "--type " + option + ": no NAME=TYPE",
                       "the types are text, integer, real, date, time and timestamp");
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

TextImport textImport(const InputOptions& options, DataKind kind, const CsvForm& form,
                      const InterruptWatch& watch)
{
    TextImport result;
    result.look = [&watch] { watch.check(); };
    if (kind == DataKind::Json) {
        result.kind = TextImport::Kind::Json;
        return result;
    }
    result.codePage = options.encoding;
    result.separator = form.separator;
    result.hasHeader = !options.noHeader;
    result.decimalComma = form.decimalComma;
    result.thousands = characterOf(options.thousands);
    result.comment = characterOf(options.comment);
    const char decimal = form.decimalComma ? ',' : '.';
    refuseEqual(result.thousands, decimal, "--thousands", "the decimal mark");
    refuseEqual(result.thousands, form.separator, "--thousands", "the separator");
    refuseEqual(result.comment, form.separator, "--comment", "the separator");
    result.skippedLines = static_cast<std::uint64_t>(options.skippedLines.value_or(0));
    result.missing = options.missing;
    for (const std::string& type : options.types)
        result.types.push_back(typeOf(type));
    result.dateFormat = options.dateFormat;
    return result;
}

void importText(const ReadableFile& file, const TextImport& form, const std::string& target,
                const std::string& kindOption)
try {
    ImportTextFile(file.path(), form, target);
} catch (const ErrorText& error) {
    const CommandFault fault = inputFault(error, file, {}, kindOption);
    // Records cannot be skipped here.
    if (!fault.hint().starts_with("--max-errors"))
        throw fault;
    const auto* const known = dynamic_cast<const CaseFileError*>(&error);
    const bool isOfCount = known != nullptr && known->kind() == datafile::kinds::kFieldCount;
    throw CommandFault(fault.status(), fault.what(), isOfCount ? "" : kConversionHint);
}
