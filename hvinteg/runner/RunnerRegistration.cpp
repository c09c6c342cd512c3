#include "runner/RunnerRegistration.h"

#include "CFAppHost.h"
#include "CFEntry.h"
#include "bridge/JNIObjectManager.h"

std::uint64_t RunnerRegistration::runnerCount = 0;
bool RunnerRegistration::cfInitialized = false;

RunnerRegistration::RunnerRegistration()
{
    if (runnerCount == 0) {
        // The metadata library starts once a process, and stays up behind the last runner.
        if (!cfInitialized) {
            CFAppHost::update();
            CFEntry::initialize(CFAppHost::getInstance()->createCFHostingCalbck());
            cfInitialized = true;
        }
        JNIObjectManager::newManager();
    }
    // After everything that may throw: a runner that was not made does not count.
    ++runnerCount;
}

RunnerRegistration::~RunnerRegistration()
{
    if (runnerCount != 0 && --runnerCount == 0)
        JNIObjectManager::releaseManager();
}
