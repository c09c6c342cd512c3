#include "report/page/PageAssets.h"

#include <array>
#include <new>
#include <vector>

#include <sodium.h>
#include <zlib.h>

#include "ErrorText.h"
#include "FileServices.h"
#include "PathFactory.h"

namespace {

std::string base64Text(const unsigned char* bytes, std::size_t size)
{
    std::string text(sodium_base64_encoded_len(size, sodium_base64_VARIANT_ORIGINAL), '\0');
    sodium_bin2base64(text.data(), text.size(), bytes, size, sodium_base64_VARIANT_ORIGINAL);
    text.pop_back(); // the terminating zero
    return text;
}

/// The source expression for a text in a security policy.
std::string hashSource(const std::string& text)
{
    std::array<unsigned char, crypto_hash_sha256_BYTES> hash{};
    crypto_hash_sha256(hash.data(), reinterpret_cast<const unsigned char*>(text.data()),
                       text.size());
    return "'sha256-" + base64Text(hash.data(), hash.size()) + "'";
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

std::optional<ChartLibrary> chartLibrary()
{
    constexpr const char* kLibrary = "chart-library.js";
    bool exists = false;
    ValidateFileSpecification(fileOf(kLibrary), exists);
    if (!exists)
        return std::nullopt;
    return ChartLibrary{installedAsset(kLibrary),
                        installedAsset("chart-library.licenses.txt").text};
}

std::string packed(const std::string& text)
{
    uLongf size = compressBound(static_cast<uLong>(text.size()));
    std::vector<unsigned char> bytes(size);
    const int status =
        compress2(bytes.data(), &size, reinterpret_cast<const unsigned char*>(text.data()),
                  static_cast<uLong>(text.size()), Z_BEST_COMPRESSION);
    if (status != Z_OK)
        throw std::bad_alloc();
    return base64Text(bytes.data(), size);
}
