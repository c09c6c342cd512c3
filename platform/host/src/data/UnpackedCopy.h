#pragma once

#include <functional>
#include <memory>
#include <string>

#include "datafile/ScratchFile.h"

/// Whether the file is compressed by gzip.
bool isGzip(const std::string& path);

/// Unpacks a gzip file to a file without a name, positioned at its start. `look` is called for each
/// block; what it throws passes. Throws CaseFileError for a damaged or cut file.
std::shared_ptr<datafile::ScratchFile> unpackedCopy(const std::string& path,
                                                    const std::function<void()>& look);
