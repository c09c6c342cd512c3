#pragma once

/// The ids of file errors. The engine's other ids follow the same pattern. An id never changes its
/// meaning, and a withdrawn number is not reused.
namespace datafile::faults {

inline constexpr const char* kFileMissing = "HVEIO0001E";       ///< no such file
inline constexpr const char* kFileIsFolder = "HVEIO0002E";      ///< a folder, not a file
inline constexpr const char* kFileUnreadable = "HVEIO0003E";    ///< the file cannot be read
inline constexpr const char* kFileEmpty = "HVEIO0004E";         ///< the file is empty
inline constexpr const char* kNotOfItsKind = "HVEIO0005E";      ///< wrong file type, or truncated
inline constexpr const char* kBadRecord = "HVEIO0006E";         ///< a record cannot be read
inline constexpr const char* kTooManyBadRecords = "HVEIO0007E"; ///< above the threshold
inline constexpr const char* kRecordsSkipped = "HVEIO0008W";    ///< bad records up to the threshold
inline constexpr const char* kPasswordMissing = "HVEIO0009E";   ///< sealed, and no password
inline constexpr const char* kWrongPassword = "HVEIO0010E";     ///< sealed with another password
inline constexpr const char* kDataModel = "HVEIO0011E";         ///< invalid data model document
inline constexpr const char* kDataModelMismatch =
    "HVEIO0012E";                                            ///< the data model is another file's
inline constexpr const char* kFolderMissing = "HVEIO0015E";  ///< no folder for the output
inline constexpr const char* kFileUnwritable = "HVEIO0016E"; ///< the file cannot be written
inline constexpr const char* kPartsDiffer = "HVEIO0023E";    ///< files of one dataset differ
inline constexpr const char* kDiskFull = "HVEIO0017E";       ///< no room for a file

} // namespace datafile::faults

/// The kinds of errors that have one id and need different advice.
namespace datafile::kinds {

inline constexpr const char* kFileExists = "fileExists";       ///< HVEIO0016E
inline constexpr const char* kNotUtf8 = "notUtf8";             ///< HVEIO0005E, 0006E, 0007E, 0020E
inline constexpr const char* kFieldCount = "fieldCount";       ///< HVEIO0006E, 0007E
inline constexpr const char* kNotInteger = "notInteger";       ///< HVEEX0012E
inline constexpr const char* kDateAndText = "dateAndText";     ///< HVEEX0005E
inline constexpr const char* kFieldInQuotes = "fieldInQuotes"; ///< HVEPA0001E
inline constexpr const char* kBetweenSteps = "betweenSteps";   ///< HVEPA0001E
inline constexpr const char* kApostrophe = "apostrophe";       ///< HVEPA0001E
inline constexpr const char* kNoSuchFunction = "noSuchFunction"; ///< HVEPL0004E

} // namespace datafile::kinds
