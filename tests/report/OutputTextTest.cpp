#include "report/text/OutputText.h"

#include <memory>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "ChartOutput.h"
#include "VexaCases.h"
#include "report/text/TerminalText.h"
#include "report/text/TextGrid.h"
#include "support/OutputParts.h"

namespace {

TnNumber fixed(double value)
{
    return number(value, kFormatNumber, 1);
}

/// The text under the heading of a procedure, with a line end before it.
std::string textOf(const TnHeading& heading, std::size_t width = 80)
{
    std::ostringstream out;
    writeOutputText(*heading.node(), {width, false, 2}, out);
    return out.str().substr(out.str().find("\n\n") + 1);
}

/// Statistics of places, in groups of both, in two years.
void tellTable(TnHeading& heading)
{
    const Table table(heading.PivotTable(TnUTF8String("Weather"), TnString("W"), false));
    table->CornerText(TnUTF8String("corner"));
    table->Caption(TnUTF8String("Two\nlines"));
    table->Note(note("of all days"));
    const Dimension layers = dimensionOf(*table, "Year", TnDimension::Layer);
    const Dimension rows = dimensionOf(*table, "Place", TnDimension::Row);
    const Dimension columns = dimensionOf(*table, "Statistic", TnDimension::Column);
    const Group north(rows->Group(TnString("North"), true, TnGroup::Unsorted));
    const Group wind(columns->Group(TnString("Wind"), true, TnGroup::Unsorted));
    const auto tell = [&](double value) {
        wind->Category(TnString("Mean")).Cell(fixed(value / 2));
        wind->Category(TnString("Kind")).Cell(TnUTF8String(value < 9 ? "calm\\nstorm" : "calm"));
        columns->Category(TnString("N")).Cell(fixed(value));
        if (value == 1)
            columns->Category(TnString("N")).CellNote(note("few"));
    };
    layers->Category(TnString("2011"));
    north->Category(TnUTF8String("Åre"));
    tell(1);
    north->Category(TnUTF8String("Øye"));
    tell(100);
    layers->Category(TnString("2012"));
    rows->Category(TnString("All"));
    tell(101);
}

} // namespace

TEST(OutputText, PartsMakeUpTheWhole)
{
    TnProcedure procedure("TEST");
    tellTable(procedure);
    for (const char* name : {"first", "second"}) {
        const std::unique_ptr<TnHeading> heading(procedure.Heading(TnUTF8String(name)));
        tellTable(*heading);
        const std::unique_ptr<TnHeading> inner(heading->Heading(TnUTF8String("inner")));
        tellTable(*inner);
    }
    const OutputTextOptions options{40, true};
    std::ostringstream whole;
    writeOutputText(*procedure.node(), options, whole);
    OutputHeading begin = *procedure.node();
    std::ostringstream parts;
    while (begin.items.size() > 1)
        begin.items.pop_back();
    writeOutputText(begin, options, parts);
    for (std::size_t i = 1; i < procedure.node()->items.size(); ++i)
        writeFurtherOutputText({procedure.node()->items[i]}, options, parts);
    EXPECT_EQ(parts.str(), whole.str());
}

TEST(OutputText, ATableHasItsHeadersLayersAndNotes)
{
    TnProcedure procedure("TEST");
    tellTable(procedure);
    EXPECT_EQ(textOf(procedure), R"(
Weather[a]
Year: 2011
┌─────────────┬─────────────────────────┐
│             │        Statistic        │
│             ├──────────────┬──────────┤
│ corner      │     Wind     │          │
├─────────────┼──────┬───────┤          │
│ Place       │ Mean │ Kind  │        N │
├───────┬─────┼──────┼───────┼──────────┤
│ North │ Åre │  0.5 │ calm  │   1.0[b] │
│       │     │      │ storm │          │
│       │ Øye │ 50.0 │ calm  │ 100.0    │
├───────┼─────┼──────┼───────┼──────────┤
│ All   │     │      │       │          │
└───────┴─────┴──────┴───────┴──────────┘

Year: 2012
┌─────────────┬─────────────────────┐
│             │      Statistic      │
│             ├─────────────┬───────┤
│ corner      │    Wind     │       │
├─────────────┼──────┬──────┤       │
│ Place       │ Mean │ Kind │     N │
├───────┬─────┼──────┼──────┼───────┤
│ North │ Åre │      │      │       │
│       │ Øye │      │      │       │
├───────┼─────┼──────┼──────┼───────┤
│ All   │     │ 50.5 │ calm │ 101.0 │
└───────┴─────┴──────┴──────┴───────┘
Two
lines
[a] of all days
[b] few
)");
    // Where the width ends, the table goes on below, with its row labels.
    EXPECT_NE(textOf(procedure, 27).find(R"(
│ corner      │   Wind    │
├─────────────┼───────────┤
│ Place       │      Mean │
├───────┬─────┼───────────┤
│ North │ Åre │       0.5 │
│       │ Øye │      50.0 │
├───────┼─────┼───────────┤
│ All   │     │           │
└───────┴─────┴───────────┘
┌─────────────┬───────────┐
│             │ Statistic │
)"),
              std::string::npos)
        << textOf(procedure, 27);
}

