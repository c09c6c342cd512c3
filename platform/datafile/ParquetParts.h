#pragma once

#include <string>
#include <vector>

#include "CFField.h"

namespace datafile {

/// A field whose value is in the names of folders, as in year=2024.
struct PartKey
{
    std::string name;
    CFField::StorageType storage = CFField::String; ///< the narrowest that holds all its values
};

/// The Parquet files that are one dataset: a file itself, the files in a folder and in the folders
/// below it, or the files that match a pattern. Files and folders whose names begin with a period
/// or an underscore are not a part, unless the pattern names them so.
struct ParquetParts
{
    std::string path;               ///< of the dataset
    std::string base;               ///< the beginning of all paths in `files`
    std::vector<std::string> files; ///< in the order of their paths, as bytes
    std::vector<PartKey> keys;      ///< from the folders below the base

    /// Whether the dataset is a single file.
    bool isFile() const { return files.size() == 1 && files.front() == path; }
    /// The name of a part below the base, for messages.
    std::string nameOf(const std::string& file) const { return file.substr(base.size()); }
};

/// The folder name of a missing value, by the convention of the programs that write such folders.
inline constexpr const char* kMissingKey = "__HIVE_DEFAULT_PARTITION__";

/// Whether a path is a folder, or contains *, ? or [ and is not the name of a file.
bool hasParts(const std::string& path);

/// Finds the parts. Throws Fault, with the step if there is one: if there is no part, or if the
/// folders of a part give other fields than those of the first one.
ParquetParts parquetParts(const std::string& path, const std::string& step = {});

/// Checks the files of a dataset before it is read, as checkInputFile does. Throws Fault.
void checkParquetInput(const std::string& path, const std::string& step);

/// The parts as an argument of the database's functions: a text, or a list of texts.
std::string fileArgument(const ParquetParts& parts);

} // namespace datafile
