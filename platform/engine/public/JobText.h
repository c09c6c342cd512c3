#pragma once

#include <string>

#include "EngineExport.h"

namespace EmbeddedHV {

/// For host programs that write job texts and messages to a log.

/// Returns a job text without its secrets, UTF-8. "***" replaces each file password, also if the
/// job refers to it by a name. Comments are removed. Web addresses are changed as in shownAddress.
/// If the text is not a valid job, the result only states its size. Any thread. Throws only
/// std::bad_alloc.
ENGINE_API std::string withoutSecrets(const std::string& jobText);

/// Returns a web address without user info, query and fragment, because these may contain a key.
/// Returns any other text, and the address of a file, unchanged. Any thread.
ENGINE_API std::string shownAddress(const std::string& address);

} // namespace EmbeddedHV
