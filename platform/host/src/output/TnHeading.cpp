#include "TnHeading.h"

#include <utility>

#include "OutputTree.h"
#include "output/LiveHeadings.h"
#include "output/PivotTableState.h"

namespace {

/// A heading under another heading.
class SubHeading final : public TnHeading
{
public:
    SubHeading(const TnHeading& parent, const TnContent& text)
        : TnHeading(OutputTree::instance().heading(*parent.node(), text))
    {
        beginHeading(*this, parent);
    }
};

} // namespace

TnHeading::TnHeading(std::shared_ptr<OutputHeading> node) : _node(std::move(node)) {}

TnHeading::~TnHeading()
{
    endHeading(*this);
}

TnHeading* TnHeading::Heading(const TnCellText& text)
{
    return std::make_unique<SubHeading>(*this, text.content()).release();
}

TnPivotTable* TnHeading::PivotTable(const TnCellText& title, const TnCellText& subtype,
                                    bool supportsSplits)
{
    auto table = std::make_shared<OutputTable>();
    table->title = title.content();
    table->subtype = subtype.content();
    if (supportsSplits)
        table->splitGroup = splitListOf(*this);
    OutputTree::instance().add(_node.get(), table);
    // The constructor is private, so make_unique cannot be used. The caller deletes the table.
    return new TnPivotTable(std::make_shared<PivotTableState>(std::move(table)));
}
