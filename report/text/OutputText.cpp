#include "report/text/OutputText.h"

#include <algorithm>
#include <array>

#include "Translation.h"
#include "report/text/ChartText.h"
#include "report/text/TableText.h"
#include "report/text/TerminalText.h"
#include "report/text/TextPage.h"
#include "report/text/ViewText.h"

namespace {

/// Messages of this level are for the log only.
constexpr int kLogOnly = 0;

struct LevelWord
{
    const char* word;
    TextPage::Style style;
};
constexpr std::array<LevelWord, 6> kLevels{{{"Comment", TextPage::Style::Plain},
                                            {"Comment", TextPage::Style::Plain},
                                            {"Warning", TextPage::Style::Warning},
                                            {"Error", TextPage::Style::Error},
                                            {"Fatal Error", TextPage::Style::Error},
                                            {"Catastrophic Error", TextPage::Style::Error}}};

const LevelWord& wordOf(int level)
{
    const int last = static_cast<int>(kLevels.size()) - 1;
    return kLevels.at(static_cast<std::size_t>(std::clamp(level, 0, last)));
}

/// Writes an output tree in order.
class TreeWriter
{
public:
    /// `depth` is the number of headings around the output.
    explicit TreeWriter(TextPage& page, std::size_t depth = 0) : _page(page), _depth(depth) {}

    void items(const std::vector<OutputItem>& items)
    {
        for (const OutputItem& item : items)
            std::visit([this](const auto& each) { write(each); }, item);
    }
    void write(const std::shared_ptr<OutputHeading>& heading) { write(*heading); }
    void write(const OutputHeading& heading)
    {
        ++_depth;
        title(heading.text.text);
        items(heading.items);
        --_depth;
    }

private:
    void write(const std::shared_ptr<OutputTable>& table) { writeTable(*table, _page); }
    void write(const OutputChart& chart) { writeChart(chart, _page); }
    void write(const OutputView& view) { writeView(view, _page); }
    void write(const OutputMessage& message)
    {
        if (message.level <= kLogOnly)
            return;
        const LevelWord& level = wordOf(message.level);
        _page.beginBlock();
        _page.write(message.text, level.style, translate(level.word) + ": ");
    }
    void title(const std::string& text);

    TextPage& _page;
    std::size_t _depth;
};

/// The first two levels are underlined; lower levels show their depth.
void TreeWriter::title(const std::string& text)
{
    _page.beginBlock();
    std::string lead;
    for (std::size_t depth = 3; depth <= _depth; ++depth)
        lead += "›";
    _page.write(text, TextPage::Style::Bold, lead.empty() ? lead : lead + " ");
    if (_depth > 2)
        return;
    std::size_t width = 0;
    for (const std::string& line : terminalWrapped(text, _page.options().width))
        width = std::max(width, terminalWidth(line));
    std::string line;
    for (std::size_t i = 0; i < width; ++i)
        line += _depth == 1 ? "═" : "─";
    _page.write(line);
}

} // namespace

void writeOutputText(const OutputTree& tree, const OutputTextOptions& options, std::ostream& out)
{
    TextPage page(options, out);
    TreeWriter(page).items(tree.items());
}

void writeOutputText(const OutputHeading& procedure, const OutputTextOptions& options,
                     std::ostream& out)
{
    TextPage page(options, out);
    TreeWriter(page).write(procedure);
}

void writeFurtherOutputText(const std::vector<OutputItem>& items, const OutputTextOptions& options,
                            std::ostream& out)
{
    TextPage page(options, out, TextPage::Begin::AfterBlock);
    TreeWriter(page, 1).items(items);
}
