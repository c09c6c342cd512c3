#pragma once

namespace datafile {

/// Formats of data files that host and engine share.
enum class FileKind
{
    Csv,
    Sav, ///< Parquet with a dictionary inside, sealed if it has a password
    Hvbf ///< Parquet with the data model inside
};

/// The metadata key of the data model document in a Parquet file.
inline constexpr const char* kDataModelKey = "hvinteg.datamodel";

} // namespace datafile
