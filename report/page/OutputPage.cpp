#include "report/page/OutputPage.h"

#include <sstream>
#include <vector>

#include "OutputTree.h"
#include "Translation.h"
#include "report/page/PageBody.h"
#include "report/page/PageFrame.h"

namespace {

/// The only item of the output, if it is a procedure: its name is the title.
const OutputHeading* onlyProcedure(const OutputTree& tree)
{
    const std::vector<OutputItem>& items = tree.items();
    const auto* procedure =
        items.size() == 1 ? std::get_if<std::shared_ptr<OutputHeading>>(&items.front()) : nullptr;
    return procedure ? procedure->get() : nullptr;
}

} // namespace

struct OutputPage::Impl
{
    const std::vector<OutputItem>& items;
    std::string title;
    std::string subtitle;
};

OutputPage::OutputPage(const OutputTree& tree)
{
    const OutputHeading* procedure = onlyProcedure(tree);
    _impl = procedure ? std::make_unique<Impl>(Impl{procedure->items, procedure->text.text, ""})
                      : std::make_unique<Impl>(Impl{tree.items(), translate("Output"), ""});
}

OutputPage::OutputPage(const OutputHeading& procedure)
    : _impl(std::make_unique<Impl>(Impl{procedure.items, procedure.text.text, ""}))
{
}

OutputPage::~OutputPage() = default;

void OutputPage::setTitle(const std::string& title)
{
    _impl->title = title;
}

void OutputPage::setSubtitle(const std::string& subtitle)
{
    _impl->subtitle = subtitle;
}

void OutputPage::write(std::ostream& out) const
{
    const PageContents contents(_impl->items);
    const PageFrame frame(contents.hasDrawings(), contents.widthRules());
    frame.writeHead(out, _impl->title);
    writePageBody(out, {_impl->items, contents, _impl->title, _impl->subtitle});
    frame.writeFoot(out);
}

std::string OutputPage::text() const
{
    std::ostringstream out;
    write(out);
    return std::move(out).str();
}
