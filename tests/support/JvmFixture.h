#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/RecordingJni.h"

/// Tests that work with Java: the real machine of the host, started once for the process, behind a
/// recorder. After each test what the step held is released, and then no reference may be left, no
/// call may have been made with an exception pending, and the machine may have complained of
/// nothing.
///
/// With HV_TEST_CHECK_JNI set the machine checks every call itself; its complaints fail the test.
class JvmTest : public testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    RecordingJni& jni() const;
    JNIEnv* env() const;
    /// What the checked mode said since the test began.
    static std::vector<std::string> complaints();
};
