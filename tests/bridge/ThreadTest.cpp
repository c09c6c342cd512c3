
#include <thread>

#include "VexaJVM.h"
#include "bridge/JNIHvlProgram.h"
#include "bridge/JNIJSONObject.h"
#include "bridge/JNIObjectManager.h"
#include "support/JvmFixture.h"

using BridgeThreads = JvmTest;

TEST_F(BridgeThreads, AThreadTakesOverAndGivesBack)
{
    const JNIJSONObject mine;
    JNIEnv* const before = env();
    std::thread([&] {
        JNIObjectManager::getManager()->reAttachJVM();
        EXPECT_NE(env(), before);
        JNIJSONObject theirs;
        theirs.put("a", 1);
        EXPECT_EQ(theirs.serialize(), R"({"a":1})");
        JNIObjectManager::getManager()->cleanJRef();
        EXPECT_EQ(jni().liveGlobals(), 0);
        VexaJVM::GetInstance()->DetachCurrentThread();
    }).join();
    JNIObjectManager::getManager()->reAttachJVM();
    EXPECT_EQ(env(), before);
}

TEST_F(BridgeThreads, AWrapperThatEndsElsewhereLeavesItsReferencesAlone)
{
    JNIHvlAccessor maker;
    jobject const object = maker.newObject(1, false, false);
    auto wrapper = std::make_unique<JNIHvlAccessor>();
    wrapper->init(object, false);
    jobject const classReference = wrapper->getClass();
    const int deleted = jni().count("DeleteLocalRef");
    std::thread([&] {
        JNIHvlAccessor copy(*wrapper);
        EXPECT_EQ(copy.getObject(), nullptr);
        EXPECT_EQ(copy.getClass(), nullptr);
        wrapper.reset();
    }).join();
    EXPECT_EQ(jni().count("DeleteLocalRef"), deleted);
    env()->DeleteLocalRef(classReference);
    env()->DeleteLocalRef(object);
}

TEST_F(BridgeThreads, ReferencesOfAnAttachmentThatEndedAreLeftAlone)
{
    // The machine gives a new attachment the environment of one that has ended, so the references
    // of the one would pass for references of the other.
    JNIHvlAccessor wrapper;
    std::thread([&] {
        JNIObjectManager::getManager()->reAttachJVM();
        JNIHvlProgram().createHvlExpressionLiteral(1);
        JNIHvlAccessor theirs;
        theirs.init(theirs.newObject(1, false, false), false);
        wrapper = theirs;
    }).join();
    std::thread([&] {
        JNIObjectManager::getManager()->reAttachJVM();
        JNIHvlAccessor theirs;
        const int deleted = jni().count("DeleteLocalRef");
        wrapper = theirs;
        JNIObjectManager::getManager()->cleanJRef();
        EXPECT_EQ(jni().count("DeleteLocalRef"), deleted);
    }).join();
    JNIObjectManager::getManager()->reAttachJVM();
    jni().restart(); // the references went with their attachment
}

TEST_F(BridgeThreads, GlobalReferencesCanBeReleasedFromAnyThread)
{
    const JNIJSONObject object;
    std::thread([] { JNIObjectManager::getManager()->cleanJRef(); }).join();
    EXPECT_EQ(jni().liveGlobals(), 0);
}
