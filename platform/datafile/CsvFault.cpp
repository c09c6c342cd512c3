#include "datafile/CsvFault.h"

#include <charconv>
#include <system_error>
#include <utility>

#include "datafile/CsvScanner.h"
#include "datafile/FaultIds.h"

namespace datafile {
namespace {

/// Type names of the database's messages, and ours.
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

/// The field whose value did not convert; empty in other messages.
std::string convertedField(const std::string& databaseMessage)
{
    return between(databaseMessage, "Error when converting column \"", "\". ").value_or("");
}

constexpr const char* kWantedCount = "Expected Number of Columns: ";

bool isOfEncoding(const std::string& databaseMessage)
{
    return contains(databaseMessage, "Invalid unicode");
}

const char* kindOf(const std::string& databaseMessage)
{
    if (contains(databaseMessage, kWantedCount))
        return kinds::kFieldCount;
    return isOfEncoding(databaseMessage) ? kinds::kNotUtf8 : "";
}

} // namespace

bool contains(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

std::optional<std::string> between(const std::string& text, std::string_view begin,
                                   std::string_view end)
{
    const auto from = text.find(begin);
    if (from == std::string::npos)
        return std::nullopt;
    const auto start = from + begin.size();
    return text.substr(start, text.find(end, start) - start);
}

std::string headline(const std::string& databaseMessage)
{
    std::string line = databaseMessage.substr(0, databaseMessage.find('\n'));
    const auto classEnd = line.find(" Error: ");
    return classEnd == std::string::npos ? line : line.substr(classEnd + 8);
}

std::optional<std::uint64_t> csvLine(const std::string& databaseMessage)
{
    const auto text = between(databaseMessage, kCsvMark, "\n");
    std::uint64_t line = 0;
    if (!text || std::from_chars(text->data(), text->data() + text->size(), line).ec != std::errc())
        return std::nullopt;
    return line;
}

std::string csvReason(const std::string& databaseMessage)
{
    if (const auto wanted = between(databaseMessage, kWantedCount, " ")) {
        const std::string found =
            between(databaseMessage, " Found: ", "\n").value_or("another number of");
        return "the record has " + found + (found == "1" ? " field" : " fields") + ", not " +
               *wanted;
    }
    if (const auto value = between(databaseMessage, "Could not convert string \"", "\" to '"))
        return "field \"" + convertedField(databaseMessage) + "\": \"" + *value + "\" is not " +
               typeWord(between(databaseMessage, "\" to '", "'").value_or(""));
    if (contains(databaseMessage, "unterminated quote"))
        return "a quote is not closed";
    if (isOfEncoding(databaseMessage))
        return "the text is not UTF-8";
    if (contains(databaseMessage, "Maximum line size"))
        return kRecordTooLong;
    // The marker is on the first line; the reason follows on the line after the record.
    const auto lines = between(databaseMessage, "Original Line: ", "\n\n");
    const auto reason = lines ? lines->find('\n') : std::string::npos;
    return reason == std::string::npos ? headline(databaseMessage) : lines->substr(reason + 1);
}

FaultParts csvParts(const std::string& path, std::uint64_t line, const std::string& databaseMessage)
{
    return {.step = "read",
            .file = path,
            .inFile = {line},
            .field = convertedField(databaseMessage),
            .kind = kindOf(databaseMessage),
            .what = csvReason(databaseMessage)};
}

} // namespace datafile
