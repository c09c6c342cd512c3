#include "steps/Plan.h"

#include <algorithm>

#include "ErrorIds.h"
#include "JobError.h"
#include "datafile/SqlQuoting.h"

namespace EmbeddedHV {
namespace {

/// Deeper nests of subqueries are cut by a table: the database walks them recursively.
constexpr int kMostNestedSteps = 64;
/// Nodes are walked recursively as well.
constexpr int kMostSteps = 2000;

} // namespace

NodePtr derivedNode(Fields fields, std::vector<NodePtr> inputs,
                    std::function<std::string(const std::vector<std::string>&)> select)
{
    auto node = std::make_shared<Node>();
    for (const NodePtr& input : inputs) {
        node->depth = std::max(node->depth, input->shared ? 1 : input->depth + 1);
        node->steps = std::max(node->steps, input->steps + 1);
    }
    if (node->steps > kMostSteps)
        throw JobError(errors::kLiteralSize,
                       "the job has a chain of more than " + std::to_string(kMostSteps) + " steps");
    node->fields = std::move(fields);
    node->inputs = std::move(inputs);
    node->select = std::move(select);
    node->shared = node->depth >= kMostNestedSteps;
    return node;
}

std::string columnList(const Fields& fields)
{
    std::string list;
    for (const CFField& field : fields)
        list += (list.empty() ? "" : ", ") + quotedIdentifier(field.GetName());
    return list;
}

std::string unusedName(const Fields& fields, const std::string& base)
{
    std::string name = base;
    while (findFieldAnyCase(fields, name))
        name += "_";
    return name;
}

} // namespace EmbeddedHV
