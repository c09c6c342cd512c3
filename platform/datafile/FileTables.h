#pragma once

#include <memory>
#include <string>

#include "datafile/Duck.h"
#include "datafile/FieldNames.h"
#include "datafile/ScratchFile.h"
#include "datafile/SealedFile.h"

namespace datafile {

/// The forms of a data file that host and engine read and write alike.
enum class FileKind
{
    Csv,
    Sav, ///< Parquet with a dictionary inside, sealed if it has a password
    Hvbf ///< Parquet with the data model inside
};

/// The key of a Parquet file's metadata under which the data model document stands.
inline constexpr const char* kDataModelKey = "hvinteg.datamodel";

/// The FROM item for a CSV file with the given columns. `rejects` names the tables that take the
/// records that do not fit; empty if such a record is to fail the statement.
std::string csvTable(const std::string& path, bool hasHeader, const Fields& columns,
                     const std::string& rejects);
/// The second table that the database makes beside `rejects`.
std::string rejectScansOf(const std::string& rejects);
/// The FROM item for a Parquet file.
std::string parquetTable(const std::string& path);

/// The text that stands under a key of a Parquet file's metadata; empty if there is none, or the
/// file is no Parquet file.
std::string parquetMetadata(duck::Connection& connection, const std::string& path,
                            const std::string& key);

/// The content of a sealed file in a file without a name. Throws SealedFileError and
/// std::system_error.
std::shared_ptr<ScratchFile> openSealed(const std::string& path, const std::string& password,
                                        const std::string& scratchFolder,
                                        const SealedFileStep& step);

} // namespace datafile
