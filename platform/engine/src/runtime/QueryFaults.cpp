#include "runtime/QueryFaults.h"

#include <optional>
#include <string_view>
#include <utility>

#include "ErrorIds.h"
#include "datafile/CsvFault.h"
#include "datafile/RaisedFault.h"
#include "datafile/SpaceFault.h"

namespace EmbeddedHV {
namespace {

using datafile::between;
using datafile::contains;
using datafile::csvLine;
using datafile::headline;

std::string csvPath(const std::string& message)
{
    return between(message, "\n  file = ", "\n").value_or("");
}

JobError csvFault(const std::string& message)
{
    return {errors::kBadRecord,
            datafile::csvParts(csvPath(message), csvLine(message).value_or(1), message), message};
}

/// The database's message, with our own names of types.
std::string ownWords(const std::string& message)
{
    if (const auto value = between(message, " with value ", " can't be cast"))
        return "the number " + *value + " is beyond the range of an Integer";
    constexpr std::string_view kType = "INT64";
    std::string text = headline(message);
    if (const auto at = text.find(kType); at != std::string::npos)
        text.replace(at, kType.size(), "Integer");
    if (text.ends_with('!'))
        text.pop_back();
    return text;
}

/// An error that a phrase in the database's message identifies.
struct Phrase
{
    std::string_view phrase;
    const char* id;
    const char* text; ///< null: use the database's text
    bool aboutTarget; ///< the text names the output instead of the steps
};

constexpr Phrase kPhrases[] = {
    {"max_temp_directory_size", errors::kDiskFull, "no space is left for temporary files", false},
    {"Could not write", errors::kFileUnwritable, "the file cannot be written", true},
    // Only unfinished files have this ending.
    {".part\": ", errors::kFileUnwritable, "the file cannot be written", true},
    {"Out of Memory Error", errors::kOutOfMemory, "there is not enough memory", false},
    {"Out of Range Error", errors::kOutOfRange, nullptr, false},
    {"out of range for the destination type", errors::kOutOfRange, nullptr, false},
    {"Conversion Error", errors::kConversion, nullptr, false},
};

FaultParts targetParts(const std::string& problem, const std::string& target, bool isFile)
{
    if (isFile)
        return {.step = "write", .file = target, .what = problem};
    return {.step = "write", .what = target + ": " + problem};
}

bool isCsvStateFault(const std::string& message)
{
    return contains(message, "CSV Parser state machine");
}

} // namespace

bool isCsvFault(const std::string& databaseMessage, const std::string& path)
{
    return csvLine(databaseMessage) && csvPath(databaseMessage) == path;
}

bool isCsvConversionFault(const std::string& databaseMessage, const std::string& path)
{
    return isCsvFault(databaseMessage, path) &&
           contains(databaseMessage, "Error when converting column");
}

bool isCsvFormFault(const std::string& databaseMessage, const std::string& path)
{
    const bool ofRecord =
        isCsvFault(databaseMessage, path) && !isCsvConversionFault(databaseMessage, path);
    return ofRecord || (isCsvStateFault(databaseMessage) && csvPath(databaseMessage) == path);
}

JobError faultOf(const std::string& databaseMessage, const std::string& steps,
                 const std::string& target, bool targetIsFile)
{
    // Our own SQL raises errors with an id and a sentence. Check these first.
    if (auto raised = raisedFault(databaseMessage))
        return *std::move(raised);
    if (csvLine(databaseMessage))
        return csvFault(databaseMessage);
    if (isCsvStateFault(databaseMessage))
        return {errors::kNotOfItsKind,
                FaultParts{.step = "read",
                           .file = csvPath(databaseMessage),
                           .what = "this is not a CSV file, or its lines end in two ways"},
                databaseMessage};
    if (const char* const full = datafile::spaceFaultIn(databaseMessage))
        return {errors::kDiskFull, targetParts(full, target, targetIsFile), databaseMessage};
    for (const Phrase& known : kPhrases)
        if (contains(databaseMessage, known.phrase)) {
            const std::string problem = known.text ? known.text : ownWords(databaseMessage);
            return {known.id,
                    known.aboutTarget ? targetParts(problem, target, targetIsFile)
                                      : FaultParts{.step = steps, .what = problem},
                    databaseMessage};
        }
    return {errors::kQueryFailed, FaultParts{.step = steps, .what = headline(databaseMessage)},
            databaseMessage};
}

} // namespace EmbeddedHV
