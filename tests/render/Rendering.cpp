#include "render/Rendering.h"

#include <algorithm>
#include <sstream>

namespace {

class Writer
{
public:
    std::string text() const { return _out.str(); }
    void write(const OutputItem& item, const std::string& indent)
    {
        _indent = indent;
        std::visit([this](const auto& part) { this->part(part); }, item);
    }

private:
    void part(const std::shared_ptr<OutputHeading>& heading)
    {
        line("heading " + heading->text.text);
        const std::string indent = _indent;
        for (const OutputItem& item : heading->items)
            write(item, indent + " ");
    }

    void part(const OutputMessage& message)
    {
        line("message " + std::to_string(message.level) + " " + message.text);
    }

    void part(const OutputChart& chart)
    {
        line("chart " + chart.description + " {" + chart.options + "} " + chart.templateJson +
             geo(chart));
    }

    void part(const OutputView& view)
    {
        line("view " + view.description + " {" + view.options + "} " + view.procedureName + ":" +
             view.path + " " + view.json + geo(view));
    }

    static std::string geo(const OutputDocument& document)
    {
        std::string text;
        for (const auto& [name, json] : document.geoJson)
            text += " " + name + "~" + json;
        return text;
    }

    void part(const std::shared_ptr<OutputTable>& table)
    {
        _table = table.get();
        line("table " + hidden(table->hidesTitle) + table->title.text + notes(table->titleNotes) +
             " [" + table->subtype.text + "] " + width(table->minDataColumnWidth) + ".." +
             width(table->maxDataColumnWidth));
        if (table->caption)
            line("caption " + table->caption->text + notes(table->captionNotes));
        if (table->cornerText)
            line("corner " + table->cornerText->text);
        for (const OutputDimension& dimension : table->dimensions)
            this->dimension(dimension);
        std::vector<int> address;
        cells(address, "");
    }

    static std::string width(const std::optional<int>& points)
    {
        return points ? std::to_string(*points) : "";
    }

    void dimension(const OutputDimension& dimension)
    {
        static constexpr const char* kPlaces[] = {"row", "column", "layer"};
        static constexpr const char* kSorts[] = {"<", ">", ""};
        line(std::string(kPlaces[dimension.place]) + std::to_string(dimension.position) +
             kSorts[dimension.sort] + " " + hidden(dimension.hidesName) + dimension.name.text +
             notes(dimension.notes) + (dimension.hidesChildren ? ":-" : ":") +
             children(dimension, dimension.nodes.front()));
    }

    std::string children(const OutputDimension& dimension, const OutputCategory& group)
    {
        static constexpr const char* kSorts[] = {"<", ">", ""};
        std::string text;
        for (const int child : group.children) {
            const OutputCategory& node = dimension.nodes[static_cast<std::size_t>(child)];
            text += " " + hidden(!node.isShown) + node.label.text + notes(node.notes);
            if (node.isGroup)
                text += std::string(kSorts[node.sort]) + "(" + children(dimension, node).substr(1) +
                        ")";
        }
        return text.empty() ? " " : text;
    }

    void cells(std::vector<int>& address, const std::string& path)
    {
        if (address.size() == _table->dimensions.size()) {
            if (const auto cell = _table->cells.at(address))
                line(path + "=" + cellText(cell->content) + notes(cell->notes));
            return;
        }
        const OutputDimension& dimension = _table->dimensions[address.size()];
        for (int leaf = 0; leaf < dimension.leafCount; ++leaf) {
            const auto node = std::find_if(dimension.nodes.begin(), dimension.nodes.end(),
                                           [&](const auto& n) { return n.leaf == leaf; });
            address.push_back(leaf);
            cells(address, path + (path.empty() ? "" : "/") + node->label.text);
            address.pop_back();
        }
    }

    static std::string cellText(const TnContent& content)
    {
        if (!content.number)
            return content.text;
        std::ostringstream text;
        text.precision(15);
        text << *content.number << ":" << int{content.format.type} << "."
             << int{content.format.decimals};
        return text.str();
    }

    static std::string hidden(bool isHidden) { return isHidden ? "-" : ""; }

    std::string notes(const std::vector<int>& list) const
    {
        std::string text;
        for (const int note : list)
            text += "^" + _table->notes[static_cast<std::size_t>(note)].text.text;
        return text;
    }

    void line(const std::string& text) { _out << _indent << text << "\n"; }

    std::ostringstream _out;
    std::string _indent;
    const OutputTable* _table = nullptr;
};

} // namespace

std::string outputText()
{
    Writer writer;
    for (const OutputItem& item : OutputTree::instance().items())
        writer.write(item, "");
    return writer.text();
}

void RenderTest::SetUp()
{
    JvmTest::SetUp();
    OutputTree::instance().clear();
    procedure = std::make_unique<TnProcedure>("P", &source);
}

void RenderTest::TearDown()
{
    procedure.reset();
    OutputTree::instance().clear();
    JvmTest::TearDown();
}

std::string RenderTest::json(std::string text)
{
    std::replace(text.begin(), text.end(), '\'', '"');
    return text;
}

std::unique_ptr<TnCellText> RenderTest::textOf(const std::string& item, bool translate)
{
    JNIJSONObject document(json(item).c_str());
    EXPECT_EQ(document.getParserError(), "") << item;
    jobject top = document.getTop();
    jsonPivot pivot(document, top, &source, dictionary);
    pivot.translateTableStrings(translate);
    return std::unique_ptr<TnCellText>(pivot.getCellText(top));
}

const OutputTable& RenderTest::onlyTable()
{
    const auto& items = OutputTree::instance().procedures().front()->items;
    return *std::get<std::shared_ptr<OutputTable>>(items.at(0));
}

std::string RenderTest::tableOf(const std::string& table, Preparation prepare)
{
    buildTable(table, prepare);
    return outputText();
}

void RenderTest::buildTable(const std::string& table, Preparation prepare)
{
    OutputTree::instance().clear();
    JNIJSONObject document(json(table).c_str());
    EXPECT_EQ(document.getParserError(), "") << table;
    jobject top = document.getTop();
    {
        jsonPivot pivot(document, top, &source, dictionary);
        if (prepare != nullptr)
            prepare(pivot);
        pivot.createPivotTable(procedure.get(), "T", false, "S");
    }
}
