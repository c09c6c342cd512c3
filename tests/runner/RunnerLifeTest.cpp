#include "CFEntry.h"
#include "VexaJVM.h"
#include "bridge/JNIObjectManager.h"
#include "runner/RunnerFixture.h"

namespace {

JNIEnv* ownEnvironment()
{
    JNIEnv* env = nullptr;
    VexaJVM::GetInstance()->AttachCurrentThread(&env);
    return env;
}

// What happens once a process is one case, in order.
TEST(RunnerLife, FirstStartsTheMetadataLibraryAndLastReleasesTheManager)
{
    EXPECT_EQ(CFEntry::initializations(), 0);
    {
        HVRunner first;
        EXPECT_EQ(CFEntry::initializations(), 1);
        ASSERT_NE(CFEntry::callback(), nullptr);
    }
    std::thread([] {
        HVRunner first;
        JNIEnv* const there = JNIObjectManager::getManager()->getEnv();
        {
            HVRunner second;
        }
        // A manager that is still the first one's keeps its environment.
        EXPECT_EQ(JNIObjectManager::getManager()->getEnv(), there);
        EXPECT_EQ(there, ownEnvironment());
        std::thread([there] {
            EXPECT_EQ(JNIObjectManager::getManager()->getEnv(), there);
            HVRunner third;
            EXPECT_EQ(JNIObjectManager::getManager()->getEnv(), ownEnvironment());
            EXPECT_NE(ownEnvironment(), there);
        }).join();
        first.resetJNI();
    }).join();
    // The manager went with the last runner: a new one is bound to the thread that asks for it.
    EXPECT_EQ(JNIObjectManager::getManager()->getEnv(), ownEnvironment());
    HVRunner again;
    EXPECT_EQ(CFEntry::initializations(), 1);
}

} // namespace
