#include "OutputTree.h"

#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "ChartOutput.h"
#include "ErrorText.h"
#include "FacSTDictionary.h"
#include "Journal.h"
#include "TnFront.h"
#include "VexaDataSource.h"
#include "support/OutputParts.h"
#include "support/ScratchFolder.h"

namespace {

using Heading = std::unique_ptr<TnHeading>;

class OutputTreeTest : public testing::Test
{
protected:
    void SetUp() override
    {
        OutputTree::instance().clear();
        HostJournal::instance().clear();
    }
};

// The content of the output, in one line: headings with what is under them in brackets.
std::string outline(const std::vector<OutputItem>& items)
{
    std::string line;
    for (const OutputItem& item : items) {
        line += line.empty() ? "" : " ";
        if (const auto* heading = std::get_if<std::shared_ptr<OutputHeading>>(&item))
            line += (*heading)->text.text + "(" + outline((*heading)->items) + ")";
        else if (const auto* table = std::get_if<std::shared_ptr<OutputTable>>(&item))
            line += "table:" + (*table)->title.text;
        else if (const auto* chart = std::get_if<OutputChart>(&item))
            line += "chart:" + chart->description;
        else if (const auto* view = std::get_if<OutputView>(&item))
            line += "view:" + view->path;
        else
            line += std::get<OutputMessage>(item).text;
    }
    return line;
}

std::string outline()
{
    return outline(OutputTree::instance().items());
}

// A table under a procedure of its own.
class TableTest : public OutputTreeTest
{
protected:
    void SetUp() override
    {
        OutputTreeTest::SetUp();
        table.reset(procedure.PivotTable(TnString("Title"), TnString("Kind"), true));
    }
    const OutputTable& told() const
    {
        const auto first = OutputTree::instance().procedures().front();
        return *std::get<std::shared_ptr<OutputTable>>(first->items.front());
    }
    std::string cell(const OutputCells::Address& address) const
    {
        const auto found = told().cells.at(address);
        return found ? found->content.text : "none";
    }
    // The labels on the way to each shown category.
    static std::vector<std::string> shown(const OutputDimension& dimension)
    {
        std::vector<std::string> labels;
        for (const OutputLeaf& leaf : shownLeaves(dimension)) {
            std::string path;
            for (const int node : leaf.path)
                path += "/" + dimension.nodes[static_cast<std::size_t>(node)].label.text;
            labels.push_back(path);
        }
        return labels;
    }

    TnProcedure procedure{"TABLES"};
    std::unique_ptr<TnPivotTable> table;
};

} // namespace

TEST_F(OutputTreeTest, OutputStandsInOrderAndStaysWhenItsProcedureGoes)
{
    TnError(TnString("early"), kShowInOutput, 1);
    {
        TnProcedure outer("OUTER");
        TnProcedure silent("SILENT");
        {
            TnProcedure inner("INNER");
            const Heading first(inner.Heading(TnString("H")));
            const Heading below(first->Heading(TnString("B")));
            std::unique_ptr<TnPivotTable>(below->PivotTable(TnString("t"), TnString("T"), false));
            TnError(TnString("under B"), kShowInOutput, kLevelWarning);
        }
        {
            const Heading first(outer.Heading(TnString("H")));
            TnError(TnString("m"), kShowInOutput, kLevelError);
        }
        const Heading same(outer.Heading(TnString("H")));
        std::unique_ptr<TnPivotTable>(same->PivotTable(TnString("t"), TnString("T"), false));
        std::unique_ptr<TnPivotTable>(outer.PivotTable(TnString("u"), TnString("T"), false));
        const Heading again(outer.Heading(TnString("H")));
    }
    EXPECT_EQ(outline(),
              "early OUTER(H(table:t) table:u H()) SILENT(m) INNER(H(B(table:t under B)))");
    const TnProcedure alive("ALIVE");
    OutputTree::instance().clear();
    TnError(TnString("late"), kShowInOutput, kLevelError);
    EXPECT_EQ(outline(), "ALIVE(late)");
}

