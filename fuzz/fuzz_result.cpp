
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "JNIException.h"
#include "OutputTree.h"
#include "ScratchFolder.h"
#include "TnOutput.h"
#include "VexaDataSource.h"
#include "bridge/JNIObjectManager.h"
#include "bridge/JsonImage.h"
#include "render/DimensionReader.h"
#include "render/jsonToTarn.h"

/// Any text as a result document: its table, its chart and its map are shown, whatever they are.
namespace {

/// Variables that texts of a result can name.
class Variables : public VEXA_DataSource
{
public:
    Variables()
    {
        VEXA_ValueLabelMap labels;
        labels.SetLabel(1.0, "one");
        add("age", 0, {8, kFormatNumber, 0}).SetValueLabels(labels);
        add("day", 0, {11, kFormatDateYearFirst, 0}).SetLabel("The day");
        add("town", 10, {10, kFormatString, 0});
    }
    int ColumnCount() const override { return static_cast<int>(_list.size()); }
    const VEXA_Variable& GetVariable(int column) const override
    {
        return _list.at(static_cast<std::size_t>(column));
    }
    int GetWeightVarIndex() const override { return -1; }
    int GetNSplitVars() const override { return 0; }
    int GetSplitVarIndex(int) const override { return -1; }
    VEXA_InputCaseIterator* MakeIterator(ErrorMonitor*) const override { return nullptr; }

private:
    VEXA_Variable& add(const std::string& name, int type, const VEXA_Format& format)
    {
        VEXA_Variable& variable = _list.emplace_back(type);
        variable.SetName(name);
        variable.SetFormat(format);
        return variable;
    }
    std::vector<VEXA_Variable> _list;
};

std::vector<OutputOrder> orders()
{
    using Type = OutputOrder::Type;
    std::vector<OutputOrder> list;
    for (const Type type : {Type::Pivot, Type::Chart, Type::MapChart, Type::Interactive}) {
        const std::string place = type == Type::Pivot ? "table" : "chart";
        list.emplace_back("Heading." + place, std::vector<std::string>{place}, type, "Title",
                          "Type");
    }
    list.back().addLocation("table.dimensions").addLocation("");
    OutputOrder filtered = list.front();
    filtered.setOutlineTitle("Title", false).addTextToCaption("Caption");
    filtered.hideCategories({"b"}, true);
    for (const char* category : {"a", "b", "g"})
        filtered.hideAllCategoriesExcept(category, true);
    filtered.hideAllCategoriesExcept("x", false);
    list.push_back(filtered);
    return list;
}

/// A table is declared as often as it has cells, and that may be beyond all bounds.
bool isSmall(const std::string& text)
{
    constexpr std::uint64_t kMostCells = 2000;
    JNIJSONObject document(text.c_str());
    if (!document.isGood())
        return true;
    std::vector<std::uint64_t> counts;
    try {
        const JsonImage image = JsonImage::of(document, document.getTop());
        counts = DimensionReader::leafCounts(image.root()["r"]["table"]["dimensions"]);
    } catch (const JNIException&) { // nested too deeply
    }
    for (std::uint64_t& count : counts)
        count = std::max<std::uint64_t>(count, 1);
    return KeyLayout(counts).cellCount() <= kMostCells;
}

/// What is found in a document must be shown, and what cannot be read must be reported.
void renderReadable(const std::string& text, TnProcedure& procedure,
                    const ProcedureDataSource& source)
{
    static FacSTDictionary strings;
    static const std::vector<OutputOrder> kOrders = orders();
    jsonToTarn output(&procedure, &source, strings, text);
    output.setGeoJSONMap({{"m", text}});
    for (const OutputOrder& order : kOrders)
        output.addObjectToOutput(order);
    const bool isGood = output.getTop().isGood();
    const bool isDone = output.generateOutput("r");
    require(isGood || !isDone);
    require(OutputTree::instance().procedures().front()->items.empty() == (isGood && !isDone));
    output.hasItem("r.table.title");
    output.hasItemContent("r.table.cells");
    output.hasGeoJSONMapFeatures("");
}

void render(const std::string& text, TnProcedure& procedure, const ProcedureDataSource& source)
{
    try {
        renderReadable(text, procedure, source);
    } catch (const JNIException&) { // the data model or the messages are nested too deeply
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const Variables kVariables;
    const std::string text(reinterpret_cast<const char*>(data), size);
    JNIObjectManager& manager = *JNIObjectManager::getManager();
    if (isSmall(text)) {
        ProcedureDataSource source;
        source.SetDataset(&kVariables);
        TnProcedure procedure("Procedure", &source);
        render(text, procedure, source);
    }
    manager.cleanJRef();
    OutputTree::instance().clear();
    require(manager.getEnv()->ExceptionCheck() == JNI_FALSE);
    return 0;
}
