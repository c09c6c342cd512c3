#pragma once

#include <map>
#include <string>
#include <vector>

#include "components/ContainerFile.h"
#include "components/temporal/base/DocumentSource.h"
#include "components/temporal/model/TcmModel.h"

namespace EmbeddedHV {

/// The entries of a model file: a zip archive.
inline constexpr const char* kModelStatisticsEntry = "StatXML.xml";
inline constexpr const char* kModelNetworkEntry = "TCMGraph.json";
inline constexpr const char* kModelPreparationEntry = "TSDPOutput.json";
inline constexpr const char* kModelEntry = "TCMModel.json";
inline constexpr const char* kModelManifestEntry = "Manifest.json";

/// The texts of a model file, checked against its manifest.
class ModelArchive
{
public:
    /// Reads the whole file. `component` reads it. Throws JobError if the file is not a
    /// model, is of an unknown version, lacks an entry, or if an entry differs from its checksum
    /// in the manifest.
    ModelArchive(const std::string& path, const std::string& component);

    /// The model. Throws JobError if its document is invalid.
    TcmModel model() const;
    /// The document of the data preparation, as the training found it.
    const std::string& preparation() const { return text(kModelPreparationEntry); }
    const std::string& network() const { return text(kModelNetworkEntry); }
    const std::string& statistics() const { return text(kModelStatisticsEntry); }

private:
    const std::string& text(const char* entry) const { return _texts.at(entry); }

    DocumentSource _source;
    std::map<std::string, std::string> _texts;
};

/// The model of a file, without its other documents. Throws JobError as ModelArchive does.
TcmModel readModel(const std::string& path, const std::string& component);

/// The entries of a model file, the manifest among them. `preparation` is the document that the
/// data preparation wrote, `statistics` the document StatXML.xml.
std::vector<ContainerMember> modelMembers(const TcmModel& model, std::string preparation,
                                          std::string statistics);

} // namespace EmbeddedHV