TEST(OutputText, NamesLabelsAndDimensionsMayBeHidden)
{
    TnProcedure procedure("TEST");
    const Table table(procedure.PivotTable(TnString("T"), TnString("W"), false));
    table->HideTitle();
    const Dimension rows = dimensionOf(*table, "rows", TnDimension::Row);
    const Dimension columns = dimensionOf(*table, "columns", TnDimension::Column);
    const Group bare(rows->Group(TnString("no label"), false, TnGroup::Unsorted));
    bare->Category(TnString("a"));
    columns->Category(TnString("c")).Cell(fixed(1));
    columns->Category(TnString("hidden")).Cell(fixed(9));
    columns->Category(TnString("hidden")).hide();
    bare->Category(TnString("b"));
    columns->Category(TnString("c")).Cell(fixed(2));
    columns->Position(TnDimension::Column, 1, true, false);
    EXPECT_EQ(textOf(procedure), R"(
┌──────┬─────┐
│ rows │   c │
├──────┼─────┤
│ a    │ 1.0 │
│ b    │ 2.0 │
└──────┴─────┘
)");
    rows->Position(TnDimension::Row, 1, true, true);
    columns->Position(TnDimension::Column, 1, true, true);
    EXPECT_EQ(textOf(procedure), "\n┌─────┐\n│ 1.0 │\n│ 2.0 │\n└─────┘\n");
    rows->Position(TnDimension::Row, 1, false, true);
    EXPECT_EQ(textOf(procedure), "\n┌──────┬─────┐\n│ rows │ 1.0 │\n│      │ 2.0 │\n"
                                 "└──────┴─────┘\n");
}

TEST(OutputText, DecimalSignsStandBelowEachOther)
{
    TnProcedure procedure("TEST");
    const Table table(procedure.PivotTable(TnString("T"), TnString("W"), false));
    const Dimension rows = dimensionOf(*table, "r", TnDimension::Row);
    const Dimension columns = dimensionOf(*table, "c", TnDimension::Column);
    for (const TnNumber& value :
         {number(5), number(-17.25), number(1234, kFormatComma, 0), number(2.5, kFormatPercent, 1),
          number(1e99), number(kSystemMissing), number(1, kFormatDateYearFirst)}) {
        rows->Category(value);
        columns->Category(TnString("v")).Cell(value);
        if (value.value() == 5)
            columns->Category(TnString("v")).CellNote(note("n"));
    }
    EXPECT_NE(textOf(procedure).find(R"(
│ 5          │       5[a]    │
│ -17.25     │     -17.25    │
│ 1,234      │   1,234       │
│ 2.5%       │       2.5%    │
│ 1E+99      │      1E+99    │
│ .          │       .       │
│ 1582-10-14 │ 1582-10-14    │
)"),
              std::string::npos)
        << textOf(procedure);
}

