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
        VexaJVM::GetInstance()->SetOutput([printed = _printed](const std::string& text) {
            const std::lock_guard guard(printed->mutex);
            printed->text += text;
        });
    }
    void TearDown() override
    {
        const std::lock_guard guard(_printed->mutex);
        for (const char* complaint : {"WARNING", "FATAL"})
            EXPECT_EQ(_printed->text.find(complaint), std::string::npos) << _printed->text;
    }

private:
    struct Printed
    {
        std::mutex mutex;
        std::string text;
    };

    /// Shared with the machine, whose own threads print until the process is gone, and that is
    /// after the test framework has deleted this object.
    std::shared_ptr<Printed> _printed = std::make_shared<Printed>();
};

[[maybe_unused]] const auto* const registered =
    ::testing::AddGlobalTestEnvironment(std::make_unique<CheckedJvm>().release());

} // namespace
