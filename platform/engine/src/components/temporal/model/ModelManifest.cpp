#include "components/temporal/model/ModelManifest.h"

#include <sodium.h>

#include <array>

#include "ErrorIds.h"
#include "JobError.h"
#include "components/temporal/base/DocumentPlace.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kModelFormat = "hvinteg temporal causal model";
constexpr std::int64_t kModelVersion = 1;
constexpr std::size_t kMostManifestValues = 1'000;

} // namespace

std::string checksumOf(const std::string& text)
{
    std::array<unsigned char, crypto_hash_sha256_BYTES> hash{};
    crypto_hash_sha256(hash.data(), reinterpret_cast<const unsigned char*>(text.data()),
                       text.size());
    std::array<char, 2 * crypto_hash_sha256_BYTES + 1> hex{};
    return sodium_bin2hex(hex.data(), hex.size(), hash.data(), hash.size());
}

std::string manifestDocument(const std::map<std::string, std::string>& entries)
{
    Json checksums = Json::object();
    for (const auto& [entry, text] : entries)
        checksums[entry] = checksumOf(text);
    const Json document = {
        {"format", kModelFormat}, {"version", kModelVersion}, {"sha256", std::move(checksums)}};
    return document.dump(2) + "\n";
}

std::map<std::string, std::string> manifestChecksums(const std::string& document,
                                                     const DocumentSource& source)
{
    const Json root = parsedDocument(document, kMostManifestValues, source, errors::kModelFile);
    const DocumentPlace place(root, source, errors::kModelFile);
    if (place.member("format").text() != kModelFormat)
        place.refuse("is not that of a temporal causal model");
    const std::int64_t version = place.member("version").integer(0, INT64_MAX);
    if (version != kModelVersion)
        throw JobError(errors::kModelVersion,
                       source.parts("the model is of version " + std::to_string(version) +
                                    "; this engine reads version " +
                                    std::to_string(kModelVersion)));
    const DocumentPlace list = place.member("sha256");
    if (!list.value().is_object())
        list.refuse("is not an object");
    std::map<std::string, std::string> checksums;
    for (const auto& [entry, checksum] : list.value().items())
        checksums[entry] = list.member(entry.c_str()).text();
    return checksums;
}

} // namespace EmbeddedHV
