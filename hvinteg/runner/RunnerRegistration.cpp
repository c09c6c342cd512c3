#include "runner/RunnerRegistration.h"

#include "CFAppHost.h"
#include "CFEntry.h"
#include "bridge/JNIObjectManager.h"

std::uint64_t RunnerRegistration::runnerCount = 0;
bool RunnerRegistration::cfInitialized = false;

RunnerRegistration::RunnerRegistration()
{
    if (runnerCount == 0) {
        // The metadata library starts once per process and is not stopped.
        if (!cfInitialized) {
            CFAppHost::update();
            CFEntry::initialize(CFAppHost::getInstance()->createCFHostingCalbck());
            cfInitialized = true;
        }
        JNIObjectManager::newManager();
    }
    // Last: a constructor that throws must not be counted.
    ++runnerCount;
}

RunnerRegistration::~RunnerRegistration()
{
    if (runnerCount != 0 && --runnerCount == 0)
        JNIObjectManager::releaseManager();
}
