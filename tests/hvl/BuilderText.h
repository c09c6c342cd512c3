#pragma once

#include <functional>
#include <string>
#include <vector>

#include "hvl/Composing.h"
#include "hvl/HVFunction.h"
#include "runner/HVProgressListener.h"

/// One configuration of a builder, and what the job says of it.
template <typename Builder>
struct Case
{
    const char* what;
    std::function<void(Builder&)> configure;
    /// The configuration; empty if the step is not created.
    const char* configuration;
};

/// Compares what builders write.
class BuilderText : public Composing
{
protected:
    /// None of these jobs can run, for want of files and inputs; the engine reads their text all
    /// the same, and a fault in it has an id of the area PA.
    void expectToParse(const std::string& job)
    {
        runner.prepareHVLJob(job);
        runner.execute();
        std::string id;
        std::string error;
        std::string detail;
        runner.getProgressListener()->hasError(id, error, detail);
        EXPECT_NE(id.substr(0, 5), "HVEPA") << error;
        runner.cleanExecution();
    }

    /// Configures a builder of a new program in each case, and compares its one step.
    template <typename Builder>
    void check(const char* function, HVFunction type, const std::vector<Case<Builder>>& cases)
    {
        for (const auto& [what, configure, configuration] : cases) {
            SCOPED_TRACE(what);
            JNIHvlProgram own;
            Builder builder(&own);
            EXPECT_EQ(builder.GetFunctionType(), type);
            configure(builder);
            const std::string json = configuration;
            EXPECT_EQ(builder.GenerateHVL(), !json.empty());
            std::string text;
            own.getHvlText(text);
            EXPECT_EQ(text,
                      json.empty() ? "" : "val f1Conf = " + json + "\n" + function + "(f1Conf)");
            expectToParse(text);
        }
    }
};
