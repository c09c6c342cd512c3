#include <map>
#include <mutex>
#include <utility>
#include <vector>

#include "EHVAppSetting.h"
#include "EngineBackend.h"
#include "EngineException.h"
#include "base/ListText.h"
#include "base/NearestName.h"
#include "service/LocalBackend.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kEmbedded = "embedded";

struct Registry
{
    std::mutex mutex;
    std::map<std::string, BackendFactory> factories{{kEmbedded, makeLocalBackend},
                                                    {"spark", makeSparkBackend}};
};

Registry& registry()
{
    static Registry known;
    return known;
}

[[noreturn]] void refuseName(const std::string& name)
{
    const std::vector<std::string> known = backendNames();
    throw Exception("the engine does not start: there is no backend \"" + name + "\"" +
                    base::suggestion(name, known, std::identity{}) + "; the setting \"" +
                    kBackendSetting + "\" is one of " + base::joined(known, ", "));
}

} // namespace

void registerBackend(const std::string& name, BackendFactory factory)
{
    Registry& known = registry();
    const std::lock_guard lock(known.mutex);
    known.factories.insert_or_assign(name, std::move(factory));
}

std::vector<std::string> backendNames()
{
    Registry& known = registry();
    const std::lock_guard lock(known.mutex);
    std::vector<std::string> names;
    for (const auto& [name, factory] : known.factories)
        names.push_back(name);
    return names;
}

std::unique_ptr<Backend> makeNamedBackend(JNIEnv* env, const EHVAppSetting& settings)
{
    const std::string* const given = settings.property(kBackendSetting);
    const std::string name = given && !given->empty() ? *given : kEmbedded;
    BackendFactory factory;
    {
        Registry& known = registry();
        const std::lock_guard lock(known.mutex);
        if (const auto found = known.factories.find(name); found != known.factories.end())
            factory = found->second;
    }
    if (!factory)
        refuseName(name);
    // Without the lock: the factory may register another backend.
    std::unique_ptr<Backend> backend = factory(env, settings);
    if (!backend)
        throw Exception("the engine does not start: the factory returned no backend");
    return backend;
}

std::unique_ptr<Backend> makeEmbeddedBackend(JNIEnv* env, const EHVAppSetting& settings)
{
    return makeLocalBackend(env, settings);
}

} // namespace EmbeddedHV
