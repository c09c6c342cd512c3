#include "WebFetch.h"

#include <fstream>
#include <iterator>
#include <memory>

#include <curl/curl.h>

#include "ShownAddress.h"

namespace EmbeddedHV::maps {
namespace {

constexpr std::string_view kFileProtocol = "file://";
constexpr long kConnectSeconds = 10;
constexpr long kSilentSeconds = 30; ///< without a byte
constexpr long kMostSeconds = 300;
constexpr long kMostRedirects = 5;
constexpr long kFirstError = 400; ///< of the status codes
constexpr std::size_t kMostBytes = std::size_t{1} << 30;

/// One request: where its answer goes, and who may end it.
struct Request
{
    const StopWish& stop;
    std::string text;

    bool isUnwanted() const { return stop && stop(); }
};

std::size_t receive(char* data, std::size_t size, std::size_t count, void* user)
{
    auto& request = *static_cast<Request*>(user);
    if (request.text.size() + size * count > kMostBytes)
        return 0; // less than was offered: the transfer fails
    request.text.append(data, size * count);
    return size * count;
}

/// Called about once a second, whether something arrives or not.
int goOn(void* user, curl_off_t, curl_off_t, curl_off_t, curl_off_t)
{
    return static_cast<const Request*>(user)->isUnwanted() ? 1 : 0;
}

struct HandleDeleter
{
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
};
using Handle = std::unique_ptr<CURL, HandleDeleter>;

Handle newHandle(const std::string& address, Request& request, char* problem)
{
    Handle handle(curl_easy_init());
    CURL* const curl = handle.get();
    curl_easy_setopt(curl, CURLOPT_URL, address.c_str());
    curl_easy_setopt(curl, CURLOPT_ERRORBUFFER, problem);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, receive);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &request);
    curl_easy_setopt(curl, CURLOPT_XFERINFOFUNCTION, goOn);
    curl_easy_setopt(curl, CURLOPT_XFERINFODATA, &request);
    curl_easy_setopt(curl, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L); // the host's signals are its own
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, kConnectSeconds);
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_TIME, kSilentSeconds);
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(curl, CURLOPT_TIMEOUT, kMostSeconds);
    curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(curl, CURLOPT_MAXREDIRS, kMostRedirects);
    // A service must not lead to a file of this machine.
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(curl, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(curl, CURLOPT_ACCEPT_ENCODING, ""); // whatever can be unpacked
    return handle;
}

std::string webText(const std::string& address, const StopWish& stop)
{
    Request request{stop, {}};
    char problem[CURL_ERROR_SIZE] = {};
    const Handle handle = newHandle(address, request, problem);
    const CURLcode result = curl_easy_perform(handle.get());
    if (result == CURLE_ABORTED_BY_CALLBACK)
        throw GeographyError(GeographyError::Stopped,
                             withoutCredentials(address) + ": the job was stopped");
    const std::string prefix = withoutCredentials(address) + ": the service does not answer: ";
    if (result != CURLE_OK)
        throw GeographyError(GeographyError::Service,
                             prefix + (problem[0] ? problem : curl_easy_strerror(result)));
    long status = 0;
    curl_easy_getinfo(handle.get(), CURLINFO_RESPONSE_CODE, &status);
    if (status >= kFirstError)
        throw GeographyError(GeographyError::Service,
                             prefix + "it refuses with status " + std::to_string(status));
    return std::move(request.text);
}

std::string fileText(const std::string& address)
{
    const std::string path = address.substr(kFileProtocol.size());
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    if (!file.is_open() || file.bad())
        throw GeographyError(GeographyError::Service, address + ": there is no such file");
    return text;
}

} // namespace

std::string fetchText(const std::string& address, const StopWish& stop)
{
    if (address.starts_with(kFileProtocol))
        return fileText(address);
    if (!address.starts_with("http://") && !address.starts_with("https://"))
        throw GeographyError(GeographyError::Service,
                             withoutCredentials(address) +
                                 ": only http, https and file addresses can be read");
    return webText(address, stop);
}

} // namespace EmbeddedHV::maps
