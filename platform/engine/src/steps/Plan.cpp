#include "steps/Plan.h"

#include <algorithm>

#include "expression/ExpressionCompiler.h"

namespace EmbeddedHV {
namespace {

/// Deeper nests of subqueries are cut by a table: the database walks them recursively.
constexpr int kMostNestedSteps = 64;

} // namespace

NodePtr derivedNode(Fields fields, std::vector<NodePtr> inputs,
                    std::function<std::string(const std::vector<std::string>&)> select)
{
    auto node = std::make_shared<Node>();
    for (const NodePtr& input : inputs)
        node->depth = std::max(node->depth, input->shared ? 1 : input->depth + 1);
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
