#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "datafile/ScratchFile.h"

/// A file of JSON or of JSON lines that the database can parse.
struct JsonText
{
    std::shared_ptr<datafile::ScratchFile> copy; ///< of its text without its mark; may be null
    std::size_t longestRecord = 0;               ///< in bytes
};

/// Checks a file, because the database's parser recurses for each level and does not know the mark
/// of UTF-8. Calls `look` for each block; what it throws passes. Throws CaseFileError for values
/// that are nested too deep, a record that is too long, and UTF-16.
JsonText checkedJson(const std::string& path, const std::function<void()>& look);
