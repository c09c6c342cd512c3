#include "support/JvmFixture.h"

#include <cstdlib>
#include <mutex>

#include "VexaJVM.h"
#include "bridge/JNIObjectManager.h"

namespace {
std::mutex complaintMutex;
std::vector<std::string> complaintList;

bool isChecked()
{
    return std::getenv("HV_TEST_CHECK_JNI") != nullptr;
}

void takeOutput(const std::string& text)
{
    if (text.find("WARNING") == std::string::npos && text.find("FATAL") == std::string::npos)
        return;
    const std::lock_guard<std::mutex> lock(complaintMutex);
    complaintList.push_back(text);
}

RecordingJni& startMachine()
{
    VexaJVM* machine = VexaJVM::GetInstance();
    if (!machine->IsStarted()) {
        machine->AddOption("-Xmx256m");
        if (isChecked())
            machine->AddOption("-Xcheck:jni");
        machine->SetOutput(takeOutput);
        JNIObjectManager::newManager();
    }
    return RecordingJni::install(machine->GetJavaVM(), !isChecked());
}
} // namespace

void JvmTest::SetUp()
{
    RecordingJni& recorder = startMachine();
    JNIObjectManager::newManager();
    recorder.restart();
    const std::lock_guard<std::mutex> lock(complaintMutex);
    complaintList.clear();
}

void JvmTest::TearDown()
{
    jni().endFault();
    JNIObjectManager::getManager()->cleanJRef();
    EXPECT_EQ(jni().liveGlobals(), 0);
    EXPECT_EQ(jni().liveLocals(), 0);
    EXPECT_EQ(jni().lentTexts(), 0);
    EXPECT_FALSE(env()->ExceptionCheck());
    EXPECT_EQ(jni().violations(), std::vector<std::string>());
    EXPECT_EQ(complaints(), std::vector<std::string>());
}

RecordingJni& JvmTest::jni() const
{
    return startMachine();
}

JNIEnv* JvmTest::env() const
{
    return JNIObjectManager::getManager()->getEnv();
}

std::vector<std::string> JvmTest::complaints()
{
    const std::lock_guard<std::mutex> lock(complaintMutex);
    return complaintList;
}