TEST_F(OutputTreeTest, ChartsAndViewsStandInTheOutputOnceTheyAreSent)
{
    TnProcedure procedure("CHARTS");
    ChartString title;
    title.assignUTF8("Größe");
    xGlyph chart(procedure);
    chart.SetDescription(title);
    chart.setViZJSONTemplate(R"({"1":{}})");
    chart.setOptions("a,b");
    chart.addGeoJSON("map", "{}");
    xInteractive view(procedure);
    view.setJSONPath("x.y");
    view.setProcedureName("P");
    view.setInteractiveJSON("{}");
    EXPECT_EQ(outline(), "CHARTS()");
    view.sendInteractive();
    chart.sendChart();
    chart.sendChart();
    EXPECT_EQ(outline(), "CHARTS(view:x.y chart:Größe)");

    const auto items = OutputTree::instance().procedures().front()->items;
    EXPECT_EQ(std::get<OutputView>(items[0]).procedureName, "P");
    EXPECT_EQ(std::get<OutputView>(items[0]).json, "{}");
    const auto& sent = std::get<OutputChart>(items[1]);
    EXPECT_EQ(sent.templateJson, R"({"1":{}})");
    EXPECT_EQ(sent.options, "a,b");
    EXPECT_EQ(sent.geoJson.at(0), std::make_pair(std::string("map"), std::string("{}")));
    EXPECT_EQ(HostJournal::instance().entries(HostJournal::Kind::Output).back().text,
              "sendChart Größe");
    TN_ToFront(1, "line");
    EXPECT_EQ(HostJournal::instance().entries(HostJournal::Kind::Line).back().text, "line");
}

