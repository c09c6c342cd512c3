#include "runtime/QueryFaults.h"

#include <optional>
#include <string_view>
#include <utility>

#include "ErrorIds.h"
#include "datafile/RaisedFault.h"

namespace EmbeddedHV {
namespace {

bool contains(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

/// What stands between two marks; nullopt if the first one is not there. An `end` that is not there
/// stands for the end of the text.
std::optional<std::string> between(const std::string& text, std::string_view begin,
                                   std::string_view end)
{
    const auto from = text.find(begin);
    if (from == std::string::npos)
        return std::nullopt;
    const auto start = from + begin.size();
    return text.substr(start, text.find(end, start) - start);
}

/// The words of types in the database's messages and in this engine's.
constexpr std::pair<std::string_view, const char*> kTypeWords[] = {
    {"BIGINT", "Integer"},      {"DOUBLE", "Real"}, {"DATE", "Date"},
    {"TIMESTAMP", "Timestamp"}, {"TIME", "Time"},
};

const char* typeWord(std::string_view type)
{
    for (const auto& [name, word] : kTypeWords)
        if (name == type)
            return word;
    return "of its type";
}

constexpr std::string_view kCsvMark = "CSV Error on Line: ";

std::string csvPath(const std::string& message)
{
    return between(message, "\n  file = ", "\n").value_or("");
}

JobError csvFault(const std::string& message)
{
    return {errors::kBadRecord,
            "read: " + csvPath(message) + ":" + between(message, kCsvMark, "\n").value_or("1") +
                ": " + csvReason(message),
            message};
}

/// What the database says, without its own names of types.
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

/// Faults that show by a phrase in the message.
struct Phrase
{
    std::string_view phrase;
    const char* id;
    const char* text; ///< null: the database's own
    bool aboutTarget; ///< the text names what is written, not the steps
};

constexpr const char* kNoSpread =
    "there is no sd or variance of values that are infinite, not a number or too large";

constexpr Phrase kPhrases[] = {
    {"No space left on device", errors::kDiskFull, "there is no room left for the file", true},
    {"File too large", errors::kDiskFull, "there is no room left for the file", true},
    {"Disk quota exceeded", errors::kDiskFull, "there is no room left for the file", true},
    {"max_temp_directory_size", errors::kDiskFull, "there is no room left for temporary files",
     false},
    {"Could not write", errors::kFileUnwritable, "the file cannot be written", true},
    // Only an unfinished file has such a name.
    {".part\": ", errors::kFileUnwritable, "the file cannot be written", true},
    {"Out of Memory Error", errors::kOutOfMemory, "there is not enough memory", false},
    {"STDDEV_SAMP is out of range", errors::kOutOfRange, kNoSpread, false},
    {"VARSAMP is out of range", errors::kOutOfRange, kNoSpread, false},
    {"Out of Range Error", errors::kOutOfRange, nullptr, false},
    {"out of range for the destination type", errors::kOutOfRange, nullptr, false},
    {"Conversion Error", errors::kConversion, nullptr, false},
};

} // namespace

std::string headline(const std::string& databaseMessage)
{
    std::string line = databaseMessage.substr(0, databaseMessage.find('\n'));
    const auto classEnd = line.find(" Error: ");
    return classEnd == std::string::npos ? line : line.substr(classEnd + 8);
}

std::string csvReason(const std::string& databaseMessage)
{
    if (const auto wanted = between(databaseMessage, "Expected Number of Columns: ", " ")) {
        const std::string found =
            between(databaseMessage, " Found: ", "\n").value_or("another number of");
        return "the record has " + found + (found == "1" ? " field" : " fields") + ", not " +
               *wanted;
    }
    if (const auto value = between(databaseMessage, "Could not convert string \"", "\" to '"))
        return "field \"" +
               between(databaseMessage, "Error when converting column \"", "\". ").value_or("") +
               "\": \"" + *value + "\" is not " +
               typeWord(between(databaseMessage, "\" to '", "'").value_or(""));
    if (contains(databaseMessage, "unterminated quote"))
        return "a quote is not closed";
    if (contains(databaseMessage, "Invalid unicode"))
        return "the text is not UTF-8";
    if (contains(databaseMessage, "Maximum line size"))
        return "the line is too long";
    // The mark stands on the first line, the reason on the one after the record itself.
    const auto lines = between(databaseMessage, "Original Line: ", "\n\n");
    const auto reason = lines ? lines->find('\n') : std::string::npos;
    return reason == std::string::npos ? headline(databaseMessage) : lines->substr(reason + 1);
}

bool isCsvFault(const std::string& databaseMessage, const std::string& path)
{
    return contains(databaseMessage, kCsvMark) && csvPath(databaseMessage) == path;
}

bool isCsvConversionFault(const std::string& databaseMessage, const std::string& path)
{
    return isCsvFault(databaseMessage, path) &&
           contains(databaseMessage, "Error when converting column");
}

JobError faultOf(const std::string& databaseMessage, const std::string& steps,
                 const std::string& target)
{
    if (auto raised = raisedFault(databaseMessage))
        return *std::move(raised);
    if (contains(databaseMessage, kCsvMark))
        return csvFault(databaseMessage);
    if (contains(databaseMessage, "CSV Parser state machine"))
        return {errors::kNotOfItsKind,
                "read: " + csvPath(databaseMessage) + ": this is not a CSV file", databaseMessage};
    for (const Phrase& known : kPhrases)
        if (contains(databaseMessage, known.phrase))
            return {known.id,
                    (known.aboutTarget ? "write: " + target : steps) + ": " +
                        (known.text ? known.text : ownWords(databaseMessage)),
                    databaseMessage};
    return {errors::kQueryFailed, steps + ": " + headline(databaseMessage), databaseMessage};
}

} // namespace EmbeddedHV
