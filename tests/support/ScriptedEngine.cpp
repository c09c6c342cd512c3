#include "support/ScriptedEngine.h"

#include <chrono>
#include <condition_variable>
#include <future>
#include <map>
#include <mutex>
#include <stdexcept>
#include <utility>

#include "Container.h"
#include "EngineBackend.h"
#include "EngineException.h"
#include "Execution.h"
#include "MetadataService.h"
#include "RowDataIterator.h"
#include "runner/StatHVServiceManager.h"

/// The state that the engine, its executions and the test share.
struct ScriptedEngine::State
{
    mutable std::mutex mutex;
    mutable std::condition_variable changed;
    std::vector<EngineCall> calls;
    std::map<std::string, Fault> faults;
    std::map<std::string, std::function<void()>> hooks;
    std::vector<EmbeddedHV::EHVAppSetting> starts;
    Script script = [](ScriptedJob& job) { job.listener().onSuccess(); };
    std::string metadata = "<DataModel/>";
    std::map<std::string, std::string> answers;
    Outputs outputs;
    std::function<void()> callHook;
    bool running = false;

    void setRunning(bool now)
    {
        const std::lock_guard guard(mutex);
        running = now;
        changed.notify_all();
    }
    void record(const std::string& name, const std::string& argument, JNIEnv* env);
};

const char* nameOf(Fault fault)
{
    static constexpr const char* kNames[] = {"no", "engine", "Java", "standard", "unknown"};
    return kNames[static_cast<int>(fault)];
}

void raiseFault(Fault fault)
{
    switch (fault) {
    case Fault::Engine:
        throw EmbeddedHV::Exception("scripted");
    case Fault::Java:
        throw EmbeddedHV::JavaException("java.lang.RuntimeException", "scripted", "at script");
    case Fault::Standard:
        throw std::runtime_error("scripted");
    case Fault::Unknown:
        throw 1;
    case Fault::None:
        break;
    }
}

void ScriptedEngine::State::record(const std::string& name, const std::string& argument,
                                   JNIEnv* env)
{
    Fault fault = Fault::None;
    std::function<void()> hook;
    {
        const std::lock_guard guard(mutex);
        calls.push_back({name, argument, env, std::this_thread::get_id()});
        if (const auto found = hooks.find(name); found != hooks.end())
            hook = found->second;
        if (const auto found = faults.find(name); found != faults.end())
            fault = found->second;
        if (!hook && name != "stop")
            hook = callHook;
    }
    if (hook)
        hook();
    raiseFault(fault);
}

class ScriptedExecution : public EmbeddedHV::Execution
{
public:
    explicit ScriptedExecution(ScriptedEngine::State& state) : _state(state) {}
    // Only operations throw faults; a destructor must not throw.
    ~ScriptedExecution() override
    {
        const std::lock_guard guard(_state.mutex);
        _state.calls.push_back({"delete", "", nullptr, std::this_thread::get_id()});
    }

    void prepare(JNIEnv* env, const std::string& jobText) override
    {
        _state.record("prepare", jobText, env);
    }
    void addInputContainer(JNIEnv* env, EmbeddedHV::Container* container) override
    {
        _state.record("addInputContainer", container->getName(), env);
    }
    void addOutputContainer(JNIEnv* env, EmbeddedHV::Container* container) override
    {
        _state.record("addOutputContainer", container->getName(), env);
    }
    void addInputIterator(JNIEnv* env, EmbeddedHV::RowDataIterator* iterator,
                          void* reserved) override
    {
        _iterators[iterator->getName()] = iterator;
        _state.record("addInputIterator", iterator->getName() + (reserved ? " reserved" : ""), env);
    }
    void execute(JNIEnv* env, EmbeddedHV::ExecutionListener* listener) override;
    EmbeddedHV::RowDataIterator* getOutputIterator(JNIEnv* env, const std::string& name) override
    {
        _state.record("getOutputIterator", name, env);
        ScriptedEngine::Outputs outputs;
        {
            const std::lock_guard guard(_state.mutex);
            outputs = _state.outputs;
        }
        return outputs ? outputs(name) : iterator(name);
    }
    void cancel(JNIEnv* env) override
    {
        _state.record("cancel", "", env);
        const std::lock_guard guard(_state.mutex);
        _cancelled = true;
        _state.changed.notify_all();
    }
    void dispose(JNIEnv* env) override { _state.record("dispose", "", env); }

