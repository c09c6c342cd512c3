#pragma once

#include <gmock/gmock.h>

#include <map>
#include <optional>
#include <regex>

#include "support/JobFixture.h"
#include "support/ScratchFolder.h"
#include "support/ZipWriter.h"
#include "tcm/HVInteractiveTSR.h"

using Names = std::vector<std::string>;
/// The entries of an archive.
using Entries = std::map<std::string, std::string>;

/// A viewer of models on an engine that does what it is told, in a folder for the models.
class ViewerTest : public JobTest
{
protected:
    void SetUp() override
    {
        JobTest::SetUp();
        _folder.emplace();
        viewer.emplace();
    }

    void TearDown() override
    {
        EXPECT_EQ(openExecutions(engine), 0);
        viewer.reset();
        _folder.reset();
        JobTest::TearDown();
    }

    const ScratchFolder& folder() const { return *_folder; }

    /// Writes a model; its path.
    std::string putModel(const Entries& entries) const
    {
        const std::string path = folder().name("model.tcm");
        putArchive(path, entries);
        return path;
    }

    static void putArchive(const std::string& path, const Entries& entries)
    {
        ZipWriter archive(path);
        for (const auto& [name, text] : entries)
            archive.AddString(name, text);
    }

    /// The texts of the jobs so far.
    Names jobs() const { return engine.argumentsOf("prepare"); }

    /// Where a job wants a container to be.
    static std::string placeOf(const std::string& job, const std::string& container)
    {
        const std::regex mark("\"name\":\"" + container + "\",\"uri\":\"file:///([^\"]*)\"");
        std::smatch found;
        std::regex_search(job, found, mark);
        return found[1];
    }

    ScriptedEngine engine;
    std::optional<HVInteractiveTSR> viewer;

private:
    std::optional<ScratchFolder> _folder;
};
