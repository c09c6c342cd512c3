#pragma once

#include <string>

class CFMetaData;
class ZipReader;

/// Reads the file of a temporal causal model, an archive. An operation returns false if a part is
/// missing or cannot be read.

/// Its entries.
inline constexpr const char* kStatisticsEntry = "StatXML.xml";
inline constexpr const char* kNetworkEntry = "TCMGraph.json";
inline constexpr const char* kPreparationEntry = "TSDPOutput.json";

/// Reads the text of an entry. A missing entry leaves `text` unchanged, a damaged one clears it.
bool readEntry(ZipReader& archive, const char* entry, std::string& text);

/// Reads the data model of all fields of the model from the statistics document.
bool readFullDataModel(ZipReader& model, std::string& xml);

/// Does the same, as metadata. A dimension field lists the values of its base field, and the field
/// "metricField" lists the metrics. Each value has its text as the label and its code as the datum.
/// Returns false for a damaged data model too.
bool GetMetaData(const std::string& modelPath, CFMetaData& metadata);
