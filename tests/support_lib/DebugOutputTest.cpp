#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "OutputTree.h"
#include "TnOutput.h"
#include "VexaCases.h"
#include "support/HVDebug.h"
#include "support/HVStatDisplay.h"
#include "support/JournalTexts.h"

namespace {

using testing::ElementsAre;
using testing::MatchesRegex;

/// The table under the only procedure.
const OutputTable& debugTable(const TnProcedure& procedure)
{
    return *std::get<std::shared_ptr<OutputTable>>(procedure.node()->items.at(0));
}

double numberAt(const OutputTable& table, int row, int column)
{
    return table.cells.at({row, column})->content.number.value();
}

TEST(HVDebug, TimesLinesAndSumsThemUp)
{
    TnProcedure procedure("TEST");
    {
        HVDebug debug(&procedure);
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        debug.addOutputLine("first").addOutputLine("second");
    }
    const OutputTable& table = debugTable(procedure);
    ASSERT_EQ(table.dimensions.size(), 2U);
    EXPECT_EQ(table.title.text, "Debug");
    EXPECT_TRUE(table.dimensions[0].hidesName && table.dimensions[0].hidesChildren);
    EXPECT_TRUE(table.dimensions[1].hidesName && !table.dimensions[1].hidesChildren);
    ASSERT_EQ(table.dimensions[0].leafCount, 2);
    std::vector<std::string> columns;
    for (std::size_t i = 1; i < table.dimensions[1].nodes.size(); ++i) {
        columns.push_back(table.dimensions[1].nodes[i].label.text);
        EXPECT_EQ(table.dimensions[1].nodes[i].label.key, "") << "a text, not a key";
    }
    EXPECT_THAT(columns, ElementsAre("Comment", "Time", "Elapsed Time", "Total Elapsed Time",
                                     "Percent", "Cumulative Percent"));
    EXPECT_EQ(table.cells.at({1, 0})->content.text, "second");
    EXPECT_THAT(table.cells.at({0, 1})->content.text,
                MatchesRegex("[0-2][0-9]:[0-5][0-9]:[0-5][0-9]\\.[0-9][0-9][0-9]"));
    EXPECT_GE(numberAt(table, 0, 2), 0.02);
    EXPECT_EQ(numberAt(table, 0, 2), numberAt(table, 0, 3));
    EXPECT_DOUBLE_EQ(numberAt(table, 0, 2) + numberAt(table, 1, 2), numberAt(table, 1, 3));
    EXPECT_NEAR(numberAt(table, 0, 4) + numberAt(table, 1, 4), 100, 1e-9);
    EXPECT_NEAR(numberAt(table, 1, 5), 100, 1e-9);
}

TEST(HVDebug, WithoutLinesHasNoRows)
{
    TnProcedure procedure("TEST");
    {
        HVDebug debug(&procedure);
    }
    EXPECT_EQ(debugTable(procedure).dimensions[0].leafCount, 0);
    EXPECT_EQ(debugTable(procedure).cells.size(), 0U);
}

/// What a call shows in the front end.
template <typename Call>
std::vector<std::string> linesOf(Call call)
{
    HostJournal::instance().clear();
    call();
    return journalTexts(HostJournal::Kind::Line);
}

using namespace HVStatDisplay;

TEST(HVStatDisplay, ShowsValuesAndListsInALine)
{
    const auto lines = linesOf([] {
        DisplayB("b", false);
        DisplayC("c", kCatVarMissing);
        DisplayC("c", kCatVarMinimum);
        DisplayC("c", static_cast<CatVarEncValue>(1));
        DisplayD("d", 0.5);
        DisplayD("d", kSystemMissing);
        DisplayI("i", -3);
        DisplayS("s", "text");
        DisplayT("t", ~0UL);
        DisplayBV("bv", {true, false});
        DisplayDV("dv", {1e20, kSystemMissing});
        DisplayNL("nl", {});
        DisplayIV("iv", {1, 2});
        DisplayIIM("iim", {{2, 3}, {1, -1}});
        DisplaySV("sv", {"a b", ""});
        DisplayVNL("vnl", {});
        DisplayVCL("vcl", {7, 8, 9}, {true, false});
        DisplayVL("vl", {0, -1});
        DisplaySL("sl", {"a"});
        DisplayVIM("vim", {{5, 0}});
    });
    EXPECT_THAT(lines,
                ElementsAre("b = false", "c = missing value for a categorical variable",
                            "c = minimum categorical variable value", "c = unrecognized", "d = 0.5",
                            "d = miss", "i = -3", "s = text", "t = 18446744073709551615",
                            "bv true false", "dv 1e+20 miss", "nl <none>", "iv 1 2",
                            "iim (1,-1) (2,3)", "sv \"a b\" \"\"", "vnl <none>",
                            "vcl 7(cat) 8(cont) 9(cont)", "vl 0 -1", "sl \"a\"", "vim (5,0)"));
}

TEST(HVStatDisplay, ShowsStructuresInLinesOfTheirParts)
{
    OBS number{2.5};
    OBS name{};
    std::memcpy(name.text, "ab      ", sizeof(name.text));
    const VEXA_Format numeric{8, kFormatNumber, 2};
    const VEXA_Format textual{8, kFormatString, 0};
    ObsVecMap map;
    map.Set({{number}, {name}}, 9);
    map.Set({{OBS{-1}}, {name}}, kSystemMissing);
    const auto lines = linesOf([&] {
        DisplayObs("null", nullptr, numeric);
        DisplayObs("text", &name, textual);
        DisplayObsVec("values", std::vector<OBS*>{&name}, textual);
        DisplayObsVec("none", std::vector<const OBS*>(), numeric);
        DisplayObsVecMapD("map", map, {numeric, textual});
        DisplaySVV("texts", {{"a"}, {}});
        DisplayIntVecDVecMap("lists", {{{1, 2}, {0.5}}});
        DisplayIntVecIntMap("counts", {{{}, 4}});
        DisplaySLDM("numbers", {{{"k"}, 1}});
        DisplayText(1, "as it is");
    });
    EXPECT_THAT(lines,
                ElementsAre("text = ab", "values", "Value in dictionary: = ab", "none",
                            "No values are specified.", "map",
                            "Map key (list of strings): \"   -1.00\" \"ab\"", "Map value = miss",
                            "Map key (list of strings): \"    2.50\" \"ab\"", "Map value = 9",
                            "texts", "vec[0] \"a\"", "vec[1] <none>", "lists", "Map key 1 2",
                            "Map value 0.5", "counts", "Map key <none>", "Map value = 4", "numbers",
                            "Map's String List: \"k\"", "Map's double = 1", "as it is"));
}

} // namespace
