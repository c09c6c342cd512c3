#include <filesystem>
#include <memory>

#include <gtest/gtest.h>

#include "CFAppHost.h"
#include "ExtNameStr.h"

namespace {

/// Ends the program as a host program ends: without its temporary directory.
class LeavesNothingBehind final : public testing::Environment
{
public:
    void TearDown() override
    {
        const ExtNameStr directory(CFAppHost::getInstance()->getTempDirectory());
        EXPECT_TRUE(std::filesystem::is_empty(directory.GetNative())) << directory.GetNative();
        EXPECT_TRUE(CFAppHost::removeTempDirectory());
    }
};

// The test framework owns it.
[[maybe_unused]] const auto* const registered =
    testing::AddGlobalTestEnvironment(std::make_unique<LeavesNothingBehind>().release());

} // namespace
