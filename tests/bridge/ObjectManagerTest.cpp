#include "bridge/JNIObjectManager.h"

#include <vector>

#include "bridge/JNIJSONArtifact.h"
#include "bridge/JNIJSONObject.h"
#include "support/JvmFixture.h"

namespace {
using ObjectManagerTest = JvmTest;

/// Tells the order of its end.
class Noted : public JNIHvlAccessor
{
public:
    Noted(int number, std::vector<int>& ended) : _number(number), _ended(ended) {}
    Noted(const Noted&) = delete;
    Noted& operator=(const Noted&) = delete;
    ~Noted() override { _ended.push_back(_number); }

private:
    int _number;
    std::vector<int>& _ended;
};
} // namespace

TEST_F(ObjectManagerTest, CleansWrappersInOrderThroughTheirDestructors)
{
    std::vector<int> ended;
    JNIObjectManager* manager = JNIObjectManager::getManager();
    for (int number = 1; number <= 3; ++number) {
        auto wrapper = std::make_unique<Noted>(number, ended);
        wrapper->newObject("text", false, true);
        manager->addtoCleanList(wrapper.release());
        manager->addtoCleanList(nullptr);
    }
    EXPECT_EQ(jni().liveLocals(), 3);
    manager->cleanJRef();
    EXPECT_EQ(ended, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(jni().liveLocals(), 0);
    manager->cleanJRef();
    EXPECT_EQ(ended.size(), 3U);
}

TEST_F(ObjectManagerTest, AttachingLeavesNoExceptionPending)
{
    jni().failAt(1, RecordingJni::Fault::OutOfMemory);
    JNIObjectManager::getManager()->reAttachJVM();
    EXPECT_EQ(jni().failedFunction(), "EnsureLocalCapacity");
    EXPECT_TRUE(jni().endFault());
    EXPECT_EQ(env()->ExceptionCheck(), JNI_FALSE);
    env()->ExceptionClear();
}

TEST_F(ObjectManagerTest, ManagersReleaseWhatTheyHoldAndComeWhenNeeded)
{
    JNIObjectManager::newManager();
    const JNIJSONObject object;
    std::vector<int> ended;
    JNIObjectManager::getManager()->addtoCleanList(std::make_unique<Noted>(1, ended).release());
    EXPECT_EQ(jni().liveGlobals(), 1);
    JNIObjectManager::newManager();
    EXPECT_EQ(jni().liveGlobals(), 0);
    EXPECT_EQ(ended.size(), 1U);

    JNIObjectManager::releaseManager();
    JNIObjectManager::releaseManager();
    JNIJSONObject made;
    EXPECT_EQ(made.serialize(), "{}");
    EXPECT_EQ(JNIObjectManager::getManager()->getEnv(), made.getEnv());
    EXPECT_EQ(JNIObjectManager::getManager()->createGlobalRef(nullptr, true), nullptr);
}