TEST_F(OutputTreeTest, AnnotationsOwnTheTextsThatAreLeftWithTheHost)
{
    const long number = TnUTF8String("left").Replicate();
    {
        TnHandle first(number);
        TnHandle second(-1);
        EXPECT_EQ(second.text(), nullptr);
        second = std::move(first);
        EXPECT_EQ(second.text()->text(), "left");
    }
    EXPECT_EQ(TnHandle(number).text(), nullptr);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([i] {
            for (int k = 0; k < 1000; ++k) {
                const std::string text = std::to_string(i * 1000 + k);
                EXPECT_EQ(TnHandle(TnUTF8String(text).Replicate()).text()->text(), text);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
}

TEST_F(OutputTreeTest, ValuesAndVariablesShowAsTheyAreAskedTo)
{
    VEXA_Variable sex(0);
    sex.SetName("sex");
    sex.SetFormat({8, kFormatNumber, 1});
    VEXA_ValueLabelMap labels(0);
    labels.SetLabel(1, "female");
    sex.SetValueLabels(labels);
    OBS one{};
    one.number = 1;
    OBS two{};
    two.number = 2;
    EXPECT_EQ(TnVariable(sex, TnVariable::ShowPreferred).text(), "sex");
    sex.SetLabel("Sex of person");
    EXPECT_EQ(TnVariable(sex, TnVariable::ShowPreferred).text(), "Sex of person");
    EXPECT_EQ(TnVariable(sex, TnVariable::ShowName).text(), "sex");
    EXPECT_EQ(TnDataValue(sex, &one, TnDataValue::PreferHost).text(), "female");
    EXPECT_EQ(TnDataValue(sex, &one, TnDataValue::PreferHost).content().number, std::nullopt);
    EXPECT_EQ(TnDataValue(sex, &one, TnDataValue::PreferValue).text(), "1.0");
    EXPECT_EQ(TnDataValue(sex, &two, TnDataValue::PreferLabel).content().number, 2);
    VEXA_Variable region(10);
    OBS text[2];
    std::copy_n("north           ", sizeof(text), text[0].text);
    EXPECT_EQ(TnDataValue(region, text, TnDataValue::PreferHost).text(), "north");
    EXPECT_EQ(TnNumber(0.25, TnProcedure::Percent()).text(), "0.3%");
    EXPECT_EQ(TnNumber(3.5, TnFormatSpec({40, 1, 0})).text(), "3.5");
}

TEST_F(OutputTreeTest, AStringTableOfAFileHasItsOwnWords)
{
    const ScratchFolder scratch;
    scratch.put("own.json", R"({"Mean": "Durchschnitt"})");
    scratch.put("bad.json", "[]");
    const FacSTDictionary own(scratch.folder + "\\own.json");
    EXPECT_EQ(own.LookUp("Mean"), "Durchschnitt");
    EXPECT_EQ(own.LookUp("Sum"), "Sum");
    EXPECT_THROW(FacSTDictionary(scratch.folder + "\\bad.json"), ErrorText);
    EXPECT_THROW(FacSTDictionary(scratch.folder + "\\none.json"), ErrorText);
}

TEST_F(TableTest, CellsLieWhereTheOpenCategoriesMeet)
{
    // Declared as a walk over three nested dimensions declares them, the inner ones again and
    // again.
    const Dimension rows = dimensionOf(*table, "rows", TnDimension::Row, 1);
    for (const char* row : {"r0", "r1"}) {
        rows->Category(TnString(row));
        const Dimension inner = dimensionOf(*table, "inner", TnDimension::Row, 2);
        for (const char* label : {"a", "b"}) {
            inner->Category(TnString(label));
            const Dimension columns = dimensionOf(*table, "columns", TnDimension::Column, 1);
            const Group group(columns->Group(TnString("g"), false, TnGroup::Unsorted));
            group->Category(TnString("x")).Cell(TnString(std::string(row) + label));
            if (*label == 'b')
                columns->Category(TnString("x")).Cell(number(0.5));
        }
    }
    EXPECT_EQ(told().dimensions.size(), 3U);
    EXPECT_EQ(shown(told().dimensions[2]), (std::vector<std::string>{"/g/x", "/x"}));
    EXPECT_EQ(cell({0, 0, 0}), "r0a");
    EXPECT_EQ(cell({1, 1, 0}), "r1b");
    EXPECT_EQ(cell({1, 1, 1}), "0.5");
    EXPECT_EQ(told().cells.at({1, 1, 1})->content.number, 0.5);
    EXPECT_EQ(cell({1, 0, 1}), "none");
    EXPECT_EQ(cell({2, 0, 0}), "none");
    EXPECT_EQ(told().cells.size(), 6U);
    EXPECT_EQ(dimensionsAt(told(), TnDimension::Row), (std::vector<int>{0, 1}));
    EXPECT_EQ(dimensionsAt(told(), TnDimension::Layer), std::vector<int>());
}

TEST_F(TableTest, ACellHasToBeOfEveryDimensionAndTheLastWordCounts)
{
    const Dimension rows = dimensionOf(*table, "rows", TnDimension::Row, 2);
    const Dimension columns = dimensionOf(*table, "columns", TnDimension::Column, 1);
    TnCategory row = rows->Category(TnString("r"));
    row.Cell(TnString("lost"));
    TnCategory first = columns->Category(TnString("c0"));
    TnCategory third = columns->Category(TnString("c2"));
    third.Cell(TnString("text"));
    third.Cell(number(1));
    third.CellNote(note("n"));
    first.CellNote(note("n"));
    row.Cell(number(2));
    EXPECT_EQ(cell({0, 1}), "2");
    EXPECT_EQ(told().cells.at({0, 1})->notes, std::vector<int>{0});
    EXPECT_EQ(told().cells.at({0, 0})->content.text, "");
    EXPECT_EQ(told().cells.at({0, 0})->notes, std::vector<int>{0});
    EXPECT_EQ(told().cells.size(), 1U);
    // A new dimension follows the rows that are there, and its cells are yet to come.
    const Dimension late(table->Dimension(TnString("late"), TnPivotTable::Unsorted));
    EXPECT_EQ(dimensionsAt(told(), TnDimension::Row), (std::vector<int>{0, 2}));
    late->Category(TnString("l")).Cell(number(3));
    EXPECT_EQ(cell({0, 1, 0}), "3");
    EXPECT_EQ(told().cells.size(), 1U);
    // Only equal contents are shared.
    late->Category(TnString("m")).Cell(TnUTF8String("key", "text", "one"));
    late->Category(TnString("n")).Cell(TnUTF8String("key", "text", "two"));
    EXPECT_EQ(told().cells.at({0, 1, 2})->content.helpId, "two");
}

// As a walk over nested dimensions declares them; the label of a value and of a sum may be equal.
TEST_F(TableTest, CategoriesOfOneDeclarationWithEqualTextAreDifferentCategories)
{
    const Dimension rows = dimensionOf(*table, "rows", TnDimension::Row);
    const auto fill = [&](const std::string& row) {
        const Dimension columns = dimensionOf(*table, "columns", TnDimension::Column);
        for (const char* cell : {"1", "2"}) {
            const Group group(columns->Group(TnString("g"), true, TnGroup::Unsorted));
            for (const char* again : {"x", "y"})
                group->Category(TnString("c")).Cell(TnString(row + cell + again));
        }
        columns->Category(TnString("c")).Cell(TnString(row));
    };
    for (const char* row : {"a", "b", "c"}) {
        rows->Category(TnString(*row == 'b' ? "other" : "Total"));
        fill(row);
    }
    EXPECT_EQ(shown(told().dimensions[0]),
              (std::vector<std::string>{"/Total", "/other", "/Total"}));
    EXPECT_EQ(shown(told().dimensions[1]),
              (std::vector<std::string>{"/g/c", "/g/c", "/g/c", "/g/c", "/c"}));
    EXPECT_EQ(cell({0, 0}), "a1x");
    EXPECT_EQ(cell({1, 1}), "b1y");
    EXPECT_EQ(cell({2, 2}), "c2x");
    EXPECT_EQ(cell({2, 4}), "c");
    // A later declaration of the rows means the same ones.
    const Dimension again(table->Dimension(TnString("rows"), TnPivotTable::Unsorted));
    EXPECT_EQ(told().dimensions.size(), 2U);
    again->Category(TnString("Total"));
    again->Category(TnString("Total"));
    fill("d");
    EXPECT_EQ(told().dimensions[0].leafCount, 3);
    EXPECT_EQ(cell({2, 0}), "d1x");
}

TEST_F(TableTest, DimensionsOfOneNameAreTwoWhereOneIsDeclaredInsideTheOther)
{
    // The first cells are empty, so nothing is told before the outer dimension goes on.
    const Dimension outer = dimensionOf(*table, "same", TnDimension::Row);
    for (const char* row : {"r0", "r1"}) {
        outer->Category(TnString(row));
        const Dimension middle = dimensionOf(*table, "same", TnDimension::Row, 2);
        for (const char* label : {"m0", "m1"}) {
            middle->Category(TnString(label));
            const Dimension inner = dimensionOf(*table, "same", TnDimension::Column);
            TnCategory leaf = inner->Category(TnString("c"));
            if (*row == 'r' && row[1] == '1')
                leaf.Cell(TnString(label));
        }
    }
    ASSERT_EQ(told().dimensions.size(), 3U);
    EXPECT_EQ(cell({1, 0, 0}), "m0");
    EXPECT_EQ(cell({1, 1, 0}), "m1");

    // Declared side by side, they are one by the contract.
    const Table flat(procedure.PivotTable(TnString("flat"), TnString("Kind"), false));
    const Dimension rows = dimensionOf(*flat, "one", TnDimension::Row);
    const Dimension same = dimensionOf(*flat, "one", TnDimension::Row);
    rows->Category(TnString("r")).Cell(number(1));
    same->Category(TnString("r")).Cell(number(2));
    const auto& items = OutputTree::instance().procedures().front()->items;
    const auto& node = *std::get<std::shared_ptr<OutputTable>>(items.back());
    EXPECT_EQ(node.dimensions.size(), 1U);
}

TEST_F(TableTest, FootnotesOfEqualTextAreOneAndStandOnce)
{
    const Dimension rows = dimensionOf(*table, "rows", TnDimension::Row, 1);
    const Group group(rows->Group(TnString("g"), true, TnGroup::Unsorted));
    for (int again = 0; again < 2; ++again) {
        table->Note(note("one"));
        rows->Note(note("two"));
        group->Note(note("one"));
        group->Category(TnString("c")).Note(note("three", true));
    }
    table->Note({TnHandle(-1), TnHandle(-1), false});
    table->CaptionNote(
        {TnHandle(TnString("two").Replicate()), TnHandle(TnString("*").Replicate()), false});
    const OutputDimension& dimension = told().dimensions.front();
    EXPECT_EQ(told().titleNotes, std::vector<int>{0});
    EXPECT_EQ(dimension.notes, std::vector<int>{1});
    EXPECT_EQ(dimension.nodes[1].notes, std::vector<int>{0});
    EXPECT_EQ(dimension.nodes[2].notes, std::vector<int>{2});
    EXPECT_EQ(told().captionNotes, std::vector<int>{1});
    ASSERT_EQ(told().notes.size(), 3U);
    EXPECT_TRUE(told().notes[2].keepsMarker);
}

TEST_F(TableTest, CategoriesAreSortedAndHiddenWhenShown)
{
    const Dimension rows =
        dimensionOf(*table, "rows", TnDimension::Row, 1, TnPivotTable::Descending);
    const Group group(rows->Group(TnString("Mitte"), true, TnGroup::Ascending));
    for (const char* label : {"Zebra", "Öl", "apfel", "Ofen"})
        group->Category(TnString(label));
    group->Category(number(10));
    group->Category(number(9));
    rows->Category(TnString("Zuletzt"));
    rows->Category(TnString("hidden")).hide();
    EXPECT_EQ(shown(told().dimensions[0]),
              (std::vector<std::string>{"/Zuletzt", "/Mitte/9", "/Mitte/10", "/Mitte/apfel",
                                        "/Mitte/Ofen", "/Mitte/Öl", "/Mitte/Zebra"}));

    const Dimension single = dimensionOf(*table, "single", TnDimension::Column, 1);
    single->Category(TnString("only")).hide();
    EXPECT_EQ(shown(told().dimensions[1]).size(), 0U);
    single->Position(TnDimension::Column, 1, true, true);
    EXPECT_EQ(shown(told().dimensions[1]), std::vector<std::string>{"/only"});
}

TEST_F(TableTest, ATableKnowsWhatIsSaidOfItAndItsSplitGroup)
{
    ProcedureDataSource source;
    source.SetColumns({"sex"});
    source.SetSplitVars({0});
    source.SetSplitValues({"f"});
    TnProcedure split("SPLIT", &source);
    const std::unique_ptr<TnPivotTable> of(
        split.PivotTable(TnUTF8String("key", "Title"), TnString("Kind"), true));
    of->HideTitle();
    of->Caption(TnString("first"));
    of->Caption(TnString("caption"));
    of->CornerText(TnString("corner"));
    of->MaxDataColumnWidth(260);
    const auto& node = *std::get<std::shared_ptr<OutputTable>>(split.node()->items.front());
    EXPECT_EQ(node.title.key, "key");
    EXPECT_EQ(node.subtype.text, "Kind");
    EXPECT_TRUE(node.hidesTitle);
    EXPECT_EQ(node.caption->text, "caption");
    EXPECT_EQ(node.cornerText->text, "corner");
    EXPECT_EQ(node.maxDataColumnWidth, 260);
    EXPECT_EQ(node.minDataColumnWidth, std::nullopt);
    EXPECT_EQ(node.splitGroup.at(0), std::make_pair(std::string("sex"), std::string("f")));
}

TEST_F(TableTest, AHeadingThatOutlivesItsProcedureAsksItNothing)
{
    std::unique_ptr<TnHeading> heading;
    {
        ProcedureDataSource source;
        source.SetColumns({"sex"});
        source.SetSplitVars({0});
        source.SetSplitValues({"f"});
        TnProcedure split("SPLIT", &source);
        heading.reset(split.Heading(TnString("Heading")));
    }
    const std::unique_ptr<TnPivotTable> pivot(
        heading->PivotTable(TnString("Title"), TnString("Kind"), true));
    const auto& node = *std::get<std::shared_ptr<OutputTable>>(heading->node()->items.front());
    EXPECT_TRUE(node.splitGroup.empty());
}
