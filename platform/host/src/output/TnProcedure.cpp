#include <utility>

#include "OutputTree.h"
#include "TnHeading.h"
#include "VexaDataSource.h"
#include "output/LiveHeadings.h"
#include "text/CodePage.h"

namespace {

constexpr std::uint16_t kWidth = 40;

std::shared_ptr<OutputHeading> procedureNode(const std::string& name)
{
    auto node = std::make_shared<OutputHeading>();
    node->text.text = hostToUtf8(name);
    OutputTree::instance().add(nullptr, node);
    return node;
}

} // namespace

struct TnProcedure::Impl
{
    std::string name;
    ProcedureDataSource* given = nullptr;
    ProcedureDataSource empty;
};

TnProcedure::TnProcedure(std::string name, ProcedureDataSource* dataSource)
    : TnHeading(procedureNode(name)), _impl(std::make_unique<Impl>())
{
    _impl->name = std::move(name);
    _impl->given = dataSource;
    beginProcedure(*this);
}

TnProcedure::~TnProcedure()
{
    // Before the data source is destroyed, because others may ask for the split group.
    endHeading(*this);
    OutputTree::instance().removeEmpty(*node());
}

const std::string& TnProcedure::Name() const
{
    return _impl->name;
}

ProcedureDataSource& TnProcedure::DataSource() const
{
    return _impl->given ? *_impl->given : _impl->empty;
}

TnFormatSpec TnProcedure::Count()
{
    return TnFormatSpec({kWidth, kFormatNumber, 0});
}

TnFormatSpec TnProcedure::GeneralStat()
{
    return TnFormatSpec({kWidth, kFormatGeneral, 3});
}

TnFormatSpec TnProcedure::Percent()
{
    return TnFormatSpec({kWidth, kFormatPercent, 1});
}
