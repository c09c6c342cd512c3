#pragma once

#include <string>

#include "HostExport.h"

/// The text for a key in the host's language, both UTF-8; the key itself if there is no text.
/// Searches the installation's `strings` folder: the file of the locale, of its language, then
/// English. Each file is read once. Any thread.
HOST_API std::string translate(const std::string& key);
