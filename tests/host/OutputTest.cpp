#include <atomic>
#include <fstream>
#include <thread>

#include <gtest/gtest.h>

#include "ExtNameStr.h"
#include "HostLines.h"
#include "HostScopes.h"
#include "Journal.h"
#include "ParserMessage.h"
#include "PathFactory.h"
#include "TnOutput.h"
#include "VexaDataSource.h"
#include "output/CompositeFormat.h"

namespace {

using Kind = HostJournal::Kind;

constexpr const char* kSplitFormat = "Split file [%1 = %2:,^1 = ^2:]1. ^2";

class OutputTest : public testing::Test
{
protected:
    void SetUp() override { journal.clear(); }
    void TearDown() override { journal.setObserver({}); }
    HostJournal& journal = HostJournal::instance();
};

void sendProgress(double part)
{
    const int code = kIpcProgress;
    const int subCode = 0;
    const int length = 8;
    const int end = -1;
    IpcPutC(&code, &subCode, &length, &part, &end);
}

std::string splitLine(const std::string& message)
{
    TnComposite line(kSplitFormat, true);
    line.Sublist();
    line.SplitList();
    line.EndSublist();
    line.Add(TnUTF8String(message));
    line.Finish();
    line.Add(TnUTF8String("too late"));
    return line.clone()->text();
}

/// An installation with string tables of its own.
class TablesFinder final : public PathFinder
{
public:
    TablesFinder()
    {
        ExtNameStr::mkdir(ExtNameStr(_folder.name("strings")));
        PathFactory::setPathInstance(this);
    }
    ~TablesFinder() override { PathFactory::setPathInstance(nullptr); }
    std::string getInstallationPath() const override { return _folder.path; }
    void write(const std::string& language, const std::string& json) const
    {
        std::ofstream file;
        ExtNameStr::Open(file, ExtNameStr(_folder.name("strings\\" + language + ".json")),
                         std::ios::out);
        file << json;
    }

private:
    ScopedFolder _folder;
};

} // namespace

TEST_F(OutputTest, CompositesFillTheirPlaces)
{
    const CompositePart two = {{"sex", "f"}, {"region", "^2"}};
    const CompositePart one = {{"sex", "f"}};
    const CompositePart text = {{"done"}};
    struct Case
    {
        const char* format;
        std::vector<CompositePart> parts;
        const char* filled;
    };
    const Case cases[] = {
        {kSplitFormat, {one, text}, "Split file sex = f. done"},
        {kSplitFormat, {two, text}, "Split file sex = f,region = ^2. done"},
        {kSplitFormat, {{}, text}, "Split file . done"},
        {kSplitFormat, {one, {{"[%1:^1:]1 ^1 %1"}}}, "Split file sex = f. [%1:^1:]1 ^1 %1"},
        {"^1|^2|^3|^0", {text, two}, "done|sex, f, region, ^2||"},
        {"[<%1%2%3>:-:]1", {text}, "<done>"},
        {"[%1:;^2:]2", {text, two}, "sex;^2"},
        {"50% of ^ and [a] [b:c] [d:e:]", {}, "50% of ^ and [a] [b:c] [d:e:]"},
        {"[%1:(:](^1:]1^2", {two, text}, "sex(:](regiondone"},
        {"^99999999999999999999999", {text}, "^99999999999999999999999"},
        {"", {text}, ""},
    };
    for (const Case& row : cases)
        EXPECT_EQ(fillComposite(row.format, row.parts), row.filled) << row.format;
}

TEST_F(OutputTest, ASplitListNamesThePresentGroupOfTheCurrentProcedure)
{
    EXPECT_EQ(splitLine("m"), "Split file . m");
    ProcedureDataSource source;
    source.SetColumns({"id", "sex", "region"});
    source.SetSplitVars({2, 1, 7});
    source.SetSplitValues({"north", "f"});
    const TnProcedure outer("FREQUENCIES", &source);
    EXPECT_EQ(splitLine("m"), "Split file region = north,sex = f, = . m");
    auto inner = std::make_unique<TnProcedure>("INNER");
    EXPECT_EQ(inner->DataSource().GetNSplitVars(), 0);
    EXPECT_EQ(splitLine("m"), "Split file . m");
    inner.reset();
    source.SetSplitValues({"south", "m"});
    EXPECT_EQ(splitLine("m").substr(0, 25), "Split file region = south");
}

TEST_F(OutputTest, ErrorLinesReachTheJournalAsUtf8)
{
    const ScopedCodePage page("windows-1252");
    TnError(TnString("Gr\xF6\xDF"
                     "e"),
            2, 3);
    TnError(TnUTF8String("Größe"), 2, 2);
    const std::string line = "Zeile \xE4";
    const int one = 1;
    const int length = static_cast<int>(line.size()) - 2;
    DSPLNS(&one, &one, line.c_str(), &length);
    const int negative = -1;
    DSPLNS(&one, &one, line.c_str(), &negative);

    const auto errors = journal.entries(Kind::Error);
    ASSERT_EQ(errors.size(), 2U);
    EXPECT_EQ(errors[0].text, "Größe");
    EXPECT_EQ(errors[0].show * 10 + errors[0].level, 23);
    EXPECT_EQ(errors[1].level, 2);
    const auto lines = journal.entries(Kind::Line);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].text, "Zeile");
}

