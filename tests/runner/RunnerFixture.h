#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Attention.h"
#include "CommonBlocks.h"
#include "TnOutput.h"
#include "VexaDataSource.h"
#include "data/HVSimpleContainer.h"
#include "data/SourceRows.h"
#include "runner/HVProgressListener.h"
#include "runner/HVRunner.h"
#include "support/JournalTexts.h"
#include "support/ScriptedEngine.h"

/// A scripted engine and a procedure over a dataset of three columns. After each test the host must
/// be as it was before: its weight and split, its interrupt handler.
class RunnerFixture : public ::testing::Test
{
protected:
    RunnerFixture() : procedure("TEST", &source)
    {
        source.SetColumns({"age", "sex", "price"});
        HostJournal::instance().clear();
        ClearAttention();
        pvGetCmnSys()->runIndicator = 0;
        pvGetCmnGlb()->weight = 3;
        pvGetCmnGlb()->split = 2;
    }
    ~RunnerFixture() override
    {
        EXPECT_EQ(pvGetCmnGlb()->weight, expectedWeight);
        EXPECT_EQ(pvGetCmnGlb()->split, expectedSplit);
        EXPECT_EQ(GetAdapter()->getInterruptHandler(), nullptr);
        ClearAttention();
    }

    static std::vector<HostJournal::Entry> journal(HostJournal::Kind kind)
    {
        return HostJournal::instance().entries(kind);
    }

    ScriptedEngine engine;
    ProcedureDataSource source;
    TnProcedure procedure;
    std::int64_t expectedWeight = 3;
    std::int64_t expectedSplit = 2;
};