    bool waitForCancel(int seconds)
    {
        std::unique_lock lock(_state.mutex);
        return _state.changed.wait_for(lock, std::chrono::seconds(seconds),
                                       [this] { return _cancelled; });
    }
    EmbeddedHV::RowDataIterator* iterator(const std::string& name)
    {
        const auto found = _iterators.find(name);
        return found != _iterators.end() ? found->second : nullptr;
    }

private:
    ScriptedEngine::State& _state;
    std::map<std::string, EmbeddedHV::RowDataIterator*> _iterators;
    bool _cancelled = false;
};

void ScriptedExecution::execute(JNIEnv* env, EmbeddedHV::ExecutionListener* listener)
{
    _state.record("execute", "", env);
    ScriptedEngine::Script script;
    {
        const std::lock_guard guard(_state.mutex);
        script = _state.script;
    }
    std::future<void> worker = std::async(std::launch::async, [&] {
        _state.setRunning(true);
        ScriptedJob job(*this, *listener);
        script(job);
    });
    worker.wait();
    _state.setRunning(false);
    worker.get();
}

void ScriptedJob::message(const std::string& id, const std::string& text)
{
    dynamic_cast<EmbeddedHV::ExtendedExecutionListener&>(_listener).onMessage(id, text);
}

bool ScriptedJob::waitForCancel(int seconds)
{
    return _execution.waitForCancel(seconds);
}

int ScriptedJob::pull(const std::string& name)
{
    EmbeddedHV::RowDataIterator* const rows = _execution.iterator(name);
    int count = rows == nullptr ? -1 : 0;
    while (rows != nullptr && rows->nextRecord() == EmbeddedHV::RowDataIterator::RecordAvailable)
        ++count;
    return count;
}

namespace {

/// The backend implements both of its services.
class ScriptedBackend : public EmbeddedHV::Backend,
                        public EmbeddedHV::ExecutionService,
                        public EmbeddedHV::MetadataService
{
public:
    explicit ScriptedBackend(ScriptedEngine::State& state) : _state(state) {}
    ~ScriptedBackend() override { _state.record("stop", "", nullptr); }
    EmbeddedHV::ExecutionService* getExecutionService() override { return this; }
    EmbeddedHV::MetadataService* getMetaDataService() override { return this; }

    EmbeddedHV::Execution* createExecution(const std::string& locale) override
    {
        _state.record("createExecution", locale, nullptr);
        // The caller owns the object, as in the contract.
        return std::make_unique<ScriptedExecution>(_state).release();
    }

    std::string getMetadata(JNIEnv* env, const std::string& jobText, void*& reserved, int flags,
                            const EmbeddedHV::Container& container) override
    {
        const bool plain = reserved == nullptr && flags == 0;
        return answer("getMetadata", jobText + (plain ? ";" : ";reserved;") + container.getName(),
                      env);
    }
    using Names = std::vector<std::string>;
    void reservedOperation() override {}
    std::string getMapServiceLayers(JNIEnv* env, const std::string& url) override
    {
        return answer("getMapServiceLayers", url, env);
    }
    void getGeographics(JNIEnv* env, Names& names) override
    {
        names.push_back(answer("getGeographics", "", env));
    }
    void getProjections(JNIEnv* env, Names& names) override
    {
        names.push_back(answer("getProjections", "", env));
    }
    void getRecommendPCSs(JNIEnv* env, const std::string& input, int count, Names& names) override
    {
        names.push_back(answer("getRecommendPCSs", input + ";" + std::to_string(count), env));
    }
    void getRecommendPCSs(JNIEnv* env, const std::string& input, Names& names) override
    {
        names.push_back(answer("getRecommendPCSs", input, env));
    }
    std::string getCoordinatesSystemInfo(JNIEnv* env, const std::string& name) override
    {
        return answer("getCoordinatesSystemInfo", name, env);
    }
    std::string getCoordinatesSystemInfo(JNIEnv* env, int wkid) override
    {
        return answer("getCoordinatesSystemInfo", std::to_string(wkid), env);
    }

private:
    std::string answer(const char* call, const std::string& argument, JNIEnv* env)
    {
        _state.record(call, argument, env);
        const std::lock_guard guard(_state.mutex);
        if (call == std::string("getMetadata") || _state.answers.empty())
            return _state.metadata;
        const auto found = _state.answers.find(std::string(call) + "(" + argument + ")");
        return found != _state.answers.end() ? found->second : std::string();
    }

    ScriptedEngine::State& _state;
};

} // namespace

