#include "CFEntry.h"

#include <atomic>

namespace {

std::atomic<CFHostingCallback*> currentCallback = nullptr;
std::atomic<int> initializationCount = 0;

} // namespace

void CFEntry::initialize(CFHostingCallback* callback)
{
    currentCallback = callback;
    ++initializationCount;
}

CFHostingCallback* CFEntry::callback()
{
    return currentCallback;
}

int CFEntry::initializations()
{
    return initializationCount;
}
