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

inline Entries without(Entries entries, const std::string& name)
{
    entries.erase(name);
    return entries;
}

inline Entries with(Entries entries, const std::string& name, const std::string& text)
{
    entries[name] = text;
    return entries;
}

/// A viewer of models on a scripted engine, and a folder for the models.
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

    /// Writes a model and returns its path.
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

    /// The id, text and detail of the last failure; empty if it has no reason.
    std::string reason()
    {
        std::string id;
        std::string text;
        std::string detail;
        return viewer->hasError(id, text, detail) ? id + text + detail : "";
    }

    /// The path of a container in a job.
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
