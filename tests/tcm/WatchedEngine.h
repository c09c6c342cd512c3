#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "EngineBackend.h"
#include "Execution.h"
#include "ExecutionListener.h"
#include "runner/StatHVServiceManager.h"

/// A point in the life of a job.
enum class Moment
{
    Prepared, ///< the engine has its text
    Started,  ///< onInit, on a thread of the engine
    Message,  ///< a message, on a thread of the engine
    Record,   ///< the test's rows are read, on a thread of the engine
    Ended     ///< the engine has called the last callback
};

/// What the engine did since the last clear.
struct WatchedJobs
{
    std::vector<std::string> texts; ///< of prepared jobs
    int executed = 0;
    int cancelled = 0; ///< ended with onCancel
    int open = 0;      ///< executions that exist now
    /// Called at each moment of the last prepared job.
    std::function<void(Moment)> observer = [](Moment) {};
};

/// The working engine, which reports the moments of its jobs to a test.
class WatchedEngine
{
public:
    WatchedEngine()
    {
        StatHVServiceManager::shutdown();
        EmbeddedHV::setBackendFactory([this](JNIEnv* env,
                                             const EmbeddedHV::EHVAppSetting& settings) {
            return std::make_unique<Engine>(EmbeddedHV::makeEmbeddedBackend(env, settings), jobs);
        });
    }
    ~WatchedEngine()
    {
        StatHVServiceManager::shutdown();
        EmbeddedHV::setBackendFactory({});
    }
    WatchedEngine(const WatchedEngine&) = delete;
    WatchedEngine& operator=(const WatchedEngine&) = delete;

    WatchedJobs jobs;

private:
    class Listener : public EmbeddedHV::ExtendedExecutionListener
    {
    public:
        Listener(EmbeddedHV::ExecutionListener& inner, WatchedJobs& jobs)
            : _inner(dynamic_cast<EmbeddedHV::ExtendedExecutionListener&>(inner)), _jobs(jobs)
        {
        }
        void onCancel() override
        {
            ++_jobs.cancelled;
            _inner.onCancel();
        }
        void onError(const std::string& id, const std::string& text,
                     const std::string& detail) override
        {
            _inner.onError(id, text, detail);
        }
        void onInit(const std::string& executionId) override
        {
            _inner.onInit(executionId);
            _jobs.observer(Moment::Started);
        }
        void onMessage(const std::string& text) override { _inner.onMessage(text); }
        void onMessage(const std::string& id, const std::string& text) override
        {
            _inner.onMessage(id, text);
            _jobs.observer(Moment::Message);
        }
        void onProgress(float fraction) override { _inner.onProgress(fraction); }
        void onSuccess() override { _inner.onSuccess(); }

    private:
        EmbeddedHV::ExtendedExecutionListener& _inner;
        WatchedJobs& _jobs;
    };

    class Job : public EmbeddedHV::Execution
    {
    public:
        Job(EmbeddedHV::Execution* inner, WatchedJobs& jobs) : _inner(inner), _jobs(jobs)
        {
            ++_jobs.open;
        }
        ~Job() override { --_jobs.open; }
        void prepare(JNIEnv* env, const std::string& jobText) override
        {
            _inner->prepare(env, jobText);
            _jobs.texts.push_back(jobText);
            _jobs.observer(Moment::Prepared);
        }
        void addInputContainer(JNIEnv* env, EmbeddedHV::Container* container) override
        {
            _inner->addInputContainer(env, container);
        }
        void addOutputContainer(JNIEnv* env, EmbeddedHV::Container* container) override
        {
            _inner->addOutputContainer(env, container);
        }
        void addInputIterator(JNIEnv* env, EmbeddedHV::RowDataIterator* rows,
                              void* reserved) override
        {
            _inner->addInputIterator(env, rows, reserved);
        }
        void execute(JNIEnv* env, EmbeddedHV::ExecutionListener* listener) override
        {
            Listener watched(*listener, _jobs);
            ++_jobs.executed;
            _inner->execute(env, &watched);
            _jobs.observer(Moment::Ended);
        }
        EmbeddedHV::RowDataIterator* getOutputIterator(JNIEnv* env,
                                                       const std::string& name) override
        {
            return _inner->getOutputIterator(env, name);
        }
        void cancel(JNIEnv* env) override { _inner->cancel(env); }
        void dispose(JNIEnv* env) override { _inner->dispose(env); }

    private:
        std::unique_ptr<EmbeddedHV::Execution> _inner;
        WatchedJobs& _jobs;
    };

    class Engine : public EmbeddedHV::Backend, public EmbeddedHV::ExecutionService
    {
    public:
        Engine(std::unique_ptr<EmbeddedHV::Backend> inner, WatchedJobs& jobs)
            : _inner(std::move(inner)), _jobs(jobs)
        {
        }
        EmbeddedHV::ExecutionService* getExecutionService() override { return this; }
        EmbeddedHV::MetadataService* getMetaDataService() override
        {
            return _inner->getMetaDataService();
        }
        EmbeddedHV::Execution* createExecution(const std::string& locale) override
        {
            // The caller owns both, as in the contract.
            return std::make_unique<Job>(_inner->getExecutionService()->createExecution(locale),
                                         _jobs)
                .release();
        }

    private:
        std::unique_ptr<EmbeddedHV::Backend> _inner;
        WatchedJobs& _jobs;
    };
};
