#include "expression/RaisedFault.h"

#include <string_view>

namespace EmbeddedHV {
namespace {

/// What the database puts before the text of an error that SQL raises.
constexpr std::string_view kPrefix = "Invalid Input Error: ";
constexpr std::string_view kIdBegins = "HVE";
constexpr std::size_t kIdLength = 10;

} // namespace

std::string raisedText(const char* id, const std::string& text)
{
    return std::string(id) + " " + text;
}

std::optional<JobError> raisedFault(const std::string& databaseMessage)
{
    if (!databaseMessage.starts_with(kPrefix))
        return std::nullopt;
    const std::string raised = databaseMessage.substr(kPrefix.size());
    if (!raised.starts_with(kIdBegins) || raised.size() <= kIdLength)
        return std::nullopt;
    return JobError(raised.substr(0, kIdLength), raised.substr(kIdLength + 1), databaseMessage);
}

} // namespace EmbeddedHV
