#include "spark/ClusterFault.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include <nlohmann/json.hpp>

#include "DataFileNames.h"
#include "ErrorIds.h"
#include "ShownAddress.h"
#include "datafile/RaisedFault.h"

namespace EmbeddedHV {
namespace {

constexpr std::pair<std::string_view, ClusterFaultKind> kKinds[] = {
    {"ADDRESS", ClusterFaultKind::Address},         {"UNREACHABLE", ClusterFaultKind::Unreachable},
    {"DENIED", ClusterFaultKind::Denied},           {"SESSION_LOST", ClusterFaultKind::SessionLost},
    {"INTERRUPTED", ClusterFaultKind::Interrupted}, {"STATEMENT", ClusterFaultKind::Statement},
    {"SERVER", ClusterFaultKind::Server},           {"USE", ClusterFaultKind::Use},
};

std::string textIn(const nlohmann::json& object, const char* key)
{
    const auto found = object.find(key);
    return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

ClusterFaultKind kindNamed(const std::string& name)
{
    for (const auto& [known, kind] : kKinds)
        if (known == name)
            return kind;
    return ClusterFaultKind::Server;
}

using About = StatementFault::About;

/// A condition of the server that has an id of its own.
struct Condition
{
    std::string_view name;
    const char* id;
    const char* text; ///< null: the server's text
    About about;
};

constexpr Condition kConditions[] = {
    {"ARITHMETIC_OVERFLOW", errors::kOutOfRange, "a number is beyond the range of an Integer",
     About::Steps},
    {"BINARY_ARITHMETIC_OVERFLOW", errors::kOutOfRange,
     "a number is beyond the range of an Integer", About::Steps},
    {"NUMERIC_VALUE_OUT_OF_RANGE", errors::kOutOfRange,
     "a number is beyond the range of an Integer", About::Steps},
    {"CAST_INVALID_INPUT", errors::kConversion, nullptr, About::Steps},
    {"UNABLE_TO_ACQUIRE_MEMORY", errors::kOutOfMemory, "the cluster has not enough memory",
     About::Steps},
    {"TASK_WRITE_FAILED", errors::kFileUnwritable, "the file cannot be written", About::Output},
};

/// The first line of a message, without the name of its condition in front.
std::string headline(const std::string& message)
{
    const std::size_t begin = std::min(message.find_first_not_of(" \n"), message.size());
    std::string line = message.substr(begin, message.find('\n', begin) - begin);
    if (line.starts_with('['))
        if (const auto end = line.find("] "); end != std::string::npos)
            line.erase(0, end + 2);
    // The server adds its state and advice that is for its own users.
    if (const auto state = line.find(" SQLSTATE: "); state != std::string::npos)
        line.erase(state);
    while (line.ends_with('.'))
        line.pop_back();
    return line;
}

/// `uri` is as the server shows it.
JobError missingFile(std::string uri, const std::string& message)
{
    constexpr std::string_view kFile = "file:";
    if (uri.starts_with(kFile))
        uri.erase(0, uri.find_first_not_of('/', kFile.size()) - 1);
    std::error_code ignored;
    const bool isHere = std::filesystem::exists(uri, ignored);
    return {errors::kFileMissing,
            {.step = "read",
             .file = uri,
             .what = isHere ? "the workers of the cluster do not see this file; put it into a "
                              "folder that they share with this machine"
                            : "there is no such file"},
            message};
}

/// The reason of the transport, in which a refused connection says so at its end.
std::string reasonOf(const ClusterFault& fault)
{
    const std::string line = headline(fault.what());
    return line.empty() ? "" : ": " + line;
}

} // namespace

ClusterFault ClusterFault::of(const std::string& json)
{
    const nlohmann::json data = nlohmann::json::parse(json, nullptr, false);
    if (!data.is_object())
        return {ClusterFaultKind::Server, json};
    ClusterFault fault(kindNamed(textIn(data, "kind")), textIn(data, "message"));
    fault._condition = textIn(data, "condition");
    if (const auto found = data.find("parameters"); found != data.end() && found->is_object())
        for (const auto& [name, value] : found->items())
            if (value.is_string())
                fault._parameters.emplace(name, value.get<std::string>());
    return fault;
}

std::string ClusterFault::parameter(const std::string& name) const
{
    const auto found = _parameters.find(name);
    return found == _parameters.end() ? std::string() : found->second;
}

bool ClusterFault::isOfConnection() const
{
    switch (_kind) {
    case ClusterFaultKind::Address:
    case ClusterFaultKind::Unreachable:
    case ClusterFaultKind::Denied:
    case ClusterFaultKind::SessionLost:
        return true;
    default:
        return false;
    }
}

std::string shownCluster(const std::string& url)
{
    // Options follow a semicolon. One of them is the token of the user.
    const std::string shown = withoutCredentials(url.substr(0, url.find(';')));
    return shown.ends_with('/') ? shown.substr(0, shown.size() - 1) : shown;
}

JobError connectionError(const ClusterFault& fault, const std::string& url)
{
    const std::string name = shownCluster(url);
    const std::string shown = "the cluster at " + name;
    switch (fault.kind()) {
    case ClusterFaultKind::Address:
        return {errors::kNoCluster,
                {.name = name,
                 .what = shown + " cannot be used, because no Spark Connect server is there" +
                         reasonOf(fault) + "; the form of an address is sc://HOST:PORT"},
                fault.what()};
    case ClusterFaultKind::Denied:
        return {errors::kNoCluster,
                {.name = name,
                 .what = shown + " rejects this user" + reasonOf(fault) +
                         "; a token is added to the address as /;token=TOKEN"},
                fault.what()};
    case ClusterFaultKind::SessionLost:
        return {errors::kClusterLost,
                {.name = name,
                 .what = shown + " has lost the session of the job, because it was started again; "
                                 "run the job once more"},
                fault.what()};
    default:
        return {errors::kNoCluster,
                {.name = name,
                 .what = shown + " does not answer" + reasonOf(fault) +
                         "; start its Spark Connect server or correct the address"},
                fault.what()};
    }
}

StatementFault statementFault(const ClusterFault& fault, const std::string& url)
{
    const std::string message = fault.what();
    if (fault.kind() == ClusterFaultKind::Unreachable)
        return {message,
                {errors::kClusterLost,
                 {.name = shownCluster(url),
                  .what = "the connection to the cluster at " + shownCluster(url) + " is lost" +
                          reasonOf(fault) + "; run the job again when its server answers"},
                 message},
                About::Itself};
    if (fault.isOfConnection())
        return {message, connectionError(fault, url), About::Itself};
    // Our own SQL raises errors with an id and a sentence.
    if (fault.isCondition("USER_RAISED_EXCEPTION"))
        if (auto raised = datafile::faultRaisedAs(fault.parameter("errorMessage"), ""))
            return {message, *std::move(raised), About::Itself};
    if (fault.isCondition("PATH_NOT_FOUND"))
        return {message, missingFile(fault.parameter("path"), message), About::Itself};
    if (fault.isCondition("CAST_OVERFLOW")) {
        // The server adds letters for the type of the number.
        const std::string value = fault.parameter("value");
        return {message,
                {errors::kOutOfRange,
                 FaultParts{.what = "the number " +
                                    value.substr(0, value.find_last_of("0123456789") + 1) +
                                    " is beyond the range of an Integer"},
                 message},
                About::Steps};
    }
    for (const Condition& known : kConditions)
        if (fault.isCondition(std::string(known.name)))
            return {message,
                    {known.id, FaultParts{.what = known.text ? known.text : headline(message)},
                     message},
                    known.about};
    return {message,
            {errors::kQueryFailed, FaultParts{.what = headline(message)}, message},
            About::Steps};
}

} // namespace EmbeddedHV
