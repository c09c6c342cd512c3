#include "ChartOutput.h"

#include <utility>

#include "Journal.h"
#include "OutputTree.h"
#include "TnHeading.h"
#include "text/CodePage.h"

namespace {

void record(const std::string& call, const std::string& text = {})
{
    HostJournal::instance().add(
        {HostJournal::Kind::Output, text.empty() ? call : call + " " + text});
}

} // namespace

/// Shared by both kinds of document; each sends its own part.
struct XDocument::Impl
{
    std::shared_ptr<OutputHeading> heading;
    OutputChart chart;
    OutputView view;
    OutputDocument document;
    bool isSent = false;

    // Writes the item with the common properties to the output, once.
    template <typename Item>
    void send(Item item, const char* call)
    {
        if (std::exchange(isSent, true))
            return;
        record(call, document.description);
        static_cast<OutputDocument&>(item) = std::move(document);
        OutputTree::instance().add(heading.get(), std::move(item));
    }
};

void ChartString::assign(const char* text)
{
    _text = text ? hostToUtf8(text) : std::string();
}

void ChartString::assignUTF8(const std::string& text)
{
    _text = text;
}

XDocument::XDocument(TnHeading& heading) : _impl(std::make_unique<Impl>())
{
    _impl->heading = heading.node();
}

XDocument::~XDocument() = default;

void XDocument::SetDescription(const ChartString& text)
{
    _impl->document.description = text.utf8();
}

void XDocument::setOptions(const std::string& options)
{
    _impl->document.options = options;
    record("setOptions", options);
}

void XDocument::addGeoJSON(const std::string& name, const std::string& text)
{
    _impl->document.geoJson.emplace_back(name, text);
    record("addGeoJSON", name);
}

xGlyph::xGlyph(TnHeading& heading) : XDocument(heading) {}
xGlyph::~xGlyph() = default;

void xGlyph::setViZJSONTemplate(const std::string& json)
{
    _impl->chart.templateJson = json;
}

void xGlyph::sendChart()
{
    _impl->send(std::move(_impl->chart), "sendChart");
}

xInteractive::xInteractive(TnHeading& heading) : XDocument(heading) {}
xInteractive::~xInteractive() = default;

void xInteractive::setProcedureName(const std::string& name)
{
    _impl->view.procedureName = name;
}

void xInteractive::setJSONPath(const std::string& path)
{
    _impl->view.path = path;
    record("setJSONPath", path);
}

void xInteractive::setInteractiveJSON(const std::string& json)
{
    _impl->view.json = json;
}

void xInteractive::sendInteractive()
{
    _impl->send(std::move(_impl->view), "sendInteractive");
}
