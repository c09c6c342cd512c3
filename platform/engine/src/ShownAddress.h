#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace EmbeddedHV {

/// Returns a web address without user info, query and fragment, because these may contain a key.
/// Messages and logs show addresses in this form. Returns any other text, and the address of a
/// file, unchanged.
inline std::string withoutCredentials(std::string_view address)
{
    constexpr std::string_view kBeforeHost = "://";
    const std::size_t scheme = address.find(kBeforeHost);
    if (scheme == std::string_view::npos || address.starts_with("file:"))
        return std::string(address);
    const std::size_t begin = scheme + kBeforeHost.size();
    address = address.substr(0, address.find_first_of("?#", begin));
    const std::size_t path = std::min(address.find('/', begin), address.size());
    const std::size_t userEnd = address.substr(0, path).rfind('@');
    const std::size_t host =
        userEnd == std::string_view::npos || userEnd < begin ? begin : userEnd + 1;
    return std::string(address.substr(0, begin)).append(address.substr(host));
}

} // namespace EmbeddedHV
