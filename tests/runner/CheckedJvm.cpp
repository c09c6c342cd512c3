#include <gtest/gtest.h>

#include <memory>
#include <mutex>
#include <string>

#include "VexaJVM.h"

namespace {

/// Listens to what the machine prints. Run with -Xcheck:jni it complains there of every misuse of
/// JNI, and a complaint fails the program.
class CheckedJvm : public ::testing::Environment
{
public:
    void SetUp() override
    {
        VexaJVM::GetInstance()->SetOutput([this](const std::string& text) {
            const std::lock_guard guard(_mutex);
            _output += text;
        });
    }
    void TearDown() override
    {
        const std::lock_guard guard(_mutex);
        for (const char* complaint : {"WARNING", "FATAL"})
            EXPECT_EQ(_output.find(complaint), std::string::npos) << _output;
    }

private:
    std::mutex _mutex;
    std::string _output;
};

[[maybe_unused]] const auto* const registered =
    ::testing::AddGlobalTestEnvironment(std::make_unique<CheckedJvm>().release());

} // namespace
