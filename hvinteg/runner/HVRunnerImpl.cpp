#include "runner/HVRunnerImpl.h"

#include <utility>

#include "CFAppHost.h"
#include "HVServiceManager.h"
#include "MetadataService.h"
#include "bridge/JNIObjectManager.h"
#include "bridge/JavaThreadScope.h"
#include "runner/HVProgressListener.h"
#include "runner/HVStatContainer.h"
#include "runner/HVStatDataIterator.h"
#include "runner/HostBlocks.h"
#include "runner/StatHVServiceManager.h"

namespace {

/// That of the thread which attached last, asked anew for each call: the runner may change threads.
JNIEnv* managerEnv()
{
    return JNIObjectManager::getManager()->getEnv();
}

} // namespace

HVRunnerImpl::HVRunnerImpl(HVProgressListener* listener, bool hasProcedure)
    : _listener(listener), _hasProcedure(hasProcedure)
{
    // An earlier runner may have left the manager on another thread.
    JNIObjectManager::getManager()->reAttachJVM();
    updateAppSetting();
}

HVRunnerImpl::~HVRunnerImpl()
{
    try {
        cleanExecution();
    } catch (...) { // NOLINT(bugprone-empty-catch): the execution is gone, and nobody can be told
    }
    JNIObjectManager::getManager()->cleanJRef();
}

void HVRunnerImpl::updateAppSetting()
{
    CFAppHost::update();
    _locale = CFAppHost::getInstance()->getLocale();
}

void HVRunnerImpl::prepareHVLJob(const std::string& jobText)
{
    _listener->reset();
    cleanExecution();
    updateAppSetting();
    EmbeddedHV::ExecutionService* const service =
        StatHVServiceManager::get(_hasProcedure)->getExecutionService();
    _execution.reset(service->createExecution(_locale));
    _execution->prepare(managerEnv(), jobText);
}

void HVRunnerImpl::addInputContainer(HVStatContainer* container)
{
    _execution->addInputContainer(managerEnv(), container);
}

void HVRunnerImpl::addOutputContainer(HVStatContainer* container)
{
    _execution->addOutputContainer(managerEnv(), container);
}

void HVRunnerImpl::addInputIterator(HVStatDataIterator* iterator)
{
    _execution->addInputIterator(managerEnv(), iterator, nullptr);
}

bool HVRunnerImpl::execute()
{
    _execution->execute(managerEnv(), _listener);
    // A cancelled job has not failed: its output is cut short, and the state tells that.
    return _listener->getState() != HVProgressListener::Failed;
}

void HVRunnerImpl::cancelExecution()
{
    if (_execution != nullptr) {
        const JavaThreadScope thread;
        _execution->cancel(thread.env());
    }
    if (_hasProcedure)
        endHostRun();
    _stopped = true;
}

void HVRunnerImpl::cleanExecution()
{
    // Out of the member first, so that it is deleted even if the engine throws.
    const std::unique_ptr<EmbeddedHV::Execution> ended = std::move(_execution);
    if (ended != nullptr)
        ended->dispose(managerEnv());
}

void HVRunnerImpl::resetStopRrocessor()
{
    if (_hasProcedure)
        _stopped = false;
}

EmbeddedHV::RowDataIterator* HVRunnerImpl::getOutputIterator(const std::string& fileName)
{
    try {
        return _execution->getOutputIterator(managerEnv(), fileName);
    } catch (...) {
        return nullptr;
    }
}

bool HVRunnerImpl::askService(
    const std::function<void(EmbeddedHV::MetadataService&, JNIEnv*)>& question)
{
    cleanExecution();
    try {
        question(*StatHVServiceManager::get(_hasProcedure)->getMetaDataService(), managerEnv());
        return true;
    } catch (...) {
        return false;
    }
}

bool HVRunnerImpl::getMetadata(const std::string& jobText, const HVStatContainer& container,
                               std::string& metadata)
{
    const bool answered = askService([&](EmbeddedHV::MetadataService& service, JNIEnv* env) {
        void* reserved = nullptr;
        metadata = service.getMetadata(env, jobText, reserved, 0, container);
    });
    if (answered)
        return !metadata.empty();
    // The empty text is how a caller tells a failure; the result says nothing of it.
    metadata.clear();
    return true;
}
