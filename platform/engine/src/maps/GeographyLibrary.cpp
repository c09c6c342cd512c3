#include "maps/GeographyLibrary.h"

#include <dlfcn.h>

#include <filesystem>
#include <mutex>
#include <utility>

#include "ErrorIds.h"

namespace EmbeddedHV::maps {
namespace {

constexpr const char* kLibrary = HV_GEOGRAPHY_LIBRARY;

/// Next to the binary that contains this code: the engine's library, or a program in the folder
/// bin.
std::filesystem::path libraryPath()
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&geography), &info) == 0 || !info.dli_fname)
        return kLibrary;
    std::error_code error;
    const auto folder =
        std::filesystem::weakly_canonical(std::filesystem::absolute(info.dli_fname), error)
            .parent_path();
    for (const auto& path : {folder / kLibrary, folder.parent_path() / "lib" / kLibrary})
        if (std::filesystem::exists(path, error))
            return path;
    return kLibrary; // let the system search
}

[[noreturn]] void refuse(const std::string& problem)
{
    throw JobError(errors::kNotAvailable, "maps are not available: " + problem);
}

Geography& load()
{
    // Never unloaded: its dependencies keep thread-local data until the process ends.
    void* const library = dlopen(libraryPath().c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library)
        refuse(dlerror());
    void* const function = dlsym(library, kGeographyFunction);
    if (!function)
        refuse(dlerror());
    return *reinterpret_cast<GeographyFunction>(function)();
}

struct Id
{
    GeographyError::Kind kind;
    const char* id;
};

constexpr Id kIds[] = {
    {GeographyError::FileMissing, errors::kFileMissing},
    {GeographyError::Unreadable, errors::kFileUnreadable},
    {GeographyError::NotOfItsKind, errors::kNotOfItsKind},
    {GeographyError::Service, errors::kMapService},
    {GeographyError::TooLarge, errors::kMapService},
    {GeographyError::UnknownSystem, errors::kUnknownSystem},
    {GeographyError::UnknownMethod, errors::kUnknownTransformation},
    {GeographyError::WrongQuestion, errors::kSettingType},
    {GeographyError::Stopped, errors::kQueryFailed},
};

} // namespace

Geography& geography()
{
    static std::mutex mutex;
    static Geography* loaded = nullptr;
    const std::lock_guard lock(mutex);
    // If loading failed, the next call tries again.
    if (!loaded)
        loaded = &load();
    return *loaded;
}

JobError faultOf(const GeographyError& error, const std::string& step)
{
    FaultParts parts{.step = step, .file = error.file(), .what = error.problem()};
    for (const Id& known : kIds)
        if (known.kind == error.kind())
            return {known.id, std::move(parts)};
    return {errors::kInternal, std::move(parts)};
}

} // namespace EmbeddedHV::maps
