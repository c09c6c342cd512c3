#include "OutputText.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "ChartOutput.h"
#include "TerminalText.h"
#include "TextGrid.h"
#include "TnOutput.h"

namespace {

using Dimension = std::unique_ptr<TnDimension>;
using Group = std::unique_ptr<TnGroup>;

TnAnnotation note(const std::string& text)
{
    return {TnHandle(TnUTF8String(text).Replicate()), TnHandle(-1), false};
}

TnNumber fixed(double value)
{
    return {value, TnFormatSpec({40, kFormatNumber, 1})};
}

std::string textOf(const TnHeading& heading, std::size_t width = 80, bool colours = false)
{
    std::ostringstream out;
    writeOutputText(*heading.node(), {width, colours, 3}, out);
    return "\n" + out.str();
}

/// A table of places (rows), statistics in two groups (columns) and sexes (layers).
void tellTable(TnHeading& heading)
{
    const std::unique_ptr<TnPivotTable> table(
        heading.PivotTable(TnUTF8String("Weather"), TnString("W"), false));
    table->CornerText(TnUTF8String("corner"));
    table->Caption(TnUTF8String("Two\nlines"));
    table->Note(note("of all days"));
    const Dimension layers(table->Dimension(TnString("Year"), TnPivotTable::Unsorted));
    layers->Position(TnDimension::Layer, 1, false, false);
    const Dimension rows(table->Dimension(TnString("Place"), TnPivotTable::Unsorted));
    rows->Position(TnDimension::Row, 1, false, false);
    const Dimension columns(table->Dimension(TnString("Statistic"), TnPivotTable::Unsorted));
    columns->Position(TnDimension::Column, 1, false, false);
    const Group north(rows->Group(TnString("North"), true, TnGroup::Unsorted));
    const Group wind(columns->Group(TnString("Wind"), true, TnGroup::Unsorted));
    for (const char* year : {"2011", "2012"}) {
        layers->Category(TnString(year));
        const auto columnsOf = [&](double value) {
            TnCategory count = columns->Category(TnString("N"));
            count.Cell(fixed(value));
            wind->Category(TnString("Mean")).Cell(fixed(value / 2));
            TnCategory most = wind->Category(TnString("Most"));
            most.Cell(TnUTF8String("calm\\nstorm"));
            if (value == 1)
                count.CellNote(note("few"));
        };
        north->Category(TnUTF8String("Åre"));
        columnsOf(1);
        north->Category(TnUTF8String("Øye"));
        columnsOf(100);
        rows->Category(TnString("All"));
        columnsOf(101);
    }
}

} // namespace

TEST(OutputText, TablesAreDrawn)
{
    TnProcedure procedure("TEST");
    tellTable(procedure);
    EXPECT_EQ(textOf(procedure, 80), "");
    EXPECT_EQ(textOf(procedure, 36), "");
}
