#include "datafile/RaisedFault.h"

#include <string_view>

#include "datafile/FaultJson.h"

namespace datafile {
namespace {

/// The database's prefix for errors that SQL raises.
constexpr std::string_view kPrefix = "Invalid Input Error: ";
constexpr std::string_view kIdBegins = "HVE";
constexpr std::size_t kIdLength = 10;
/// Ends the parts. JSON on one line does not contain it.
constexpr char kPartsEnd = '\n';

} // namespace

std::string raisedText(const char* id, const FaultParts& parts)
{
    return std::string(id) + " " + jsonOf(parts) + kPartsEnd;
}

std::optional<Fault> raisedFault(const std::string& databaseMessage)
{
    if (!databaseMessage.starts_with(kPrefix))
        return std::nullopt;
    return faultRaisedAs(databaseMessage.substr(kPrefix.size()), std::string(kPrefix));
}

std::optional<Fault> faultRaisedAs(const std::string& raised, const std::string& prefix)
{
    const std::size_t end = raised.find(kPartsEnd);
    if (!raised.starts_with(kIdBegins) || raised.size() <= kIdLength || end == std::string::npos)
        return std::nullopt;
    auto report = faultReportIn(raised.substr(kIdLength, end - kIdLength));
    if (!report)
        return std::nullopt;
    report->parts.what += raised.substr(end + 1);
    const std::string id = raised.substr(0, kIdLength);
    std::string detail = prefix + id + " " + sentenceOf(report->parts);
    return Fault(id, std::move(report->parts), std::move(detail));
}

} // namespace datafile
