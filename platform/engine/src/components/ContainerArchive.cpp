#include "components/ContainerArchive.h"

#include <minizip/unzip.h>

#include "DataFileNames.h"
#include "ErrorIds.h"
#include "JobError.h"
#include "datafile/InputFile.h"

namespace EmbeddedHV {
namespace {

constexpr std::uint64_t kPartBytes = 1 << 20;
/// Names of entries are case-sensitive.
constexpr int kCaseSensitive = 1;

} // namespace

void ContainerArchive::Closing::operator()(void* archive) const
{
    unzClose(archive);
}

ContainerArchive::ContainerArchive(std::string path, std::string component)
    : _path(std::move(path)), _component(std::move(component))
{
    checkInputFile(_path, _component);
    _archive.reset(unzOpen64(_path.c_str()));
    if (!_archive)
        refuse("the file is not a zip archive, or is cut short");
}

ContainerArchive::~ContainerArchive() = default;

void ContainerArchive::refuse(const std::string& problem) const
{
    throw JobError(errors::kNotOfItsKind, {.step = _component, .file = _path, .what = problem});
}

std::optional<std::string> ContainerArchive::member(const std::string& name,
                                                    std::uint64_t most) const
{
    if (unzLocateFile(_archive.get(), name.c_str(), kCaseSensitive) != UNZ_OK)
        return std::nullopt;
    if (unzOpenCurrentFile(_archive.get()) != UNZ_OK)
        refuse("the entry \"" + name + "\" is damaged");
    // The size in the archive may be wrong, so the buffer grows during reading.
    std::string content;
    std::string part(kPartBytes, '\0');
    int got = 0;
    while ((got = unzReadCurrentFile(_archive.get(), part.data(),
                                     static_cast<unsigned>(part.size()))) > 0) {
        content.append(part, 0, static_cast<std::size_t>(got));
        if (content.size() > most)
            break;
    }
    const bool isWhole = unzCloseCurrentFile(_archive.get()) == UNZ_OK && got >= 0;
    if (content.size() > most)
        refuse("the entry \"" + name + "\" is longer than " + std::to_string(most) + " bytes");
    if (!isWhole)
        refuse("the entry \"" + name + "\" is damaged");
    return content;
}

std::string ContainerArchive::neededMember(const std::string& name, std::uint64_t most) const
{
    if (auto content = member(name, most))
        return std::move(*content);
    refuse("the archive has no entry \"" + name + "\"");
}

} // namespace EmbeddedHV
