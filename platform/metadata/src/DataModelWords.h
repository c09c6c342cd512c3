#pragma once

/// Words of the data model document that reader and writer share; the words of measure, storage
/// and role are those of WordOf.
namespace datamodel {

inline constexpr const char* kRoot = "DataModel";
inline constexpr const char* kVersionAttribute = "version";
inline constexpr const char* kVersion = "1";
inline constexpr const char* kField = "Field";
inline constexpr const char* kName = "name";
inline constexpr const char* kStorage = "storage";
inline constexpr const char* kMeasure = "measure";
inline constexpr const char* kRole = "role";
inline constexpr const char* kLabel = "Label";

/// Stands in the document for a storage that is not known: the attribute is always there, so that
/// a forgotten one is found.
inline constexpr const char* kUnknownStorage = "unknown";

} // namespace datamodel
