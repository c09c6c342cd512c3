#include "steps/Plan.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "ErrorIds.h"
#include "JobError.h"

namespace EmbeddedHV {
namespace {

/// The database processes nested subqueries recursively, so deeper nesting is split by a table.
constexpr int kMostNestedSteps = 64;
/// The planner keeps the fields of each step that other steps may use.
constexpr int kMostSteps = 2000;

} // namespace

Node::~Node()
{
    std::vector<NodePtr> ending = std::move(inputs);
    while (!ending.empty()) {
        const NodePtr node = std::move(ending.back());
        ending.pop_back();
        if (node.use_count() > 1)
            continue;
        for (NodePtr& input : node->inputs)
            ending.push_back(std::move(input));
        node->inputs.clear();
    }
}

std::vector<Node*> inputsFirst(Node& last, Walk walk)
{
    std::vector<Node*> order;
    std::vector<std::pair<Node*, std::size_t>> open{{&last, 0}};
    std::set<const Node*> seen{&last};
    while (!open.empty()) {
        Node* const node = open.back().first;
        const std::size_t next = open.back().second++;
        const bool ends = walk == Walk::UpToTables && !node->table.empty();
        if (!ends && next < node->inputs.size()) {
            Node* const input = node->inputs[next].get();
            if (seen.insert(input).second)
                open.emplace_back(input, 0);
        } else {
            order.push_back(node);
            open.pop_back();
        }
    }
    return order;
}

void tellChecksWhatIsRead(Node& last)
{
    std::set<const Node*> whole{&last};                  // all of their fields are wanted
    std::map<const Node*, std::set<std::string>> wanted; // the wanted fields of the others
    const std::vector<Node*> nodes = inputsFirst(last, Walk::UpToTables);
    for (auto at = nodes.rbegin(); at != nodes.rend(); ++at) {
        const Node& node = **at;
        std::set<std::string> fields = std::move(wanted[&node]);
        const bool isWhole = whole.contains(&node);
        if (node.check && !isWhole)
            node.check->readsOnly(fields);
        const bool readsAll =
            node.reads == Reads::All || (node.reads == Reads::ListedAndWanted && isWhole);
        if (node.reads == Reads::Listed)
            fields.clear();
        fields.insert(node.readFields.begin(), node.readFields.end());
        for (const NodePtr& input : node.inputs) {
            if (readsAll)
                whole.insert(input.get());
            else
                wanted[input.get()].insert(fields.begin(), fields.end());
        }
    }
}

bool canReadAgain(Node& node)
{
    const std::vector<Node*> nodes = inputsFirst(node, Walk::UpToTables);
    return std::none_of(nodes.begin(), nodes.end(), [](const Node* source) {
        return source->readsOnce && source->table.empty();
    });
}

NodePtr derivedNode(Fields fields, std::vector<NodePtr> inputs,
                    std::function<std::string(const std::vector<std::string>&)> select)
{
    auto node = std::make_shared<Node>();
    for (const NodePtr& input : inputs) {
        node->depth = std::max(node->depth, input->shared ? 1 : input->depth + 1);
        node->steps = std::max(node->steps, input->steps + 1);
        node->isLocal = node->isLocal || input->isLocal;
    }
    if (node->steps > kMostSteps)
        throw JobError(errors::kLiteralSize, {.limit = kMostSteps,
                                              .what = "the job has a chain of more than " +
                                                      std::to_string(kMostSteps) + " steps"});
    node->fields = std::move(fields);
    node->inputs = std::move(inputs);
    node->select = std::move(select);
    node->shared = node->depth >= kMostNestedSteps;
    return node;
}

NodePtr tableNode(const Dialect& dialect, Fields fields, const std::string& table)
{
    auto node = std::make_shared<Node>();
    node->fields = std::move(fields);
    node->select = [select = "SELECT * FROM " + dialect.name(table)](
                       const std::vector<std::string>&) { return select; };
    node->shared = true;
    node->table = table;
    return node;
}

NodePtr emptyNode()
{
    auto node = std::make_shared<Node>();
    node->select = [](const std::vector<std::string>&) {
        return std::string("SELECT NULL WHERE false");
    };
    return node;
}

} // namespace EmbeddedHV
