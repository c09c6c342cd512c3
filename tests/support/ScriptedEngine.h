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

/// The exception that a scripted call throws.
enum class Fault
{
    None,
    Engine,
    Java,
    Standard,
    Unknown
};
const char* nameOf(Fault fault);
/// Throws the exception of the fault. Returns for None.
void raiseFault(Fault fault);

/// A call that the engine received: its name, its argument as text, its environment and its thread.
struct EngineCall
{
    std::string name;
    std::string argument;
    JNIEnv* env = nullptr;
    std::thread::id thread;
};

class ScriptedExecution;

/// A running job, for its script. The script runs on a separate thread, so callbacks cross threads
/// as with a real engine.
class ScriptedJob
{
public:
    ScriptedJob(ScriptedExecution& execution, EmbeddedHV::ExecutionListener& listener)
        : _execution(execution), _listener(listener)
    {
    }
    EmbeddedHV::ExecutionListener& listener() { return _listener; }
    /// Reports through the extended operation if the listener has it, as the contract requires.
    void message(const std::string& id, const std::string& text);
    /// Blocks until the job is cancelled. Returns false if that does not happen within `seconds`.
    bool waitForCancel(int seconds = 30);
    /// Reads the named input iterator to its end. Returns the number of records, or -1 if there is
    /// no such iterator.
    int pull(const std::string& name);

private:
    ScriptedExecution& _execution;
    EmbeddedHV::ExecutionListener& _listener;
};

/// An engine that a test controls. During its lifetime, every new service manager uses it. The
/// constructor and the destructor shut down the process's service.
class ScriptedEngine
{
public:
    using Script = std::function<void(ScriptedJob&)>;

    ScriptedEngine();
    ~ScriptedEngine();
    ScriptedEngine(const ScriptedEngine&) = delete;
    ScriptedEngine& operator=(const ScriptedEngine&) = delete;

    /// Sets the script of later jobs. By default a job only calls onSuccess.
    void setScript(Script script);
    /// Makes calls with this name throw: "start", "createExecution", a query of the metadata
    /// service, or an operation of the execution.
    void throwAt(const std::string& call, Fault fault);
    /// Runs a function in each call with this name, on its thread, after the call is recorded and
    /// before it throws. An empty function removes it.
    void onCall(const std::string& call, std::function<void()> hook);
    /// Sets a function that runs at the start of each call, after the call is recorded. Its
    /// exceptions leave the call. Not for the end of the service, which must not throw.
    void setCallHook(std::function<void()> hook);
    /// Sets the answer of the metadata service's queries.
    void setMetadata(const std::string& answer);
    /// Sets the answer of one query, for example "getCoordinatesSystemInfo(4326)". Other queries,
    /// except for a data model, then return an empty answer.
    void setAnswer(const std::string& query, const std::string& answer);
    /// Sets the rows of files that a job wrote, by name. The test owns them. Without it, input rows
    /// take the place of files with their names.
    using Outputs = std::function<EmbeddedHV::RowDataIterator*(const std::string& fileName)>;
    void setOutputs(Outputs outputs);

    /// All calls so far, in order. "delete" is the destructor of an execution.
    std::vector<EngineCall> calls() const;
    /// The calls as "name(argument)", or only "name" if there is no argument.
    std::vector<std::string> callNames() const;
    /// The arguments of all calls with this name, in order. Those of "prepare" are job texts.
    std::vector<std::string> argumentsOf(const std::string& name) const;
    void clearCalls();
    /// Blocks until a script is running. Returns false if that does not happen within `seconds`.
    bool waitUntilRunning(int seconds = 30) const;

    /// The settings of each start of the engine.
    std::vector<EmbeddedHV::EHVAppSetting> starts() const;

    struct State;

private:
    std::unique_ptr<State> _state;
};
