#pragma once

#include <gtest/gtest.h>

#include <string>

#include "bridge/JNIHvlProgram.h"
#include "runner/HVRunner.h"

/// A program under composition, and a runner that keeps the Java side alive around it. What a test
/// made there is released when the runner goes.
class Composing : public testing::Test
{
protected:
    std::string text()
    {
        std::string text;
        program.getHvlText(text);
        return text;
    }

    HVRunner runner;
    JNIHvlProgram program;
};
