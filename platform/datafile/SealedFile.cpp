#include "datafile/SealedFile.h"

#include <sodium.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <system_error>
#include <vector>

#include <fcntl.h>

#include "base/FileDescriptor.h"

namespace datafile {
namespace {

using Kind = SealedFileError::Kind;

/// File format: magic, salt, stream header, chunks. The last digit of the magic is the version,
/// which determines the cost of the key and the chunk size.
constexpr std::string_view kMagic = "HVSEALED1\n";
constexpr std::size_t kChunk = std::size_t{64} * 1024;
constexpr std::size_t kSealedChunk = kChunk + crypto_secretstream_xchacha20poly1305_ABYTES;

using Key = std::array<unsigned char, crypto_secretstream_xchacha20poly1305_KEYBYTES>;
using Salt = std::array<unsigned char, crypto_pwhash_SALTBYTES>;
using StreamHeader = std::array<unsigned char, crypto_secretstream_xchacha20poly1305_HEADERBYTES>;

[[noreturn]] void systemFault(const char* what)
{
    const int code = errno;
    throw SealedFileError(Kind::System,
                          std::string(what) + ": " + std::generic_category().message(code), code);
}

/// A key that is erased when it is destroyed.
class DerivedKey
{
public:
    DerivedKey(const std::string& password, const Salt& salt)
    {
        if (crypto_pwhash(_key.data(), _key.size(), password.data(), password.size(), salt.data(),
                          crypto_pwhash_OPSLIMIT_INTERACTIVE, crypto_pwhash_MEMLIMIT_INTERACTIVE,
                          crypto_pwhash_ALG_ARGON2ID13) != 0)
            throw SealedFileError(Kind::System, "there is not enough memory for the key");
    }
    DerivedKey(const DerivedKey&) = delete;
    DerivedKey& operator=(const DerivedKey&) = delete;
    ~DerivedKey() { sodium_memzero(_key.data(), _key.size()); }
    const unsigned char* data() const { return _key.data(); }

private:
    Key _key{};
};

/// A borrowed descriptor whose failures are exceptions.
class Borrowed
{
public:
    explicit Borrowed(int descriptor) : _file(descriptor) {}
    Borrowed(const Borrowed&) = delete;
    Borrowed& operator=(const Borrowed&) = delete;
    ~Borrowed() { _file.release(); }

    std::size_t read(unsigned char* bytes, std::size_t count) const
    {
        const ssize_t got = _file.readUpTo(bytes, count);
        if (got < 0)
            systemFault("the file cannot be read");
        return static_cast<std::size_t>(got);
    }
    void write(const unsigned char* bytes, std::size_t count) const
    {
        if (!_file.writeAll(bytes, count))
            systemFault("the file cannot be written");
    }

private:
    base::FileDescriptor _file;
};

/// The part between the magic and the chunks.
struct SealedHead
{
    Salt salt{};
    StreamHeader header{};
};

SealedHead readHead(const Borrowed& input)
{
    std::array<unsigned char, kMagic.size()> magic{};
    if (input.read(magic.data(), magic.size()) != magic.size() ||
        std::memcmp(magic.data(), kMagic.data(), kMagic.size()) != 0)
        throw SealedFileError(Kind::NotSealed, "the file is not sealed with a password");
    SealedHead head;
    if (input.read(head.salt.data(), head.salt.size()) != head.salt.size() ||
        input.read(head.header.data(), head.header.size()) != head.header.size())
        throw SealedFileError(Kind::Damaged, "the file is cut short");
    return head;
}

void startSodium()
{
    if (sodium_init() < 0)
        throw SealedFileError(Kind::System, "the cryptographic library does not start");
}

void callStep(const SealedFileStep& step)
{
    if (step)
        step();
}

} // namespace

bool isSealed(const std::string& path)
{
    const base::FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    std::array<char, kMagic.size()> begin{};
    return file && file.readUpTo(begin.data(), begin.size()) == ssize_t{kMagic.size()} &&
           std::string_view(begin.data(), begin.size()) == kMagic;
}

void sealFile(int source, int target, const std::string& password, const SealedFileStep& step)
{
    startSodium();
    const Borrowed input(source);
    const Borrowed output(target);
    Salt salt{};
    randombytes_buf(salt.data(), salt.size());
    const DerivedKey key(password, salt);
    crypto_secretstream_xchacha20poly1305_state state;
    StreamHeader header{};
    crypto_secretstream_xchacha20poly1305_init_push(&state, header.data(), key.data());
    output.write(reinterpret_cast<const unsigned char*>(kMagic.data()), kMagic.size());
    output.write(salt.data(), salt.size());
    output.write(header.data(), header.size());

    std::vector<unsigned char> plain(kChunk);
    std::vector<unsigned char> sealed(kSealedChunk);
    std::size_t got = kChunk;
    while (got == kChunk) {
        callStep(step);
        got = input.read(plain.data(), plain.size());
        // A short chunk is the last one. Content of complete chunks ends with an empty chunk.
        const unsigned char tag =
            got < kChunk ? crypto_secretstream_xchacha20poly1305_TAG_FINAL : 0;
        unsigned long long length = 0;
        crypto_secretstream_xchacha20poly1305_push(&state, sealed.data(), &length, plain.data(),
                                                   got, nullptr, 0, tag);
        output.write(sealed.data(), static_cast<std::size_t>(length));
    }
    sodium_memzero(plain.data(), plain.size());
}

void openSealedFile(int source, int target, const std::string& password, const SealedFileStep& step)
{
    startSodium();
    const Borrowed input(source);
    const Borrowed output(target);
    const SealedHead head = readHead(input);
    const DerivedKey key(password, head.salt);
    crypto_secretstream_xchacha20poly1305_state state;
    crypto_secretstream_xchacha20poly1305_init_pull(&state, head.header.data(), key.data());

    std::vector<unsigned char> plain(kChunk);
    std::vector<unsigned char> sealed(kSealedChunk);
    unsigned char tag = 0;
    bool first = true;
    while (tag != crypto_secretstream_xchacha20poly1305_TAG_FINAL) {
        callStep(step);
        const std::size_t got = input.read(sealed.data(), sealed.size());
        unsigned long long length = 0;
        if (got == 0 ||
            crypto_secretstream_xchacha20poly1305_pull(&state, plain.data(), &length, &tag,
                                                       sealed.data(), got, nullptr, 0) != 0)
            // The first chunk detects a wrong password, because nothing before it is authenticated.
            throw first && got > 0
                ? SealedFileError(Kind::WrongPassword,
                                  "the password is wrong, or the file is damaged at its beginning")
                : SealedFileError(Kind::Damaged, "the file is damaged or cut short");
        first = false;
        output.write(plain.data(), static_cast<std::size_t>(length));
    }
    sodium_memzero(plain.data(), plain.size());
    if (input.read(sealed.data(), 1) != 0)
        throw SealedFileError(Kind::Damaged, "the file goes on after its end");
}

} // namespace datafile
