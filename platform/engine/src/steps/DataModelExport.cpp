#include "steps/DataModelExport.h"

#include <set>

#include "ErrorIds.h"
#include "JobError.h"
#include "runtime/FileSpace.h"

namespace EmbeddedHV {
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

std::vector<std::shared_ptr<DataModelExport>> exportsOf(Node& node)
{
    std::vector<std::shared_ptr<DataModelExport>> found;
    for (const Node* made : inputsFirst(node, Walk::Everywhere))
        if (made->exported && !made->exported->isCommitted())
            found.push_back(made->exported);
    return found;
}

void checkTargets(const Statement& statement)
{
    std::set<std::string> paths;
    if (statement.output)
        paths.insert(canonicalPath(statement.output->target()));
    for (const auto& document : statement.exports)
        if (!paths.insert(canonicalPath(document->path())).second)
            throw JobError(errors::kSettingType, {.step = statement.steps,
                                                  .what = "the statement writes the file " +
                                                          document->path() + " twice"});
}

} // namespace EmbeddedHV
