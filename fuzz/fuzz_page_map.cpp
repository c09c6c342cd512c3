#include <cstddef>
#include <cstdint>
#include <string>

#include "ChartOutput.h"
#include "InputParts.h"
#include "OutputTree.h"
#include "ScratchFolder.h"
#include "TnOutput.h"
#include "report/page/OutputPage.h"
#include "report/text/OutputText.h"

#include <sstream>

/// Shows a map with any text as its definition and any text as its GeoJSON, as a page and as text.
/// No mark-up of the data may get into the page.
namespace {

std::size_t count(const std::string& text, std::string_view word)
{
    std::size_t found = 0;
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1))
        ++found;
    return found;
}

void show(const std::string& specification, const std::string& geoJson)
{
    TnProcedure procedure("MAPS");
    xGlyph chart(procedure);
    chart.setViZJSONTemplate(R"({"1":)" + specification + "}");
    chart.addGeoJSON("land", geoJson);
    chart.sendChart();
    const std::string page = OutputPage(*procedure.node()).text();
    require(count(page, "<script") == count(page, "</script>"));
    require(count(page, "<hostile") == 0);
    std::ostringstream text;
    writeOutputText(*procedure.node(), {}, text);
    require(count(text.str(), "\x1b") == 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::vector<std::string> parts = partsOf(textOf(data, size), 2);
    show(parts.front(), parts.size() > 1 ? parts[1] : std::string());
    OutputTree::instance().clear();
    return 0;
}
