#include "TnOutput.h"

#include <tuple>

#include <gtest/gtest.h>

#include "CFAppHost.h"
#include "HostLines.h"
#include "Journal.h"
#include "ParserMessage.h"
#include "VexaDataSource.h"
#include "output/CompositeFormat.h"
#include "support/HostScopes.h"
#include "support/Installation.h"
#include "support/ScratchFolder.h"

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

void send(int code, double part, int length = 8, int end = -1)
{
    const int subCode = 0;
    IpcPutC(&code, &subCode, &length, &part, &end);
}

void sendProgress(double part)
{
    send(kIpcProgress, part);
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

} // namespace

TEST_F(OutputTest, CompositesFillTheirPlaces)
{
    const CompositePart two = {{"sex", "f"}, {"region", "^2"}};
    const CompositePart one = {{"sex", "f"}};
    const CompositePart text = {{"done"}};
    const std::tuple<const char*, std::vector<CompositePart>, const char*> rows[] = {
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
    for (const auto& [format, parts, filled] : rows)
        EXPECT_EQ(fillComposite(format, parts), filled) << format;
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
    {
        const TnProcedure inner("INNER");
        EXPECT_EQ(inner.DataSource().GetNSplitVars(), 0);
        EXPECT_EQ(splitLine("m"), "Split file . m");
    }
    source.SetSplitValues({"south", "m"});
    EXPECT_EQ(splitLine("m").substr(0, 25), "Split file region = south");
}

TEST_F(OutputTest, LinesReachTheJournalAsUtf8)
{
    const ScopedCodePage page("windows-1252");
    TnError(TnString("Gr\366\337e"), 2, 3);
    TnError(TnUTF8String("Größe"), 2, 2);
    const int one = 1;
    for (const int length : {8, 5, -1})
        DSPLNS(&one, &one, "Zeile \344\n", &length);

    const auto errors = journal.entries(Kind::Error);
    ASSERT_EQ(errors.size(), 2U);
    EXPECT_EQ(errors[0].text, "Größe");
    EXPECT_EQ(errors[0].show, 2);
    EXPECT_EQ(errors[0].level, 3);
    EXPECT_EQ(errors[1].text, "Größe");
    EXPECT_EQ(errors[1].level, 2);
    const auto lines = journal.entries(Kind::Line);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].text, "Zeile ä\n");
    EXPECT_EQ(lines[1].text, "Zeile");
}

TEST_F(OutputTest, ProgressIsTakenByItsCodeAndLength)
{
    sendProgress(0.25);
    send(kIpcProgress, 0.5, 4);    // too short for a double
    send(kIpcProgress, 0.5, 8, 0); // without the end mark
    send(12, 0.5, 4);
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
    sendProgress(6);
    sendProgress(7);
    const auto all = journal.entries();
    EXPECT_LT(all.size(), 70000U);
    EXPECT_EQ(all.back().number, 7);
    EXPECT_EQ(all[all.size() - 2].number, 6) << "only progress counts as progress";
    EXPECT_EQ(all[all.size() - 3].text, "99999");
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

TEST_F(OutputTest, TextsComeFromTheTableOfTheLanguageInTheHostsEncoding)
{
    const ScratchFolder home;
    const Installation installation(home.folder);
    home.put("strings/de_AT.json", R"({"Case Count": "Fallzahl", "bad": 5})");
    home.put("strings/de.json",
             R"({"Case Count": "nicht diese", "only de": "größer", "größe": "size"})");
    home.put("strings/en.json", R"({"only en": "just here"})");
    home.put("strings/fr.json", "{ this is no table");
    const ScopedCodePage page("windows-1252");
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"de_AT", "Case Count", "Fallzahl"}, {"de_AT", "only de", "gr\366\337er"},
        {"de_AT", "only en", "just here"},   {"de_AT", "bad", "bad"},
        {"de_AT", "gr\366\337e", "size"},    {"fr_FR", "Case Count", "Case Count"},
        {"fr_FR", "only en", "just here"},
    };
    for (const auto& [locale, key, text] : rows) {
        CFAppHost::getInstance()->setLocale(locale);
        EXPECT_EQ(ParserMessage().GetTranslatedText(key), text) << locale;
    }
    CFAppHost::getInstance()->setLocale("de_AT");
    EXPECT_EQ(TnUTF8String("only de", true).text(), "größer");
    EXPECT_EQ(TnUTF8String("only de").text(), "only de");
    EXPECT_EQ(TnString("gr\366\337e", true).text(), "size");
    CFAppHost::getInstance()->setLocale("");
}

TEST_F(OutputTest, UnknownMeasurementLevelsFollowFromTheType)
{
    ProcedureDataSource source;
    source.SetColumns({"a", "b", "c"});
    source.SetColumnTypes({0, 1});
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
