#pragma once

#include <string>

#include "EngineExport.h"

namespace EmbeddedHV {

/// For host programs that keep job texts and messages where others read them. Any thread.

/// A job text with "***" for what is a password of a file, also where the job names it by a
/// definition, without comments, and with web addresses as shownAddress gives them. Of a text that
/// is no job nothing is shown. Never throws but for want of memory.
ENGINE_API std::string withoutSecrets(const std::string& jobText);

/// A web address without its user info, query and fragment, which may hold a key. Any other text,
/// and the address of a file, comes back unchanged.
ENGINE_API std::string shownAddress(const std::string& address);

} // namespace EmbeddedHV
