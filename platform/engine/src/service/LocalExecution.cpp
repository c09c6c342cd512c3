#include "service/LocalExecution.h"

#include <atomic>
#include <new>
#include <utility>

#include <unistd.h>

#include "EngineException.h"
#include "ErrorIds.h"
#include "runtime/Reporter.h"
#include "service/ContractFaults.h"
#include "service/Job.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kRefusal = "the engine cannot take the job";

/// Unique within this process. The process id makes it unlikely that another process uses it.
std::string newExecutionId()
{
    static std::atomic<unsigned long> counter = 0;
    return "hv-" + std::to_string(getpid()) + "-" + std::to_string(++counter);
}

} // namespace

LocalExecution::LocalExecution(std::shared_ptr<EngineResources> resources)
    : _resources(std::move(resources)),
      _context(std::in_place, *_resources->engine, _resources->files, _resources->dataSources)
{
    _context->cancellation = &_cancellation;
}

LocalExecution::~LocalExecution()
{
    release();
}

JobContext& LocalExecution::context()
{
    if (!_context)
        throw Exception("the execution has been disposed");
    return *_context;
}

void LocalExecution::prepare(JNIEnv*, const std::string& jobText)
{
    context();
    contracted(kRefusal, [&] { _jobText = jobText; });
}

void LocalExecution::addInputContainer(JNIEnv*, Container* container)
{
    JobContext& job = context();
    contracted(kRefusal, [&] { job.containers.push_back(container); });
}

void LocalExecution::addOutputContainer(JNIEnv*, Container* container)
{
    addInputContainer(nullptr, container);
}

void LocalExecution::addInputIterator(JNIEnv*, RowDataIterator* iterator, void*)
{
    JobContext& job = context();
    // Exceptions of the iterator are the caller's own and pass.
    const std::string name = iterator->getName();
    contracted(kRefusal, [&] {
        const auto [known, isNew] = job.iterators.try_emplace(name, iterator);
        // A job refers to rows by name. It could not reach one of the two.
        if (!isNew && known->second != iterator)
            throw Exception("the job has a row iterator named \"" + name + "\" already");
    });
}

void LocalExecution::execute(JNIEnv*, ExecutionListener* listener)
{
    context();
    Reporter reporter(*listener, _cancellation);
    reporter.init(newExecutionId());
    std::optional<JobError> fault;
    const Ending ending = run(reporter, fault);
    _messages = reporter.takeMessages();
    // No statement may reach an iterator from here on.
    _context->iteratorInputs.clear();
    _context->profiles.clear();
    _context->unwritten.clear();
    _context->dropTables();
    switch (ending) {
    case Ending::Success:
        reporter.success();
        break;
    case Ending::Cancelled:
        reporter.cancelled();
        break;
    case Ending::Error:
        reporter.error(*fault);
        break;
    }
    // Last, so that the job is cleaned up before an exception of the listener passes.
    reporter.rethrow();
}

LocalExecution::Ending LocalExecution::run(Reporter& reporter, std::optional<JobError>& fault)
{
    std::set<std::string> reported; // a statement that is planned twice reports its messages once
    _context->message = [&](const std::string& id, const FaultParts& parts) {
        if (reported.insert(id + sentenceOf(parts)).second)
            reporter.message(id, parts);
    };
    const auto unexpected = [&fault](const std::string& what) {
        fault.emplace(errors::kInternal, "the job failed: " + what);
    };
    try {
        Job(*_context, reporter, _cancellation).run(_jobText);
        return Ending::Success;
    } catch (const JobCancelled&) {
        return Ending::Cancelled;
    } catch (const JobError& error) {
        fault = error;
    } catch (const Exception& exception) {
        unexpected(exception.getMessage());
    } catch (const JavaException& exception) {
        unexpected(exception.getMessage());
    } catch (const std::bad_alloc&) {
        fault.emplace(errors::kOutOfMemory, "the job failed: there is not enough memory");
    } catch (const std::exception& exception) {
        unexpected(exception.what());
    } catch (...) {
        unexpected("unknown exception");
    }
    // After a cancellation, any failure is a consequence of it.
    return _cancellation.cancelled() ? Ending::Cancelled : Ending::Error;
}

RowDataIterator* LocalExecution::getOutputIterator(JNIEnv*, const std::string& fileName)
{
    const auto found = context().written.find(fileName);
    if (found == _context->written.end())
        throw Exception("the job has written no file \"" + fileName + "\"");
    try {
        return _outputs
            .emplace_back(std::make_unique<RowFile>(
                *_resources->database, _context->dataFiles->fetched(*_context, found->second),
                _context->files.scratchFolder()))
            .get();
    } catch (const std::exception& exception) {
        throw Exception("the rows of \"" + fileName + "\" cannot be read: " + exception.what());
    }
}

void LocalExecution::cancel(JNIEnv*)
{
    _cancellation.cancel();
}

void LocalExecution::dispose(JNIEnv*)
{
    release();
}

void LocalExecution::release()
{
    _outputs.clear();
    if (_context)
        _context->dropTables();
    _context.reset();
    _resources.reset();
}

} // namespace EmbeddedHV
