#pragma once

#include <string>

class CFMetaData;
class ZipReader;

/// What stands in the file of a temporal causal model: an archive. Whatever is not there, or cannot
/// be read, makes an operation false.

/// Its entries.
inline constexpr const char* kStatisticsEntry = "StatXML.xml";
inline constexpr const char* kNetworkEntry = "TCMGraph.json";
inline constexpr const char* kPreparationEntry = "TSDPOutput.json";

/// The text of an entry. One that is not there leaves `text`, one that is damaged clears it.
bool readEntry(ZipReader& archive, const char* entry, std::string& text);

/// The data model of the statistics document: of all fields of the model, and of none else.
bool readFullDataModel(ZipReader& model, std::string& xml);

/// The same as metadata. In it a dimension field lists the values of its base field, and the field
/// "metricField" the metrics, each as a label, with its code as the datum. False, too, for a data
/// model that is damaged.
bool GetMetaData(const std::string& modelPath, CFMetaData& metadata);
