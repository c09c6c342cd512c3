#include "report/page/PageAssets.h"

#include <array>

#include <sodium.h>

#include "ErrorText.h"
#include "FileServices.h"
#include "PathFactory.h"

namespace {

/// The source expression for a text in a security policy.
std::string hashSource(const std::string& text)
{
    std::array<unsigned char, crypto_hash_sha256_BYTES> hash{};
    crypto_hash_sha256(hash.data(), reinterpret_cast<const unsigned char*>(text.data()),
                       text.size());
    constexpr std::size_t length =
        sodium_base64_ENCODED_LEN(crypto_hash_sha256_BYTES, sodium_base64_VARIANT_ORIGINAL);
    std::array<char, length> base64{};
    sodium_bin2base64(base64.data(), base64.size(), hash.data(), hash.size(),
                      sodium_base64_VARIANT_ORIGINAL);
    return "'sha256-" + std::string(base64.data()) + "'";
}

std::string fileOf(const std::string& name)
{
    return PathFactory::getPathInstance()->getInstallationPath() + "\\page\\" + name;
}

} // namespace

PageAsset pageAsset(std::string text)
{
    std::string source = hashSource(text);
    return {std::move(text), std::move(source)};
}

PageAsset installedAsset(const std::string& name)
{
    std::string text;
    if (!FetchFile::fetch(fileOf(name), text))
        throw ErrorText("cannot read " + fileOf(name));
    return pageAsset(std::move(text));
}

PageAsset chartLibrary()
{
    constexpr const char* kLibrary = "chart-library.js";
    bool exists = false;
    ValidateFileSpecification(fileOf(kLibrary), exists);
    return exists ? installedAsset(kLibrary) : PageAsset();
}