// Shuts down the service that uses this engine before the state is destroyed.
ScriptedEngine::ScriptedEngine() : _state(std::make_unique<State>())
{
    StatHVServiceManager::shutdown();
    EmbeddedHV::setBackendFactory(
        [state = _state.get()](JNIEnv* env, const EmbeddedHV::EHVAppSetting& settings) {
            state->record("start", settings.locale(), env);
            const std::lock_guard guard(state->mutex);
            state->starts.push_back(settings);
            return std::make_unique<ScriptedBackend>(*state);
        });
}

ScriptedEngine::~ScriptedEngine()
{
    StatHVServiceManager::shutdown();
    EmbeddedHV::setBackendFactory({});
}

void ScriptedEngine::setScript(Script script)
{
    const std::lock_guard guard(_state->mutex);
    _state->script = std::move(script);
}

void ScriptedEngine::throwAt(const std::string& call, Fault fault)
{
    const std::lock_guard guard(_state->mutex);
    _state->faults[call] = fault;
}

void ScriptedEngine::onCall(const std::string& call, std::function<void()> hook)
{
    const std::lock_guard guard(_state->mutex);
    _state->hooks[call] = std::move(hook);
}

void ScriptedEngine::setCallHook(std::function<void()> hook)
{
    const std::lock_guard guard(_state->mutex);
    _state->callHook = std::move(hook);
}

void ScriptedEngine::setMetadata(const std::string& xml)
{
    const std::lock_guard guard(_state->mutex);
    _state->metadata = xml;
}

void ScriptedEngine::setAnswer(const std::string& query, const std::string& answer)
{
    const std::lock_guard guard(_state->mutex);
    _state->answers[query] = answer;
}

void ScriptedEngine::setOutputs(Outputs outputs)
{
    const std::lock_guard guard(_state->mutex);
    _state->outputs = std::move(outputs);
}

std::vector<std::string> ScriptedEngine::argumentsOf(const std::string& name) const
{
    std::vector<std::string> arguments;
    for (const EngineCall& call : calls())
        if (call.name == name)
            arguments.push_back(call.argument);
    return arguments;
}

std::vector<EngineCall> ScriptedEngine::calls() const
{
    const std::lock_guard guard(_state->mutex);
    return _state->calls;
}

std::vector<std::string> ScriptedEngine::callNames() const
{
    std::vector<std::string> names;
    for (const EngineCall& call : calls())
        names.push_back(call.argument.empty() ? call.name : call.name + "(" + call.argument + ")");
    return names;
}

void ScriptedEngine::clearCalls()
{
    const std::lock_guard guard(_state->mutex);
    _state->calls.clear();
}

bool ScriptedEngine::waitUntilRunning(int seconds) const
{
    std::unique_lock lock(_state->mutex);
    return _state->changed.wait_for(lock, std::chrono::seconds(seconds),
                                    [this] { return _state->running; });
}

std::vector<EmbeddedHV::EHVAppSetting> ScriptedEngine::starts() const
{
    const std::lock_guard guard(_state->mutex);
    return _state->starts;
}
