#include <sodium.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

#include "ScratchFolder.h"
#include "base/FileDescriptor.h"
#include "datafile/SealedFile.h"

#include <fuzzer/FuzzedDataProvider.h>

/// Sealed files: what was sealed opens as it was, and a sealed file that was changed anywhere, cut
/// or added to does not open. Any bytes may be such a file, too.
namespace {

using namespace datafile;

constexpr const char* kPassword = "krill";
constexpr std::size_t kLongest = 300000; ///< of a content: some chunks

std::string contentOf(int descriptor)
{
    std::string content(static_cast<std::size_t>(lseek(descriptor, 0, SEEK_END)), '\0');
    lseek(descriptor, 0, SEEK_SET);
    require(read(descriptor, content.data(), content.size()) ==
            static_cast<ssize_t>(content.size()));
    return content;
}

base::FileDescriptor opened(const std::string& path)
{
    base::FileDescriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    require(static_cast<bool>(file));
    return file;
}

const ScratchFolder& folder()
{
    static const ScratchFolder scratch;
    return scratch;
}

std::string sealed(const std::string& content)
{
    folder().put("plain", content);
    const base::FileDescriptor source(open(folder().native("plain").c_str(), O_RDONLY | O_CLOEXEC));
    const base::FileDescriptor target = opened(folder().native("sealed"));
    sealFile(source.get(), target.get(), kPassword);
    return contentOf(target.get());
}

/// Whether a file opens, with its content.
bool opens(const std::string& bytes, std::string& content)
{
    folder().put("sealed", bytes);
    const base::FileDescriptor source(
        open(folder().native("sealed").c_str(), O_RDONLY | O_CLOEXEC));
    const base::FileDescriptor target = opened(folder().native("plain"));
    try {
        openSealedFile(source.get(), target.get(), kPassword);
    } catch (const SealedFileError&) {
        return false;
    }
    content = contentOf(target.get());
    return true;
}

/// A sealed file with a few changes.
std::string changed(std::string bytes, FuzzedDataProvider& input)
{
    for (int change = input.ConsumeIntegralInRange(0, 3); change > 0; --change) {
        const auto place = input.ConsumeIntegralInRange<std::size_t>(0, bytes.size());
        switch (input.ConsumeIntegralInRange(0, 3)) {
        case 0:
            bytes.resize(place);
            break;
        case 1:
            bytes.insert(place, input.ConsumeBytesAsString(
                                    input.ConsumeIntegralInRange<std::size_t>(1, 16)));
            break;
        case 2: {
            const std::string part = bytes.substr(place, kLongest / 4);
            bytes.insert(input.ConsumeIntegralInRange<std::size_t>(0, bytes.size()), part);
            break;
        }
        default:
            if (place < bytes.size())
                bytes[place] = input.ConsumeIntegral<char>();
        }
    }
    return bytes;
}

std::string repeated(const std::string& text, std::size_t times)
{
    std::string content;
    for (; times > 0 && content.size() + text.size() <= kLongest; --times)
        content += text;
    return content;
}

} // namespace

/// The real one takes long on purpose, which is not what is tried here.
extern "C" int crypto_pwhash(unsigned char* const out, unsigned long long outLength,
                             const char* const password, unsigned long long passwordLength,
                             const unsigned char* const salt, unsigned long long, std::size_t, int)
{
    std::vector<unsigned char> text(password, password + passwordLength);
    text.insert(text.end(), salt, salt + crypto_pwhash_SALTBYTES);
    return crypto_generichash(out, outLength, text.data(), text.size(), nullptr, 0);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzedDataProvider input(data, size);
    std::string found;
    if (input.ConsumeBool()) {
        (void)opens(input.ConsumeRemainingBytesAsString(), found);
        return 0;
    }
    const auto times = input.ConsumeIntegralInRange<std::size_t>(1, kLongest);
    const std::string content = repeated(input.ConsumeRandomLengthString(), times);
    const std::string whole = sealed(content);
    const std::string other = changed(whole, input);
    const bool isOpen = opens(other, found);
    require(isOpen == (other == whole));
    require(!isOpen || found == content);
    return 0;
}
