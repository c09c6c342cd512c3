#include "report/charts/ViewMarkup.h"

#include <algorithm>
#include <ostream>

#include "Translation.h"
#include "report/charts/ChartMarkup.h"
#include "report/document/JsonTables.h"
#include "report/document/PageText.h"

namespace {

/// Writes any JSON: rows as a table, drawable parts as charts, nested members as folded parts.
class JsonWriter
{
public:
    JsonWriter(std::ostream& out, const JsonOwner& owner) : _out(out), _owner(owner) {}

    void write(const std::string& name, const PageJson& value)
    {
        if (isDrawable(value))
            writeDrawing(_out, {value, name, _owner.anchor + "c" + std::to_string(++_drawings),
                                _owner.source});
        else if (value.is_array() && !std::any_of(value.begin(), value.end(), hasDrawing))
            writeList(name, value);
        else if (value.is_structured())
            writeParts(name, value);
        else
            _out << "<p>" << isolated(scalarText(value)) << "</p>\n";
    }

    void writeFolded(const std::string& name, const PageJson& value, bool isOpen)
    {
        _out << (isOpen ? "<details open>" : "<details>") << "<summary>" << isolated(name)
             << "</summary>\n";
        write(name, value);
        _out << "</details>\n";
    }

private:
    void writeList(const std::string& name, const PageJson& array)
    {
        if (array.empty())
            _out << "<p class=\"empty\">" << escaped(translate("Empty")) << "</p>\n";
        else
            writeArray(_out, name, array);
    }

    void writeParts(const std::string& name, const PageJson& parent)
    {
        if (parent.is_object())
            writePairs(_out, name, parent);
        for (const auto& [key, value] : parent.items())
            if (value.is_structured())
                writeFolded(parent.is_array() ? name + " " + std::to_string(std::stoul(key) + 1)
                                              : key,
                            value, true);
    }

    std::ostream& _out;
    const JsonOwner& _owner;
    int _drawings = 0;
};

} // namespace

bool hasDrawing(const PageJson& value)
{
    return isDrawable(value) ||
           (value.is_structured() && std::any_of(value.begin(), value.end(), hasDrawing));
}

void writeJson(std::ostream& out, const JsonOwner& owner, const PageJson& document)
{
    JsonWriter writer(out, owner);
    if (!document.is_object())
        writer.write(owner.title, document);
    else
        for (const auto& [key, value] : document.items())
            if (key != "0")
                writer.write(owner.title, value);
    if (const PageJson* model = memberOf(document, "0"))
        writer.writeFolded(translate("Data Model"), *model, false);
}

void writeView(std::ostream& out, const OutputView& view, const PageJson* document,
               const std::string& anchor)
{
    const std::string title = view.description.empty() ? view.path : view.description;
    out << "<figure class=\"view\" id=\"" << anchor << "\">\n<figcaption>" << isolated(title)
        << "</figcaption>\n";
    if (document)
        writeJson(out, {title, anchor, view}, *document);
    else
        writeUnread(out, view.json);
    out << "</figure>\n";
}
