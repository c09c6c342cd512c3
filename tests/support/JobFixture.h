#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "ExtNameStr.h"
#include "FileServices.h"
#include "JNIException.h"
#include "Journal.h"
#include "TnOutput.h"
#include "VexaDataSource.h"
#include "runner/HVRunner.h"
#include "support/JvmFixture.h"
#include "support/ScriptedEngine.h"

/// Jobs on the real machine. After each test the runner's cleanJRef must leave no global reference,
/// and no scratch file may be left.
class JobTest : public JvmTest
{
protected:
    void SetUp() override
    {
        JvmTest::SetUp();
        HostJournal::instance().clear();
        runner.emplace(&procedure);
    }

    void TearDown() override
    {
        expectNothingLeft();
        runner.reset();
        JvmTest::TearDown();
    }

    void expectNothingLeft()
    {
        runner->cleanJRef();
        EXPECT_EQ(jni().liveGlobals(), 0);
        EXPECT_EQ(scratchFiles(), std::vector<std::string>());
    }

    /// Runs a piece of work as often as it makes calls of the machine, each of which fails once;
    /// whichever fails, what was made goes.
    template <typename Work>
    void expectToSurviveFailures(Work work)
    {
        bool reached = true;
        for (int number = 1; reached; ++number) {
            SCOPED_TRACE(number);
            jni().failAt(number, RecordingJni::Fault::OutOfMemory);
            try {
                work();
            } catch (const JNIException&) {
            }
            reached = jni().endFault();
            expectNothingLeft();
        }
    }

    static std::vector<std::string> scratchFiles()
    {
        std::vector<std::string> files;
        namespace fs = std::filesystem;
        for (const auto& entry :
             fs::recursive_directory_iterator(ExtNameStr(GetVexaTempPath()).GetNative()))
            if (!entry.is_directory())
                files.push_back(entry.path().string());
        return files;
    }

    /// How many executions the engine made and did not end.
    static long openExecutions(const ScriptedEngine& engine)
    {
        long open = 0;
        for (const EngineCall& call : engine.calls())
            open += (call.name == "prepare") - (call.name == "delete");
        return open;
    }

    ProcedureDataSource columns;
    TnProcedure procedure{"TEST", &columns};
    std::optional<HVRunner> runner;
};
