#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "DataFileNames.h"
#include "dialect/Dialect.h"
#include "runtime/Cancellation.h"
#include "runtime/DataModel.h"
#include "runtime/Progress.h"

namespace EmbeddedHV {

class DataModelExport;
class LayerSource;
class RecordBatch;
class Reporter;
class Session;
class StatementFault;

namespace language {
struct Step;
}

/// A check of a source or a step that runs with a statement, for example that guessed types are
/// right or that the number of bad records stays within the limit.
class SourceCheck
{
public:
    virtual ~SourceCheck() = default;
    /// Called before start if the statement reads only these fields of the source. Values of other
    /// fields need no check then, because they do not change the statement's result.
    virtual void readsOnly(const std::set<std::string>& /*fields*/) {}
    /// Called before the statement. `progress` is for work that takes long.
    virtual void start(Cancellation& cancellation, const Progress& progress) = 0;
    /// Called after a statement succeeded and before its output gets its name. Throws JobError or
    /// Reread.
    virtual void finish(Session& session, Reporter& reporter) = 0;
    /// Called after a statement failed. Throws Reread if planning again can solve the problem, and
    /// JobError if it knows a better error than the fault.
    virtual void abandon(const StatementFault& fault) = 0;
};

/// Thrown when the types of a source differ from those in the plan. The current statement is then
/// planned again.
struct Reread
{
};

/// Which fields of its inputs a node reads, at most.
enum class Reads
{
    All,
    Listed,          ///< those in its list
    ListedAndWanted, ///< those in its list, and those that are wanted of itself
};

struct Node;
using NodePtr = std::shared_ptr<Node>;

/// A relation of the plan: its fields, and a function that writes its SELECT from the FROM items of
/// its inputs. Nothing runs until a statement is rendered from it.
struct Node
{
    Node() = default;
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    /// Destroys the inputs without recursion, because a chain may have thousands of nodes.
    ~Node();

    Fields fields;
    std::vector<NodePtr> inputs;
    std::function<std::string(const std::vector<std::string>& inputs)> select;
    Reads reads = Reads::All;
    std::set<std::string> readFields;          ///< the list for `reads`
    std::shared_ptr<SourceCheck> check;        ///< may be null
    std::shared_ptr<DataModelExport> exported; ///< null except for dataModelBuilder
    std::shared_ptr<LayerSource> layer;        ///< null except for the unchanged records of a map
    bool readsOnce = false;                    ///< a source whose records cannot be read again
    bool shared = false; ///< used more than once, so it is evaluated into a table
    /// The embedded database has the records, and the job runs on a cluster.
    bool isLocal = false;
    int depth = 0;     ///< steps since the last table or source
    int steps = 1;     ///< steps since the source
    std::string table; ///< empty until it is evaluated
};

/// Whether a walk continues past nodes whose records are in a table.
enum class Walk
{
    UpToTables,
    Everywhere
};

/// The node and everything that it depends on. Each node occurs once, after its inputs. Not
/// recursive.
std::vector<Node*> inputsFirst(Node& last, Walk walk);

/// Tells the checks of the sources that a SELECT on the node reads which of their fields it reads.
void tellChecksWhatIsRead(Node& last);

/// Whether a SELECT on the node can run again after its statement has succeeded, and gives the same
/// records.
bool canReadAgain(Node& node);

/// Makes a relation over others, which are all local or all not, and computes its depth. Throws
/// JobError if the chain is too long.
NodePtr derivedNode(Fields fields, std::vector<NodePtr> inputs,
                    std::function<std::string(const std::vector<std::string>&)> select);

/// The whole of a table, as a relation.
NodePtr tableNode(const Dialect& dialect, Fields fields, const std::string& table);
/// A relation without fields and records, for a statement whose step has no input.
NodePtr emptyNode();

/// The destination of a statement's records.
class Output
{
public:
    virtual ~Output() = default;
    /// What is written, for messages: a file or a data source.
    virtual std::string target() const = 0;
    /// Whether target is the path of a file.
    virtual bool writesFile() const { return false; }
    /// The SQL that writes the records of a SELECT, or, for an output that takes records, the SQL
    /// that returns them.
    virtual std::string statement(const std::string& select) = 0;
    virtual bool takesRecords() const { return false; }
    /// Whether a record that is taken may have kilobytes.
    virtual bool hasLargeRecords() const { return false; }
    /// The part of the whole work that the statement is, 0 to 1, for the progress of the job. The
    /// rest is commit, which reports its progress to the job's context.
    virtual double statementShare() const { return 1; }
    /// Takes the next records, in order. Throws JobError.
    virtual void take(RecordBatch&) {}
    /// Makes the result visible under its name. Throws JobError.
    virtual void commit() = 0;
};

/// Records that must be there before the steps that use them are planned: a step in the middle of
/// a chain whose output fields depend on its input records, or the records of a cluster that a
/// component needs. It runs as a separate statement.
class Stage : public Output
{
public:
    /// The relation that it has made: a table. Call it after commit.
    virtual NodePtr records() = 0;
};

/// A planned statement of the job.
struct Statement
{
    NodePtr result;
    std::unique_ptr<Output> output; ///< null: the records are computed and discarded
    std::string steps;              ///< "read -> filterRecords -> write", for messages
    /// The documents that the steps of the result export.
    std::vector<std::shared_ptr<DataModelExport>> exports;
    /// If the statement is a stage: its step, whether the stage is the step's input, and the stage.
    /// The output owns the stage.
    const language::Step* stagedStep = nullptr;
    bool stagesInput = false;
    Stage* stage = nullptr;
};

/// Thrown when a statement is planned: this stage must run first, before the later steps can be
/// planned.
struct StageFirst
{
    std::shared_ptr<Statement> stage;
};

} // namespace EmbeddedHV
