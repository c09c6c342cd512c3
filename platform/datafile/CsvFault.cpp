#include "datafile/CsvFault.h"

#include <utility>

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

std::optional<std::string> csvLine(const std::string& databaseMessage)
{
    return between(databaseMessage, kCsvMark, "\n");
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
    // The marker is on the first line; the reason follows on the line after the record.
    const auto lines = between(databaseMessage, "Original Line: ", "\n\n");
    const auto reason = lines ? lines->find('\n') : std::string::npos;
    return reason == std::string::npos ? headline(databaseMessage) : lines->substr(reason + 1);
}

} // namespace datafile
