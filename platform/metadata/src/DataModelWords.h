#pragma once

/// Words of the data model document, for reader and writer. WordOf has the words of enumerations.
namespace datamodel {

inline constexpr const char* kRoot = "DataModel";
inline constexpr const char* kRootEnd = "</DataModel>";
inline constexpr const char* kVersionAttribute = "version";
inline constexpr const char* kVersion = "1";

inline constexpr const char* kField = "Field";
inline constexpr const char* kBaseField = "BaseField";
inline constexpr const char* kName = "name";
inline constexpr const char* kStorage = "storage";
inline constexpr const char* kMeasure = "measure";
inline constexpr const char* kRole = "role";
inline constexpr const char* kLabel = "Label";
/// The word for an unknown storage. The attribute is mandatory, so that a missing one is detected.
inline constexpr const char* kUnknownStorage = "unknown";

inline constexpr const char* kFormat = "Format";
inline constexpr const char* kFormatType = "type";
inline constexpr const char* kFormatWidth = "width";
inline constexpr const char* kFormatDecimals = "decimals";

inline constexpr const char* kValues = "Values";
inline constexpr const char* kValueLabels = "ValueLabels";
inline constexpr const char* kValue = "Value";
inline constexpr const char* kDatum = "value";
inline constexpr const char* kDatumType = "type";
inline constexpr const char* kValueLabel = "label";
inline constexpr const char* kProperty = "property";
inline constexpr const char* kOrder = "order";

inline constexpr const char* kMissingValues = "MissingValues";
inline constexpr const char* kNullMissing = "nullMissing";
inline constexpr const char* kWhiteSpMissing = "whiteSpMissing";
inline constexpr const char* kRange = "Range";
inline constexpr const char* kLower = "Lower";
inline constexpr const char* kUpper = "Upper";

inline constexpr const char* kGeo = "Geo";
inline constexpr const char* kGeoType = "type";
inline constexpr const char* kCoordinates = "coordinates";
inline constexpr const char* kWkid = "wkid";
inline constexpr const char* kCsname = "csname";
inline constexpr const char* kIsProjected = "isProjected";
inline constexpr const char* kWkt = "Wkt";
inline constexpr const char* kEnvelope = "GeoEnvelope";
inline constexpr const char* kLeftUpperX = "leftUpperX";
inline constexpr const char* kLeftUpperY = "leftUpperY";
inline constexpr const char* kRightLowerX = "rightLowerX";
inline constexpr const char* kRightLowerY = "rightLowerY";

} // namespace datamodel
