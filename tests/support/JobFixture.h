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

/// Tests that run jobs on the real virtual machine. After each test, cleanJRef must release all
/// global references, and no scratch file may remain.
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

    /// Repeats a piece of work. In each run another call to the virtual machine fails, until all
    /// have failed once. After each run nothing may remain.
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

    /// The number of executions that the engine has made but not deleted.
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
