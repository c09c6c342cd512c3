#include "EngineFiles.h"

#include <atomic>

namespace EmbeddedHV {
namespace {

std::atomic<bool>& replacing()
{
    static std::atomic<bool> allowed = true;
    return allowed;
}

} // namespace

void allowReplacingFiles(bool allowed)
{
    replacing() = allowed;
}

bool mayReplaceFiles()
{
    return replacing();
}

} // namespace EmbeddedHV
