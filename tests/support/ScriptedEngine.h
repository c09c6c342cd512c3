#pragma once

#include <jni.h>

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "EHVAppSetting.h"
#include "ExecutionListener.h"
#include "RowDataIterator.h"

/// What a scripted call throws.
enum class Fault
{
    None,
    Engine,
    Java,
    Standard,
    Unknown
};
const char* nameOf(Fault fault);
/// Throws what the fault stands for; returns for none.
void raiseFault(Fault fault);

/// One call that the engine got: its name, its argument in words, and on what it came.
struct EngineCall
{
    std::string name;
    std::string argument;
    JNIEnv* env = nullptr;
    std::thread::id thread;
};

class ScriptedExecution;

/// A running job, as its script sees it. The script runs on a thread of the engine's own, so every
/// callback crosses threads as with a real engine.
class ScriptedJob
{
public:
    ScriptedJob(ScriptedExecution& execution, EmbeddedHV::ExecutionListener& listener)
        : _execution(execution), _listener(listener)
    {
    }
    EmbeddedHV::ExecutionListener& listener() { return _listener; }
    /// Reports by the extended operation, as the contract asks.
    void message(const std::string& id, const std::string& text);
    /// Blocks until the job is cancelled; false if nobody does so within `seconds`.
    bool waitForCancel(int seconds = 30);
    /// Pulls the named input iterator to its end; how many records it gave, -1 if there is none.
    int pull(const std::string& name);

private:
    ScriptedExecution& _execution;
    EmbeddedHV::ExecutionListener& _listener;
};

/// An engine that does what a test tells it. While it lives, every service manager that is made
/// stands on it; it ends the process's service when it is made and when it goes.
class ScriptedEngine
{
public:
    using Script = std::function<void(ScriptedJob&)>;

    ScriptedEngine();
    ~ScriptedEngine();
    ScriptedEngine(const ScriptedEngine&) = delete;
    ScriptedEngine& operator=(const ScriptedEngine&) = delete;

    /// What the jobs to come do; onSuccess alone by default.
    void setScript(Script script);
    /// Has the call of this name throw: "start", "createExecution", a query of the metadata service
    /// or an operation of the execution.
    void throwAt(const std::string& call, Fault fault);
    /// Has the call of this name run something, on its thread; once it is recorded and before it
    /// throws. An empty function takes it away.
    void onCall(const std::string& call, std::function<void()> hook);
    /// Called at the start of each call, after it was noted; what it throws leaves the call. Not
    /// for the end of the service, which must not throw.
    void setCallHook(std::function<void()> hook);
    /// What queries of the metadata service answer.
    void setMetadata(const std::string& answer);
    /// What one query answers, as in "getCoordinatesSystemInfo(4326)"; others then answer with
    /// nothing, but for that of a data model.
    void setAnswer(const std::string& query, const std::string& answer);
    /// Rows of a file that a job wrote, by its name; the test owns them. Input rows stand for files
    /// of their names otherwise.
    using Outputs = std::function<EmbeddedHV::RowDataIterator*(const std::string& fileName)>;
    void setOutputs(Outputs outputs);

    /// All calls so far, in order; "delete" is the end of an execution object.
    std::vector<EngineCall> calls() const;
    /// The same as "name(argument)", without the arguments' parentheses where there is none.
    std::vector<std::string> callNames() const;
    /// Of all calls of one name, in order; those of "prepare" are the texts of jobs.
    std::vector<std::string> argumentsOf(const std::string& name) const;
    void clearCalls();
    /// Blocks until a script is running; false if none does so within `seconds`.
    bool waitUntilRunning(int seconds = 30) const;

    /// Of each start of the engine, what it was started with.
    std::vector<EmbeddedHV::EHVAppSetting> starts() const;

    struct State;

private:
    std::unique_ptr<State> _state;
};
