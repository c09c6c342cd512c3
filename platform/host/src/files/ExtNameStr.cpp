#include "ExtNameStr.h"

#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

#include "files/HostPath.h"
#include "text/CodePage.h"
#include "text/Utf16.h"

namespace {

constexpr mode_t kEveryone = 0777; // minus the process's umask

// Calls an operation with the native name; fails for an invalid name.
template <typename Operation, typename Result>
Result onNative(const ExtNameStr& name, Operation operation, Result failure)
{
    const std::string native = name.GetNative();
    // A NUL would end the C string and name another file.
    if (native.empty() || native.find('\0') != std::string::npos) {
        errno = native.empty() ? ENOENT : EINVAL;
        return failure;
    }
    return operation(native.c_str());
}

template <typename Stream>
void openStream(Stream& stream, const ExtNameStr& name, std::ios::openmode mode)
{
    const bool opened = onNative(
        name,
        [&](const char* native) {
            stream.open(native, mode);
            return stream.is_open();
        },
        false);
    if (!opened)
        stream.setstate(std::ios::failbit);
}

} // namespace

void ExtNameStr::SetGeneric(const std::string& name)
{
    _generic = name;
    _utf8 = nameToUtf8(name);
}

void ExtNameStr::SetU8(const std::string& name)
{
    _utf8 = name;
    const auto generic = nameFromUtf8(name);
    _generic = generic ? *generic : utf8ToHost(name);
}

std::u16string ExtNameStr::GetU16() const
{
    std::u16string units;
    utf8ToUtf16(_utf8, units);
    return units;
}

std::string ExtNameStr::GetNative() const
{
    return nativeSpelling(_utf8);
}

std::FILE* ExtNameStr::fopen(const ExtNameStr& name, const char* mode)
{
    return onNative(
        name, [mode](const char* native) { return std::fopen(native, mode); },
        static_cast<std::FILE*>(nullptr));
}

int ExtNameStr::remove(const ExtNameStr& name)
{
    return onNative(
        name, [](const char* native) { return std::remove(native); }, -1);
}

int ExtNameStr::mkdir(const ExtNameStr& name)
{
    return onNative(
        name, [](const char* native) { return ::mkdir(native, kEveryone); }, -1);
}

int ExtNameStr::rmdir(const ExtNameStr& name)
{
    return onNative(
        name, [](const char* native) { return ::rmdir(native); }, -1);
}

int ExtNameStr::rename(const ExtNameStr& from, const ExtNameStr& to)
{
    return onNative(
        from,
        [&to](const char* native) {
            return onNative(
                to, [native](const char* target) { return std::rename(native, target); }, -1);
        },
        -1);
}

void ExtNameStr::Open(std::fstream& stream, const ExtNameStr& name, std::ios::openmode mode)
{
    openStream(stream, name, mode);
}

void ExtNameStr::Open(std::ifstream& stream, const ExtNameStr& name, std::ios::openmode mode)
{
    openStream(stream, name, mode);
}

void ExtNameStr::Open(std::ofstream& stream, const ExtNameStr& name, std::ios::openmode mode)
{
    openStream(stream, name, mode);
}
