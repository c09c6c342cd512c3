#pragma once

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

/// The chart library; empty if it is not installed.
PageAsset chartLibrary();
