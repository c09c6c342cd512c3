#include "WebFetch.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>

#include <cpl_http.h>
#include <cpl_string.h>

#include "GdalMessages.h"

namespace EmbeddedHV::maps {
namespace {

constexpr std::string_view kFileProtocol = "file://";

struct ResultDeleter
{
    void operator()(CPLHTTPResult* result) const { CPLHTTPDestroyResult(result); }
};

int CPL_STDCALL goOn(double, const char*, void* stop)
{
    const auto& wish = *static_cast<const StopWish*>(stop);
    return wish && wish() ? FALSE : TRUE;
}

/// What stands behind a question mark may be a secret.
std::string shown(const std::string& address)
{
    return address.substr(0, address.find('?'));
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
                             shown(address) + ": only http, https and file addresses can be read");
    GdalMessages messages;
    CPLStringList options;
    options.SetNameValue("CONNECTTIMEOUT", "10");
    options.SetNameValue("TIMEOUT", "120");
    options.SetNameValue("LOW_SPEED_TIME", "30");
    options.SetNameValue("LOW_SPEED_LIMIT", "1");
    StopWish wish = stop;
    const std::unique_ptr<CPLHTTPResult, ResultDeleter> result(
        CPLHTTPFetchEx(address.c_str(), options.List(), goOn, &wish, nullptr, nullptr));
    if (wish && wish())
        throw GeographyError(GeographyError::Stopped, shown(address) + ": the job was stopped");
    if (!result || result->nStatus != 0 || result->pszErrBuf)
        throw GeographyError(GeographyError::Service,
                             shown(address) + ": the service does not answer" +
                                 (result && result->pszErrBuf
                                      ? std::string(": ") + result->pszErrBuf
                                      : std::string()));
    return {reinterpret_cast<const char*>(result->pabyData),
            static_cast<std::size_t>(result->nDataLen)};
}

} // namespace EmbeddedHV::maps
