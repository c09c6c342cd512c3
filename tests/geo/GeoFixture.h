#pragma once

#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>
#include <optional>
#include <set>

#include "data/MemorySource.h"
#include "geo/HVInteractiveSTEM.h"
#include "support/JobFixture.h"
#include "support/Paths.h"
#include "support/ScratchFolder.h"
#include "support/WrittenRows.h"
#include "support/ZipWriter.h"

using Names = std::vector<std::string>;
using KeyRows = std::vector<std::vector<std::string>>;

/// The requests of a map dialog, in a folder for their files. After each test no execution is open,
/// and no file is left but the folder's.
class MapDialog : public JobTest
{
protected:
    void SetUp() override
    {
        JobTest::SetUp();
        _folder.emplace();
        maps.emplace();
    }

    void TearDown() override
    {
        maps.reset();
        _folder.reset();
        JobTest::TearDown();
    }

    const ScratchFolder& folder() const { return *_folder; }
    std::string path(const std::string& name) const { return folder().name(name); }
    /// No reference, and no file but those of the test.
    void expectOnlyTheFolderLeft(const Names& files)
    {
        runner->cleanJRef();
        EXPECT_EQ(jni().liveGlobals(), 0);
        EXPECT_EQ(scratchFiles(), files);
    }
    /// As a job contains it.
    std::string url(const std::string& name) const { return NormalizeHvlPathU(path(name), "file"); }

    /// The result of hasError as "id|text|detail", or empty.
    std::string reason()
    {
        std::string id;
        std::string text;
        std::string detail;
        return maps->hasError(id, text, detail) ? id + "|" + text + "|" + detail : "";
    }

    /// An archive of these members, with something in each.
    void putZip(const std::string& name, const Names& members) const
    {
        ZipWriter zip(path(name));
        for (const std::string& member : members)
            zip.AddString(member, "x");
    }

    /// Takes the files of the trace directory away; their names.
    static std::set<std::string> takeTraces()
    {
        std::set<std::string> names;
        const std::filesystem::path root(std::getenv("HV_STAT_DEBUG_DIR"));
        if (!std::filesystem::exists(root))
            return names;
        for (const auto& entry : std::filesystem::directory_iterator(root)) {
            // The iterators of the data trace for themselves, and the log stays open.
            const std::string file = entry.path().filename().string();
            if (file.rfind("HvlJobText", 0) == 0 || file.rfind("DataModel", 0) == 0 ||
                file.rfind("LayerInfo", 0) == 0 || file.rfind("GeoJSON", 0) == 0) {
                names.insert(file);
                std::filesystem::remove(entry.path());
            }
        }
        return names;
    }

    std::optional<HVInteractiveSTEM> maps;

private:
    std::optional<ScratchFolder> _folder;
};

/// The same on an engine that does what it is told.
class ScriptedMapDialog : public MapDialog
{
protected:
    void SetUp() override
    {
        MapDialog::SetUp();
        takeTraces();
    }

    void TearDown() override
    {
        EXPECT_EQ(openExecutions(engine), 0);
        MapDialog::TearDown();
    }

    /// The texts of the jobs so far.
    Names jobs() const { return engine.argumentsOf("prepare"); }

    ScriptedEngine engine;
};
