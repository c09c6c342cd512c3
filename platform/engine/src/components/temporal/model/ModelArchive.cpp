#include "components/temporal/model/ModelArchive.h"

#include "ErrorIds.h"
#include "JobError.h"
#include "components/ContainerArchive.h"
#include "components/temporal/model/ModelDocument.h"
#include "components/temporal/model/ModelManifest.h"
#include "components/temporal/model/NetworkDocument.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kCheckedEntries[] = {kModelStatisticsEntry, kModelNetworkEntry,
                                           kModelPreparationEntry, kModelEntry};
constexpr std::uint64_t kMostEntryBytes = std::uint64_t{512} << 20;
constexpr std::uint64_t kMostManifestBytes = 1 << 16;

} // namespace

ModelArchive::ModelArchive(const std::string& path, const std::string& component)
    : _source{component, path}
{
    const ContainerArchive archive(path, component);
    const auto checksums =
        manifestChecksums(archive.neededMember(kModelManifestEntry, kMostManifestBytes),
                          {component, path, kModelManifestEntry});
    for (const char* entry : kCheckedEntries) {
        std::string content = archive.neededMember(entry, kMostEntryBytes);
        const auto stated = checksums.find(entry);
        if (stated == checksums.end() || stated->second != checksumOf(content))
            throw JobError(errors::kModelFile,
                           _source.parts(std::string("the entry \"") + entry +
                                         "\" was changed after the training: its checksum is not "
                                         "that of the manifest"));
        _texts[entry] = std::move(content);
    }
}

TcmModel ModelArchive::model() const
{
    return modelOfDocument(text(kModelEntry), {_source.step, _source.file, kModelEntry});
}

TcmModel readModel(const std::string& path, const std::string& component)
{
    return ModelArchive(path, component).model();
}

std::vector<ContainerMember> modelMembers(const TcmModel& model, std::string preparation,
                                          std::string statistics)
{
    std::map<std::string, std::string> entries;
    entries[kModelStatisticsEntry] = std::move(statistics);
    entries[kModelNetworkEntry] = networkDocument(model);
    entries[kModelPreparationEntry] = std::move(preparation);
    entries[kModelEntry] = modelDocument(model);
    std::vector<ContainerMember> members;
    members.push_back({kModelManifestEntry, manifestDocument(entries)});
    for (auto& [name, text] : entries)
        members.push_back({name, std::move(text)});
    return members;
}

} // namespace EmbeddedHV