TEST_F(OutputTest, ProgressIsTakenByItsCodeAndLength)
{
    sendProgress(0.25);
    const int other = 12;
    const int zero = 0;
    const int length = 4;
    const int progress = kIpcProgress;
    const int end = -1;
    const double part = 0.5;
    IpcPutC(&progress, &zero, &length, &part, &end); // too short for a double
    IpcPutC(&progress, &zero, &length, &part, &zero);
    IpcPutC(&other, &zero, &length, &part, &end);
    const auto all = journal.entries();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].kind, Kind::Progress);
    EXPECT_EQ(all[0].number, 0.25);
    EXPECT_EQ(all[1].text, "IpcPutC 12 0");
}

TEST_F(OutputTest, TheJournalIsBoundedAndKeepsTheLatest)
{
    for (int i = 0; i < 100000; ++i)
        sendProgress(i);
    const auto progress = journal.entries();
    EXPECT_LT(progress.size(), 10000U);
    EXPECT_EQ(progress.back().number, 99999);
    for (int i = 0; i < 100000; ++i)
        journal.add({Kind::Output, std::to_string(i)});
    sendProgress(7);
    const auto all = journal.entries();
    EXPECT_LT(all.size(), 70000U);
    EXPECT_EQ(all.back().number, 7);
    EXPECT_EQ(all[all.size() - 2].text, "99999");
}

TEST_F(OutputTest, AnObserverSeesAllAndProgressIsNotKept)
{
    std::string seen;
    journal.setObserver([&](const HostJournal::Entry& entry) {
        seen += entry.kind == Kind::Progress ? "p" : entry.text;
        journal.entries(); // under no lock
    });
    sendProgress(0.5);
    journal.add({Kind::Line, "l"});
    journal.setObserver({});
    journal.add({Kind::Line, "m"});
    EXPECT_EQ(seen, "pl");
    EXPECT_EQ(journal.entries().size(), 2U);
}

TEST_F(OutputTest, TheJournalTakesEntriesFromManyThreads)
{
    std::atomic<int> observed = 0;
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&] {
            for (int i = 0; i < 500; ++i)
                journal.add({Kind::Line, "x"});
        });
    for (int i = 0; i < 50; ++i) {
        journal.setObserver([&](const HostJournal::Entry&) { ++observed; });
        journal.setObserver({});
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(journal.entries(Kind::Line).size(), 2000U);
}

TEST_F(OutputTest, TextsComeFromTheTableOfTheLanguage)
{
    const TablesFinder tables;
    tables.write("de_AT", R"({"Case Count": "Fallzahl", "bad": 5})");
    tables.write("de", R"({"Case Count": "nicht diese", "only de": "nur hier"})");
    tables.write("en", R"({"only en": "just here"})");
    tables.write("fr", "{ this is no table");
    CFAppHost& host = *CFAppHost::getInstance();
    const ParserMessage message;
    host.setLocale("de_AT");
    EXPECT_EQ(message.GetTranslatedText("Case Count"), "Fallzahl");
    EXPECT_EQ(message.GetTranslatedText("only de"), "nur hier");
    EXPECT_EQ(message.GetTranslatedText("only en"), "just here");
    EXPECT_EQ(message.GetTranslatedText("bad"), "bad");
    EXPECT_EQ(TnUTF8String("Case Count", true).text(), "Fallzahl");
    EXPECT_EQ(TnUTF8String("Case Count").text(), "Case Count");
    host.setLocale("fr_FR");
    EXPECT_EQ(message.GetTranslatedText("Case Count"), "Case Count");
    host.setLocale("");
}

TEST_F(OutputTest, TranslatedTextsAreInTheHostsEncoding)
{
    const TablesFinder tables;
    tables.write("en", R"({"key": "größer", "größe": "size"})");
    const ScopedCodePage page("windows-1252");
    EXPECT_EQ(ParserMessage().GetTranslatedText("key"), "gr\xF6\xDF"
                                                        "er");
    EXPECT_EQ(ParserMessage().GetTranslatedText("gr\xF6\xDF"
                                                "e"),
              "size");
    EXPECT_EQ(TnString("gr\xF6\xDF"
                       "e",
                       true)
                  .text(),
              "size");
}

TEST_F(OutputTest, IgnoredSettingsAreNotedAndWarnedOf)
{
    ParserMessage message;
    message.DisableWeight();
    message.DisableSplit();
    const auto notes = journal.entries(Kind::Note);
    ASSERT_EQ(notes.size(), 2U);
    EXPECT_EQ(notes[0].text + notes[1].text, "DisableWeightDisableSplit");
    const auto lines = journal.entries(Kind::Error);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].level, kLevelWarning);
    EXPECT_NE(lines[0].text, lines[1].text);
}

TEST_F(OutputTest, UnknownMeasurementLevelsFollowFromTheType)
{
    ProcedureDataSource source;
    source.SetColumns({"a", "b", "c"});
    source.SetColumnTypes({0, 8});
    source.SetMeasurementLevel(2, MeasurementLevel::Ordinal);
    source.SetMeasurementLevel(9, MeasurementLevel::Ordinal);
    AdjustMeasurementLevels(source);
    EXPECT_EQ(source.GetMeasurementLevel(0), MeasurementLevel::Scale);
    EXPECT_EQ(source.GetMeasurementLevel(1), MeasurementLevel::Nominal);
    EXPECT_EQ(source.GetMeasurementLevel(2), MeasurementLevel::Ordinal);
    EXPECT_EQ(source.GetMeasurementLevel(-1), MeasurementLevel::Unknown);
    EXPECT_EQ(source.GetSplitVarIndex(0), -1);
    EXPECT_EQ(journal.entries(Kind::Output).at(0).text, "AdjustMeasurementLevels");
}
