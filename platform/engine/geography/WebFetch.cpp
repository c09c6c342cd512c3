#include "WebFetch.h"

#include <fstream>
#include <memory>

#include <curl/curl.h>

#include "ShownAddress.h"

namespace EmbeddedHV::maps {
namespace {

constexpr std::string_view kFileProtocol = "file://";
constexpr long kConnectSeconds = 10;
constexpr long kSilentSeconds = 30; ///< the longest time without a byte
constexpr long kMostSeconds = 300;
constexpr long kMostRedirects = 5;
constexpr long kFirstError = 400;      ///< the first status code that is an error
constexpr int kLookMilliseconds = 100; ///< between two checks of the stop request

/// A request and the buffer for its answer.
struct Request
{
    std::size_t mostBytes;
    std::string text;
    bool isTooLarge = false;
};

std::size_t receive(char* data, std::size_t size, std::size_t count, void* user)
{
    auto& request = *static_cast<Request*>(user);
    request.isTooLarge = size * count > request.mostBytes - request.text.size();
    if (request.isTooLarge)
        return 0; // fewer bytes than offered: curl ends the transfer
    request.text.append(data, size * count);
    return size * count;
}

struct HandleDeleter
{
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
};
using Handle = std::unique_ptr<CURL, HandleDeleter>;

struct MultiDeleter
{
    void operator()(CURLM* handle) const { curl_multi_cleanup(handle); }
};
using MultiHandle = std::unique_ptr<CURLM, MultiDeleter>;

Handle newHandle(const std::string& address, Request& request, char* problem)
{
    Handle handle(curl_easy_init());
    CURL* const curl = handle.get();
    curl_easy_setopt(curl, CURLOPT_URL, address.c_str());
    curl_easy_setopt(curl, CURLOPT_ERRORBUFFER, problem);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, receive);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &request);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L); // the host handles signals
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, kConnectSeconds);
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_TIME, kSilentSeconds);
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(curl, CURLOPT_TIMEOUT, kMostSeconds);
    curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(curl, CURLOPT_MAXREDIRS, kMostRedirects);
    // A service must not redirect to a local file.
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(curl, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(curl, CURLOPT_ACCEPT_ENCODING, ""); // all encodings that curl supports
    // A slow name server must not delay a request that was stopped.
    curl_easy_setopt(curl, CURLOPT_QUICK_EXIT, 1L);
    return handle;
}

void checkStop(const std::string& address, const StopWish& stop)
{
    if (stop && stop())
        throw GeographyError(GeographyError::Stopped,
                             withoutCredentials(address) + ": the job was stopped");
}

[[noreturn]] void refuseSize(const std::string& address, std::size_t mostBytes)
{
    throw GeographyError(GeographyError::TooLarge, withoutCredentials(address) +
                                                       ": the answer has more than " +
                                                       std::to_string(mostBytes) + " bytes");
}

/// Runs the transfer to its end and returns its result. Throws GeographyError (Stopped).
CURLcode transfer(CURL* handle, const std::string& address, const StopWish& stop)
{
    const MultiHandle multi(curl_multi_init());
    curl_multi_add_handle(multi.get(), handle);
    const auto remove = [&multi](CURL* added) { curl_multi_remove_handle(multi.get(), added); };
    const std::unique_ptr<CURL, decltype(remove)> added(handle, remove);
    for (int running = 1; running > 0;) {
        checkStop(address, stop);
        if (curl_multi_perform(multi.get(), &running) != CURLM_OK)
            return CURLE_FAILED_INIT;
        if (running > 0)
            curl_multi_poll(multi.get(), nullptr, 0, kLookMilliseconds, nullptr);
    }
    int left = 0;
    const CURLMsg* message = curl_multi_info_read(multi.get(), &left);
    return message ? message->data.result : CURLE_FAILED_INIT;
}

std::string webText(const std::string& address, std::size_t mostBytes, const StopWish& stop)
{
    Request request{mostBytes, {}};
    char problem[CURL_ERROR_SIZE] = {};
    const Handle handle = newHandle(address, request, problem);
    const CURLcode result = transfer(handle.get(), address, stop);
    if (request.isTooLarge)
        refuseSize(address, mostBytes);
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

std::string fileText(const std::string& address, std::size_t mostBytes, const StopWish& stop)
{
    constexpr std::size_t kPiece = std::size_t{1} << 20;
    const std::string path = address.substr(kFileProtocol.size());
    std::ifstream file(path, std::ios::binary);
    std::string text;
    std::string piece(kPiece, '\0');
    while (file.read(piece.data(), kPiece), file.gcount() > 0) {
        checkStop(address, stop);
        const auto size = static_cast<std::size_t>(file.gcount());
        if (size > mostBytes - text.size())
            refuseSize(address, mostBytes);
        text.append(piece, 0, size);
    }
    if (!file.is_open() || file.bad())
        throw GeographyError(GeographyError::Service, address + ": there is no such file");
    return text;
}

} // namespace

std::string fetchText(const std::string& address, std::size_t mostBytes, const StopWish& stop)
{
    if (address.starts_with(kFileProtocol))
        return fileText(address, mostBytes, stop);
    if (!address.starts_with("http://") && !address.starts_with("https://"))
        throw GeographyError(GeographyError::Service,
                             withoutCredentials(address) +
                                 ": only http, https and file addresses can be read");
    return webText(address, mostBytes, stop);
}

} // namespace EmbeddedHV::maps
