#include "datafile/RaisedFault.h"

#include <string_view>

namespace datafile {
namespace {

/// The database's prefix for errors that SQL raises.
constexpr std::string_view kPrefix = "Invalid Input Error: ";
constexpr std::string_view kIdBegins = "HVE";
constexpr std::size_t kIdLength = 10;

} // namespace

std::string raisedText(const char* id, const std::string& text)
{
    return std::string(id) + " " + text;
}

std::optional<Fault> raisedFault(const std::string& databaseMessage)
{
    if (!databaseMessage.starts_with(kPrefix))
        return std::nullopt;
    const std::string raised = databaseMessage.substr(kPrefix.size());
    if (!raised.starts_with(kIdBegins) || raised.size() <= kIdLength)
        return std::nullopt;
    return Fault(raised.substr(0, kIdLength), raised.substr(kIdLength + 1), databaseMessage);
}

} // namespace datafile
