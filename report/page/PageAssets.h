#pragma once

#include <optional>
#include <string>

/// A style sheet or script in a page, and the source expression that allows it in the page's
/// security policy.
struct PageAsset
{
    std::string text;
    std::string source;
};

PageAsset pageAsset(std::string text);

/// The file of that name in the installation's `page` folder. Throws ErrorText if it cannot be
/// read.
PageAsset installedAsset(const std::string& name);

/// The chart library with its licenses, which stay readable in a page.
struct ChartLibrary
{
    PageAsset script;
    std::string licenses;
};

/// The chart library; nullopt if it is not installed.
std::optional<ChartLibrary> chartLibrary();

/// A text, compressed in zlib's format, as Base64. Throws std::bad_alloc.
std::string packed(const std::string& text);
