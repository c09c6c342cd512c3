#include "duckdb/DuckFaults.h"

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

using About = StatementFault::About;

/// An error that a phrase in the database's message identifies.
struct Phrase
{
    std::string_view phrase;
    const char* id;
    const char* text; ///< null: use the database's text
    About about;
};

constexpr Phrase kPhrases[] = {
    {"max_temp_directory_size", errors::kDiskFull, "no space is left for temporary files",
     About::Steps},
    {"Could not write", errors::kFileUnwritable, "the file cannot be written", About::Output},
    // Only unfinished files have this ending.
    {".part\": ", errors::kFileUnwritable, "the file cannot be written", About::Output},
    {"Out of Memory Error", errors::kOutOfMemory, "there is not enough memory", About::Steps},
    {"Out of Range Error", errors::kOutOfRange, nullptr, About::Steps},
    {"out of range for the destination type", errors::kOutOfRange, nullptr, About::Steps},
    {"Conversion Error", errors::kConversion, nullptr, About::Steps},
};

bool isCsvStateFault(const std::string& message)
{
    return contains(message, "CSV Parser state machine");
}

/// The database does not say in which file a record is longer than its buffer.
bool isCsvBufferFault(const std::string& message)
{
    return contains(message, "The Parallel CSV Reader currently does not support");
}

StatementFault meaningOf(const std::string& message)
{
    const auto fault = [&message](const char* id, const std::string& what, About about) {
        return StatementFault(message, {id, FaultParts{.what = what}, message}, about);
    };
    // Our own SQL raises errors with an id and a sentence. Check these first.
    if (auto raised = raisedFault(message))
        return {message, *std::move(raised), About::Itself};
    if (csvLine(message))
        return {message, csvFault(message), About::Itself};
    if (isCsvStateFault(message))
        return {message,
                {errors::kNotOfItsKind,
                 FaultParts{.step = "read",
                            .file = csvPath(message),
                            .what = "this is not a CSV file, or its lines end in two ways"},
                 message},
                About::Itself};
    if (const char* const full = datafile::spaceFaultIn(message))
        return fault(errors::kDiskFull, full, About::Output);
    for (const Phrase& known : kPhrases)
        if (contains(message, known.phrase))
            return fault(known.id, known.text ? known.text : ownWords(message), known.about);
    return fault(errors::kQueryFailed, headline(message), About::Steps);
}

StatementFault::Csv csvOf(const std::string& message)
{
    using Csv = StatementFault::Csv;
    if (csvLine(message))
        return contains(message, "Error when converting column") ? Csv::Value : Csv::Record;
    const bool isOfForm = isCsvStateFault(message) || isCsvBufferFault(message);
    return isOfForm ? Csv::Form : Csv::Nothing;
}

/// The file that may be damaged. The text is empty if that can be any file: the database reports
/// internal errors of its reader without the file.
std::optional<std::string> damagedFile(const std::string& message)
{
    if (message.starts_with("Invalid Error: "))
        return std::string();
    return between(message, "Failed to read file \"", "\"");
}

} // namespace

StatementFault duckFault(const std::string& message)
{
    StatementFault fault = meaningOf(message);
    fault.setCsv(csvOf(message), csvPath(message));
    if (auto file = damagedFile(message))
        fault.setDamage(*std::move(file));
    return fault;
}

} // namespace EmbeddedHV
