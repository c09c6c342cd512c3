#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "DataFileNames.h"
#include "datafile/Duck.h"
#include "runtime/Cancellation.h"
#include "runtime/DataModel.h"

namespace EmbeddedHV {

class DataModelExport;
class Reporter;

namespace language {
struct Step;
}

/// What a source or a step has to look after while a statement runs it: that the types it guessed
/// hold, that bad records stay within their limit.
class SourceCheck
{
public:
    virtual ~SourceCheck() = default;
    /// Before the statement.
    virtual void start(Cancellation& cancellation) = 0;
    /// After a statement that succeeded; before its output gets its name. Throws JobError or
    /// Reread.
    virtual void finish(duck::Connection& connection, Reporter& reporter) = 0;
    /// After a statement that failed; throws Reread if reading anew can mend it.
    virtual void abandon(const std::string& databaseMessage) = 0;
};

/// Thrown when a source turns out to have other types than the plan was made for: the plan of the
/// present statement is made again, with what is known now.
struct Reread
{
};

struct Node;
using NodePtr = std::shared_ptr<Node>;

/// A relation of the plan: its fields, and how its SELECT is written once the FROM items of its
/// inputs are known. Nothing runs until a statement is rendered from it.
struct Node
{
    Node() = default;
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    /// Ends the nodes before this one without recursion: a chain may have thousands.
    ~Node();

    Fields fields;
    std::vector<NodePtr> inputs;
    std::function<std::string(const std::vector<std::string>& inputs)> select;
    std::shared_ptr<SourceCheck> check;        ///< may be null
    std::shared_ptr<DataModelExport> exported; ///< null but for dataModelBuilder
    bool shared = false;                       ///< used more than once, so evaluated into a table
    int depth = 0;                             ///< steps since the last table or source
    int steps = 1;                             ///< steps since the source
    std::string table;                         ///< once evaluated
};

/// Whether a walk goes beyond nodes whose records are in a table.
enum class Walk
{
    UpToTables,
    Everywhere
};

/// The node and what it is made from, each once and behind its inputs. Without recursion.
std::vector<Node*> inputsFirst(Node& last, Walk walk);

/// A relation over others; its depth follows from theirs. Throws JobError past the longest chain.
NodePtr derivedNode(Fields fields, std::vector<NodePtr> inputs,
                    std::function<std::string(const std::vector<std::string>&)> select);

/// A relation that is the whole of a table.
NodePtr tableNode(Fields fields, const std::string& table);
/// A relation without fields and records: for a statement whose step takes none.
NodePtr emptyNode();

/// Where the records of a statement go.
class Output
{
public:
    virtual ~Output() = default;
    /// The thing that is written, for messages: a file or a data source.
    virtual std::string target() const = 0;
    /// The SQL that writes the records of a SELECT; for an output that takes its records itself,
    /// the SQL that gives them.
    virtual std::string statement(const std::string& select) = 0;
    virtual bool takesRecords() const { return false; }
    /// The next records, in their order. Throws JobError.
    virtual void take(duck::Chunk&) {}
    /// Makes the result visible under its name. Throws JobError.
    virtual void commit() = 0;
};

/// A step in the middle of a chain whose fields depend on the records that it takes. It runs as a
/// statement of its own, before the steps behind it are planned.
class Stage : public Output
{
public:
    /// The relation that it made: a table. After commit.
    virtual NodePtr records() = 0;
};

/// A statement of the job, planned.
struct Statement
{
    NodePtr result;
    std::unique_ptr<Output> output; ///< null: the records are computed and dropped
    std::string steps;              ///< "read -> filterRecords -> write", for messages
    /// The documents of the steps that the result is made by.
    std::vector<std::shared_ptr<DataModelExport>> exports;
    /// If the statement is a stage: its step and, borrowed from the output, the stage.
    const language::Step* stagedStep = nullptr;
    Stage* stage = nullptr;
};

/// Thrown by the planning of a statement: the steps behind a stage can be planned when this
/// statement, the stage, has run.
struct StageFirst
{
    std::shared_ptr<Statement> stage;
};

/// A column list: quoted names with commas.
std::string columnList(const Fields& fields);
/// A name that no field has, for a column of the engine's own.
std::string unusedName(const Fields& fields, const std::string& base);

} // namespace EmbeddedHV
