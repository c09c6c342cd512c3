#include "support/HVStatTracer.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <tuple>
#include <utility>

#include "support/HostScopes.h"
#include "support/JournalTexts.h"
#include "support/ScratchFolder.h"

namespace {

using Value = std::optional<std::string>;

/// A tracer in an environment of its own; what is not given is unset.
std::unique_ptr<HVStatTracer> makeTracer(const Value& dir, const Value& print = {},
                                         const Value& maxCount = {})
{
    const ScopedEnvironment directory("HV_STAT_DEBUG_DIR", dir);
    const ScopedEnvironment printing("HV_STAT_DEBUG_PRINT", print);
    const ScopedEnvironment count("HV_STAT_DEBUG_MAXCOUNT", maxCount);
    return std::make_unique<HVStatTracer>();
}

class Tracer : public ::testing::Test
{
protected:
    Tracer() { HostJournal::instance().clear(); }

    const ScratchFolder scratch;
    const std::string root = (scratch.path / "trace").string();
};

TEST_F(Tracer, IsOffWithoutADirectory)
{
    std::filesystem::remove("hvinteg_test_trace.hvl");
    for (const Value& dir : {Value(), Value("")}) {
        const auto tracer = makeTracer(dir);
        EXPECT_FALSE(tracer->canTrace());
        EXPECT_FALSE(tracer->isTrace());
        EXPECT_FALSE(tracer->write("text", "hvinteg_test_trace.hvl"));
        EXPECT_FALSE(tracer->append("text", "hvinteg_test_trace.hvl"));
        EXPECT_FALSE(tracer->addLog("line"));
        EXPECT_FALSE(tracer->newTraceDir());
        EXPECT_EQ(tracer->newValidFileName("hvl", "a", "b", false), "a_b.hvl");
        EXPECT_FALSE(std::filesystem::exists("hvinteg_test_trace.hvl"));
        EXPECT_EQ(tracer->maxTraceDirCount(), 1024);
    }
    EXPECT_TRUE(journalTexts(HostJournal::Kind::Line).empty());
}

TEST_F(Tracer, TakesTheFirstFreeNumber)
{
    scratch.put("trace/hvtrace_0/x");
    scratch.put("trace/hvtrace_1/x");
    const auto tracer = makeTracer(root);
    EXPECT_TRUE(tracer->canTrace());
    EXPECT_EQ(tracer->traceRoot(), scratch.name("trace\\"));
    EXPECT_EQ(tracer->traceDir(), scratch.name("trace\\hvtrace_2"));
    EXPECT_TRUE(tracer->addLog("first"));
    EXPECT_TRUE(tracer->addLog(std::string("sec\0ond", 7)));
    EXPECT_EQ(scratch.read("trace/hvtrace_2/hvinteg.log"), "first\nsec\n");
    EXPECT_TRUE(tracer->newTraceDir());
    tracer->addLog("third");
    EXPECT_EQ(scratch.read("trace/hvtrace_3/hvinteg.log"), "third\n");
}

TEST_F(Tracer, MaxCountLimitsTheDirectories)
{
    scratch.put("trace/hvtrace_0/x");
    const std::tuple<const char*, bool, const char*> rows[] = {{"1", false, ""},
                                                               {"-1", false, ""},
                                                               {"0", true, "trace\\"},
                                                               {"none", true, "trace\\"},
                                                               {"2x", true, "trace\\hvtrace_1"}};
    for (const auto& [count, tracing, dir] : rows) {
        const auto tracer = makeTracer(root, {}, count);
        EXPECT_EQ(tracer->canTrace(), tracing) << count;
        EXPECT_TRUE(tracer->isTrace()) << count;
        EXPECT_EQ(tracer->traceDir(), tracing ? scratch.name(dir) : "") << count;
    }
    EXPECT_TRUE(scratch.has("trace/hvinteg.log"));
}

TEST_F(Tracer, RootThatCannotBeUsedLeavesItOff)
{
    namespace fs = std::filesystem;
    scratch.put("file");
    fs::create_directory(scratch.path / "fixed");
    fs::permissions(scratch.path / "fixed", fs::perms::owner_read | fs::perms::owner_exec);
    const std::pair<const char*, std::string> rows[] = {
        {"deep/er", ""}, {"file", ""}, {"fixed", scratch.name("fixed\\")}};
    for (const auto& [dir, traceRoot] : rows) {
        const auto tracer = makeTracer((scratch.path / dir).string(), {}, "0");
        EXPECT_FALSE(tracer->canTrace()) << dir;
        EXPECT_FALSE(tracer->isTrace()) << dir;
        EXPECT_EQ(tracer->traceRoot(), traceRoot);
        EXPECT_FALSE(scratch.has(std::string(dir) + "/hvinteg.log"));
    }
}

TEST_F(Tracer, ViewerTakesLinesOnlyForTheTwoWords)
{
    const std::pair<const char*, bool> rows[] = {{"YES", true},   {"1", true},    {"yes", false},
                                                 {"Yes", false},  {"11", false},  {"", false},
                                                 {"YES ", false}, {"TRUE", false}};
    for (const auto& [value, prints] : rows) {
        HostJournal::instance().clear();
        const auto tracer = makeTracer({}, value);
        EXPECT_EQ(tracer->printLogToViewer(), prints) << value;
        EXPECT_FALSE(tracer->addLog("line"));
        EXPECT_EQ(journalTexts(HostJournal::Kind::Line),
                  prints ? std::vector<std::string>{"line"} : std::vector<std::string>{})
            << value;
    }
}

TEST_F(Tracer, FileNamesLeaveOutWhatIsEmpty)
{
    const auto tracer = makeTracer(root);
    const std::tuple<const char*, const char*, const char*, bool, const char*> rows[] = {
        {"hvl", "a", "b", false, "a_b.hvl"}, {"hvl", "a", "", false, "a.hvl"},
        {"hvl", "", "b", false, "b.hvl"},    {"hvl", "", "", false, "unname.hvl"},
        {"", "a", "b", false, "a_b"},        {"hvl", "a", "b", true, "a_b_2.hvl"},
        {"xml", "a", "b", true, "a_b.xml"},
    };
    tracer->write("x", "a_b.hvl");
    tracer->write("x", "a_b_1.hvl");
    for (const auto& [extension, label, name, unique, expected] : rows)
        EXPECT_EQ(tracer->newValidFileName(extension, label, name, unique), expected);
}

TEST_F(Tracer, FilesAreReplacedAppendedAndRemoved)
{
    const auto tracer = makeTracer(root);
    const std::string file = "trace/hvtrace_0/a.hvl";
    EXPECT_TRUE(tracer->write("a long first text", "a.hvl"));
    EXPECT_TRUE(tracer->write(std::string("b\r\n\0c", 5), "a.hvl"));
    EXPECT_EQ(scratch.read(file), "b\r\n");
    EXPECT_TRUE(tracer->append("d", "a.hvl"));
    EXPECT_TRUE(tracer->append("", "a.hvl"));
    EXPECT_EQ(scratch.read(file), "b\r\nd");
    EXPECT_TRUE(tracer->write("", "a.hvl"));
    EXPECT_FALSE(scratch.has(file));
    EXPECT_TRUE(tracer->write("", "a.hvl"));
    // A file that does not open loses its text, and nothing else.
    EXPECT_TRUE(tracer->write("x", "no\\such\\a.hvl"));
}

} // namespace
