#pragma once

#include <string>

/// A style sheet or script that a page carries in itself, and the source expression by which the
/// page's security policy lets it in.
struct PageAsset
{
    std::string text;
    std::string source;
};

PageAsset pageAsset(std::string text);

/// The file of that name in the installation's `page` folder. Throws ErrorText if it cannot be
/// read.
PageAsset installedAsset(const std::string& name);

/// The library that draws charts; empty for an installation without it.
PageAsset chartLibrary();
