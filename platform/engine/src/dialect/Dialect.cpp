#include "dialect/Dialect.h"

#include "ErrorIds.h"
#include "JobError.h"

namespace EmbeddedHV {
namespace {

[[noreturn]] void refuseCsv()
{
    throw JobError(errors::kInternal, "the dialect has no CSV files");
}

} // namespace

std::string Dialect::columns(const datafile::Fields& fields) const
{
    std::string list;
    for (const CFField& field : fields)
        list += (list.empty() ? "" : ", ") + name(field.GetName());
    return list;
}

std::string Dialect::csvTable(const CsvSource&) const
{
    refuseCsv();
}

std::string Dialect::rejectScansOf(const std::string&) const
{
    refuseCsv();
}

std::string Dialect::readsAll(const std::string&) const
{
    refuseCsv();
}

} // namespace EmbeddedHV
