#include "EnginePreload.h"

#include <memory>
#include <mutex>

#include "runtime/Database.h"

namespace EmbeddedHV {
namespace {

/// The lock is held while the instance opens. A service that starts meanwhile waits for it and does
/// not open a second one.
struct Preloaded
{
    std::mutex mutex;
    std::unique_ptr<Database> database;
};

Preloaded& preloaded()
{
    static Preloaded state;
    return state;
}

} // namespace

void preload()
{
    Preloaded& state = preloaded();
    const std::lock_guard lock(state.mutex);
    if (state.database)
        return;
    try {
        state.database = std::make_unique<Database>();
    } catch (const std::exception&) {
        // The service manager tries again and reports the error.
        state.database.reset();
    }
}

std::unique_ptr<Database> adoptDatabase()
{
    Preloaded& state = preloaded();
    const std::lock_guard lock(state.mutex);
    return state.database ? std::move(state.database) : std::make_unique<Database>();
}

} // namespace EmbeddedHV
