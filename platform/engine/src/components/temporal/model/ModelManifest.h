#pragma once

#include <map>
#include <string>

#include "components/temporal/base/DocumentSource.h"

namespace EmbeddedHV {

/// The document Manifest.json of a model file: format, version and the SHA-256 of each entry.
std::string manifestDocument(const std::map<std::string, std::string>& entries);

/// The checksums that a manifest states, by entry, in hexadecimal. Throws JobError for another
/// format or version.
std::map<std::string, std::string> manifestChecksums(const std::string& document,
                                                     const DocumentSource& source);

/// The SHA-256 of a text in hexadecimal.
std::string checksumOf(const std::string& text);

} // namespace EmbeddedHV
