#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/RecordingJni.h"

/// Tests with Java: the host's real virtual machine, started once per process, with a recorder of
/// JNI calls. After each test, TearDown releases the objects of the test. Then no reference may
/// remain, no call may have been made with a pending exception, and the virtual machine may have
/// reported no problem.
///
/// If HV_TEST_CHECK_JNI is set, the virtual machine itself checks every call. Its reports fail the
/// test.
class JvmTest : public testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    RecordingJni& jni() const;
    JNIEnv* env() const;
    /// The reports of the checked mode since the test began.
    static std::vector<std::string> complaints();
};