TEST(OutputText, HeadingsAndMessagesStandInOrder)
{
    TnProcedure procedure("RUN");
    const std::unique_ptr<TnHeading> model(procedure.Heading(TnString("Model")));
    TnError(TnString("for the log"), kShowInOutput, 0);
    TnError(TnString("a line that is longer than the page"), kShowInOutput, kLevelWarning);
    const std::unique_ptr<TnHeading> fit(model->Heading(TnString("Fit")));
    TnError(TnString("bad"), kShowInOutput, 9);
    std::ostringstream out;
    writeOutputText(*procedure.node(), {30, true, 2}, out);
    EXPECT_EQ(out.str(), "\x1b[1mRUN\x1b[0m\n═══\n\n\x1b[1mModel\x1b[0m\n─────\n\n"
                         "\x1b[33mWarning: a line that is longer\x1b[0m\n"
                         "\x1b[33m         than the page\x1b[0m\n\n"
                         "\x1b[1m› Fit\x1b[0m\n\n\x1b[31mCatastrophic Error: bad\x1b[0m\n");
}

TEST(OutputText, AChartShowsItsData)
{
    const std::pair<const char*, const char*> cases[] = {
        // A histogram, with a label of the data model and a field name that has to be escaped.
        {R"({"title":"Ages","description":"of people","mark":{"type":"bar"},"data":{"values":[
            {"from":0,"to":10,"n.1":8},{"from":10,"to":20,"n.1":1},{"from":20,"to":30,"n.1":-4}]},
            "encoding":{"x":{"field":"from","bin":{"binned":true},"type":"quantitative",
            "title":"Age"},"x2":{"field":"to"},"y":{"field":"n\\.1","type":"quantitative"}}})",
         R"(
Chart
Ages
of people
┌─────────┬───────┬──────────────────────┐
│     Age │ Count │                      │
├─────────┼───────┼──────────────────────┤
│  0 – 10 │     8 │ ████████████████████ │
│ 10 – 20 │     1 │ ██▌                  │
└─────────┴───────┴──────────────────────┘
… Further rows: 1
)"},
        // What is worked out while it is drawn has no bars; layers share data.
        {R"({"data":{"name":"d"},"datasets":{"d":[{"a":"x","b":0.125}]},"layer":[{"mark":"bar",
            "encoding":{"x":{"field":"a"},"y":{"field":"b","type":"quantitative",
            "aggregate":"mean"}}},{"mark":"rule","encoding":{"y":{"field":"b"}}}]})",
         "\nChart\n┌───┬───────┐\n│ a │     b │\n├───┼───────┤\n│ x │ 0.125 │\n└───┴───────┘\n"
         "┌───────┐\n│     b │\n├───────┤\n│ 0.125 │\n└───────┘\n"},
        // A channel that goes on from one that goes on itself.
        {R"({"mark":"bar","data":{"values":[{"a":1,"b":2,"c":3}]},"encoding":{"x":{"field":"a"},
            "x2":{"field":"b"},"x22":{"field":"c"}}})",
         "\nChart\n┌───────┐\n│     a │\n├───────┤\n│ 1 – 2 │\n└───────┘\n"},
        {R"({"mark":"bar","data":{"url":"far.csv"}})", "\nChart\n"},
        {"3", "\nChart\nThis chart cannot be drawn.\n"},
        {"{", "\nChart\nThis chart cannot be drawn.\n"},
    };
    for (const auto& [specification, text] : cases) {
        TnProcedure procedure("TEST");
        xGlyph chart(procedure);
        ChartString title;
        title.assign("Chart");
        chart.SetDescription(title);
        chart.setViZJSONTemplate(R"({"0":{"fields":[{"id":"n.1","label":"Count"}]},"1":)" +
                                 std::string(specification) + "}");
        chart.sendChart();
        EXPECT_EQ(textOf(procedure, 60), text);
    }
}

TEST(OutputText, BarsBelowZeroGoTheOtherWay)
{
    TnProcedure procedure("TEST");
    xGlyph chart(procedure);
    chart.setViZJSONTemplate(R"({"1":{"mark":"bar","data":{"values":[{"a":1e308},{"a":-1e308}]},
        "encoding":{"x":{"field":"a","type":"quantitative"}}}})");
    chart.sendChart();
    EXPECT_NE(textOf(procedure, 30).find("│  1e+308 │      █████ │\n│ -1e+308 │ █████      │"),
              std::string::npos)
        << textOf(procedure, 30);
}

