#include "report/page/PageBody.h"

#include <algorithm>
#include <ostream>

#include "TnOutput.h"
#include "Translation.h"
#include "report/charts/ChartMarkup.h"
#include "report/charts/ViewMarkup.h"
#include "report/document/PageText.h"
#include "report/page/TableMarkup.h"

namespace {

constexpr int kLastHeadingElement = 6;

using HeadingItem = std::shared_ptr<OutputHeading>;
using TableItem = std::shared_ptr<OutputTable>;

/// The title of an item in the outline; empty if it is not listed.
std::string titleOf(const OutputItem& item)
{
    if (const auto* heading = std::get_if<HeadingItem>(&item))
        return (*heading)->text.text;
    if (const auto* table = std::get_if<TableItem>(&item))
        return (*table)->title.text;
    if (const auto* chart = std::get_if<OutputChart>(&item))
        return chart->description;
    if (const auto* view = std::get_if<OutputView>(&item))
        return view->description;
    return {};
}

/// The host's words for message levels.
std::string levelWord(int level)
{
    constexpr const char* words[] = {"",      "Comment",     "Warning",
                                     "Error", "Fatal Error", "Catastrophic Error"};
    return translate(words[std::clamp(level, 1, 5)]);
}

class BodyWriter
{
public:
    BodyWriter(std::ostream& out, const PageContents& contents) : _out(out), _contents(contents) {}

    void writeOutline(const std::vector<OutputItem>& items)
    {
        if (std::all_of(items.begin(), items.end(),
                        [](const OutputItem& item) { return titleOf(item).empty(); }))
            return;
        _out << "<ol>\n";
        for (const OutputItem& item : items)
            if (const std::string title = titleOf(item); !title.empty()) {
                _out << "<li><a href=\"#" << _contents.anchor(item) << "\">"
                     << isolated(shortened(title)) << "</a>\n";
                if (const auto* heading = std::get_if<HeadingItem>(&item))
                    writeEntries(**heading);
                _out << "</li>\n";
            }
        _out << "</ol>\n";
    }

    void writeItems(const std::vector<OutputItem>& items, int level)
    {
        for (const OutputItem& item : items)
            writeItem(item, level);
    }

private:
    /// The entries under a heading. What is folded on the page is folded here too. Many folded
    /// headings would have more folds than a reader wants to pass.
    void writeEntries(const OutputHeading& heading)
    {
        if (heading.isFolded && _contents.isLarge())
            return;
        if (!_contents.isFolded(heading)) {
            writeOutline(heading.items);
            return;
        }
        _out << "<details><summary><span class=\"unseen\">" << isolated(heading.text.text)
             << ": </span>" << heading.items.size() << " " << escaped(translate("Entries"))
             << "</summary>\n";
        writeOutline(heading.items);
        _out << "</details>\n";
    }

    void writeItem(const OutputItem& item, int level)
    {
        const std::string& anchor = _contents.anchor(item);
        if (const auto* heading = std::get_if<HeadingItem>(&item))
            writeHeading(**heading, anchor, level);
        else if (const auto* table = std::get_if<TableItem>(&item))
            writeTable(_out, **table, anchor);
        else if (const auto* chart = std::get_if<OutputChart>(&item))
            writeChart(_out, *chart, _contents.document(item), anchor);
        else if (const auto* view = std::get_if<OutputView>(&item))
            writeView(_out, *view, _contents.document(item), anchor);
        else
            writeMessage(std::get<OutputMessage>(item));
    }

    void writeHeading(const OutputHeading& heading, const std::string& anchor, int level)
    {
        const bool isFolded = _contents.isFolded(heading);
        _out << "<section aria-labelledby=\"" << anchor << "\">\n"
             << (isFolded ? "<details class=\"fold\"><summary>" : "");
        writeTitle(heading, anchor, level);
        _out << (isFolded ? "</summary>\n" : "\n");
        writeItems(heading.items, level + 1);
        _out << (isFolded ? "</details>\n" : "") << "</section>\n";
    }

    void writeTitle(const OutputHeading& heading, const std::string& anchor, int level)
    {
        const std::string element = "h" + std::to_string(std::min(level, kLastHeadingElement));
        _out << "<" << element << " id=\"" << anchor << "\"";
        if (level > kLastHeadingElement)
            _out << " aria-level=\"" << level << "\"";
        _out << ">" << isolated(heading.text.text) << "</" << element << ">";
    }

    // Level 0 is for the log only.
    void writeMessage(const OutputMessage& message)
    {
        if (message.level < 1 || message.show != kShowInOutput)
            return;
        const int level = std::min(message.level, 5);
        _out << "<p class=\"message level" << level << "\" role=\"note\"><strong>"
             << escaped(levelWord(level)) << "</strong> " << isolated(message.text) << "</p>\n";
    }

    std::ostream& _out;
    const PageContents& _contents;
};

/// Whether an outline is useful.
bool isWorthAnOutline(const std::vector<OutputItem>& items)
{
    std::size_t entries = 0;
    for (const OutputItem& item : items) {
        const auto* heading = std::get_if<HeadingItem>(&item);
        entries += titleOf(item).empty() ? 0 : 1;
        entries += heading && !(*heading)->items.empty() ? (*heading)->items.size() : 0;
    }
    return entries > 2;
}

} // namespace

void writePageBody(std::ostream& out, const PageBody& body)
{
    BodyWriter writer(out, body.contents);
    const bool hasOutline = isWorthAnOutline(body.items);
    out << "<body class=\"" << (hasOutline ? "outlined" : "")
        << (body.contents.isLarge() ? " large" : "") << "\">\n<a class=\"skip\" href=\"#output\">"
        << escaped(translate("Skip to the output")) << "</a>\n<header>\n<h1>"
        << isolated(body.title) << "</h1>\n";
    if (!body.subtitle.empty())
        out << "<p>" << isolated(body.subtitle) << "</p>\n";
    out << "</header>\n";
    if (hasOutline) {
        out << "<nav aria-labelledby=\"outline\">\n<p id=\"outline\">"
            << escaped(translate("Contents")) << "</p>\n";
        writer.writeOutline(body.items);
        out << "</nav>\n";
    }
    out << "<main id=\"output\" tabindex=\"-1\">\n";
    writer.writeItems(body.items, 2);
    out << "</main>\n";
}
