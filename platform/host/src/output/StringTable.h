#pragma once

#include <string>

/// The text of a key in the host's language, both UTF-8; the key where there is none. Looks into
/// the installation's `strings` folder: the file of the locale, of its language, then of English.
/// Each file is read once. Any thread.
std::string translate(const std::string& key);