TEST(OutputText, AViewShowsWhatItHolds)
{
    TnProcedure procedure("TEST");
    xInteractive view(procedure);
    view.setProcedureName("tcm");
    view.setJSONPath("a.b");
    view.setInteractiveJSON(
        R"({"0":{"fields":[]},"1":{"list":[1,null,"x"],"of":[{"k":true},{"n":2}],)"
        R"("empty":{}},"3":)" +
        std::string(30000, '[') + std::string(30000, ']') + "}");
    view.sendInteractive();
    EXPECT_TRUE(
        textOf(procedure).starts_with("\ntcm, a.b\n1:\n  list: [1, null, x]\n  of:\n"
                                      "┌──────┬───┐\n│ k    │ n │\n├──────┼───┤\n│ true │   │\n"
                                      "│      │ 2 │\n└──────┴───┘\n  empty: {}\n3:\n"
                                      "  1:\n    1:\n"))
        << textOf(procedure);
}

TEST(TerminalText, NothingOfADataTextCommandsTheTerminal)
{
    // The last one is cut to four places.
    const std::tuple<std::string, const char*, std::size_t, const char*> cases[] = {
        {"plain", "plain", 5, "pla…"},
        {"a\x1b[31m", "a�[31m", 6, "a�[…"},
        {std::string("a\0b", 3), "a�b", 3, "a�b"},
        {"tab\tx", "tab x", 5, "tab…"},
        {"\xff\xc2", "��", 2, "��"},
        {"x\u202e\u2069y\u2028", "x��y�", 5, "x��…"},
        {"日本語", "日本語", 6, "日…"},
        {"e\u0301e\u0301e\u0301e\u0301e", "e\u0301e\u0301e\u0301e\u0301e", 5,
         "e\u0301e\u0301e\u0301…"},
        {"🇩🇪👩‍👩‍👧x", "🇩🇪👩‍👩‍👧x", 5, "🇩🇪…"},
        {"", "", 0, ""},
    };
    for (const auto& [text, shown, width, cut] : cases) {
        const std::string made = terminalText(text);
        EXPECT_EQ(made, shown);
        EXPECT_EQ(terminalWidth(made), width) << made;
        EXPECT_EQ(terminalCut(made, 4), cut);
    }
    EXPECT_EQ(terminalIsolated("a"), "a");
    EXPECT_EQ(terminalIsolated("aש"), "\u2068aש\u2069");
}

TEST(TerminalText, LinesBreakWhereTheyMay)
{
    using Lines = std::vector<std::string>;
    EXPECT_EQ(terminalWrapped("one two  three\r\n\nfour", 8),
              (Lines{"one two", "three", "", "four"}));
    EXPECT_EQ(terminalWrapped("abcdefghij kl", 4), (Lines{"abcd", "efgh", "ij", "kl"}));
    EXPECT_EQ(terminalWrapped("日本語です", 5), (Lines{"日本", "語で", "す"}));
    EXPECT_EQ(terminalWrapped("", 5), Lines{""});
}

TEST(TextGrid, KeysTakeLinesBeforeValuesAreLost)
{
    TextGrid grid;
    grid.keyCount = 1;
    grid.columns.resize(3);
    grid.headerRows = 1;
    grid.header = {{"key", {}, 0, 0}, {"first", {}, 0, 1}, {"second", {}, 0, 2}};
    grid.rowCount = 1;
    grid.cell = [](std::size_t, std::size_t column) {
        return column == 0 ? TextGrid::Cell{"a very long key שלום", "[a]", false}
                           : TextGrid::Cell{"12345678901234", {}, true};
    };
    std::ostringstream out;
    drawTextGrid(grid, 24, out);
    const std::string keys = "├────────┼────────────────┤\n│ a      │ 12345678901234 │\n"
                             "│ ver    │                │\n│ y      │                │\n"
                             "│ lon    │                │\n│ g      │                │\n"
                             "│ ke…[a] │                │\n└────────┴────────────────┘\n";
    EXPECT_EQ(out.str(), "┌────────┬────────────────┐\n│ key    │          first │\n" + keys +
                             "┌────────┬────────────────┐\n│ key    │         second │\n" + keys);
}
