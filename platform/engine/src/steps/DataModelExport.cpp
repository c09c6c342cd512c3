#include "steps/DataModelExport.h"

#include <set>

#include "ErrorIds.h"
#include "JobError.h"
#include "runtime/FileSpace.h"

namespace EmbeddedHV {
namespace {

void gather(const Node& node, std::set<const Node*>& seen,
            std::vector<std::shared_ptr<DataModelExport>>& found)
{
    if (!seen.insert(&node).second)
        return;
    for (const NodePtr& input : node.inputs)
        gather(*input, seen, found);
    if (node.exported && !node.exported->isCommitted())
        found.push_back(node.exported);
}

} // namespace

DataModelExport::DataModelExport(const std::string& path, const std::string& step,
                                 const Fields& fields)
    : _file(path, step), _document(dataModelOf(fields))
{
}

void DataModelExport::commit()
{
    _file.write(_document);
    _file.commit();
    _isCommitted = true;
}

void DataModelExport::revoke()
{
    if (_isCommitted)
        _file.revoke();
    _isCommitted = false;
}

std::vector<std::shared_ptr<DataModelExport>> exportsOf(const Node& node)
{
    std::set<const Node*> seen;
    std::vector<std::shared_ptr<DataModelExport>> found;
    gather(node, seen, found);
    return found;
}

void checkTargets(const Statement& statement)
{
    std::set<std::string> paths;
    if (statement.output)
        paths.insert(canonicalPath(statement.output->target()));
    for (const auto& document : statement.exports)
        if (!paths.insert(canonicalPath(document->path())).second)
            throw JobError(errors::kSettingType, statement.steps +
                                                     ": the statement writes the file " +
                                                     document->path() + " twice");
}

} // namespace EmbeddedHV
