#include "runner/HVRunnerImpl.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "CFAppHost.h"
#include "HVServiceManager.h"
#include "MetadataService.h"
#include "base/ScopeExit.h"
#include "bridge/JNIObjectManager.h"
#include "runner/HVProgressListener.h"
#include "runner/HVStatContainer.h"
#include "runner/HVStatDataIterator.h"
#include "runner/StatHVServiceManager.h"

namespace {

/// The environment of the thread that attached last. Asked for at each call, because the runner may
/// change threads.
JNIEnv* managerEnv()
{
    return JNIObjectManager::getManager()->getEnv();
}

/// Runs a part of a destructor and ignores what it throws.
template <class Work>
void quietly(Work work) noexcept
{
    try {
        work();
    } catch (...) { // NOLINT(bugprone-empty-catch)
    }
}

} // namespace

HVRunnerImpl::HVRunnerImpl(HVProgressListener* listener, bool hasProcedure)
    : _listener(listener), _hasProcedure(hasProcedure)
{
    // An earlier runner may have left the manager attached on another thread.
    JNIObjectManager::getManager()->reAttachJVM();
    updateAppSetting();
}

HVRunnerImpl::~HVRunnerImpl()
{
    quietly([this] { cleanExecution(); });
    quietly([] { JNIObjectManager::getManager()->cleanJRef(); });
}

void HVRunnerImpl::updateAppSetting()
{
    CFAppHost::update();
    _locale = CFAppHost::getInstance()->getLocale();
}

void HVRunnerImpl::prepareHVLJob(const std::string& jobText)
{
    _listener->reset();
    _messages.clear();
    cleanExecution();
    updateAppSetting();
    EmbeddedHV::ExecutionService* const service =
        StatHVServiceManager::get(_hasProcedure)->getExecutionService();
    // The engine returns an owning plain pointer.
    _execution.hold(std::unique_ptr<EmbeddedHV::Execution>(service->createExecution(_locale)));
    _execution->prepare(managerEnv(), jobText);
    // Only now: the engine need not support a cancel while it reads the text.
    _execution.open();
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
    // Kept here: callers read messages after the end of the execution.
    if (const auto* const reports = dynamic_cast<EmbeddedHV::MessageReports*>(_execution.get()))
        _messages = reports->reportedMessages();
    // A cancelled job has not failed; its output is incomplete, which the state shows.
    return _listener->getState() != HVProgressListener::Failed;
}

std::string HVRunnerImpl::messageDetail(const std::string& text) const
{
    const auto found =
        std::find_if(_messages.begin(), _messages.end(),
                     [&](const EmbeddedHV::ReportedMessage& known) { return known.text == text; });
    return found == _messages.end() ? std::string() : found->detail;
}

void HVRunnerImpl::cancelExecution()
{
    _execution.cancel(_hasProcedure);
}

void HVRunnerImpl::cleanExecution()
{
    // Move out of the member first: it is deleted even if the engine throws.
    const std::shared_ptr<EmbeddedHV::Execution> ended = _execution.take();
    if (ended != nullptr)
        ended->dispose(managerEnv());
}

void HVRunnerImpl::clearStop()
{
    if (_hasProcedure)
        _execution.resetStop();
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
    try {
        cleanExecution();
        EmbeddedHV::MetadataService& service =
            *StatHVServiceManager::get(_hasProcedure)->getMetaDataService();
        // A stop of the runner ends the question, if the engine supports that.
        auto* const questions = dynamic_cast<EmbeddedHV::StoppableQuestions*>(&service);
        const auto setStop = [questions](std::function<bool()> isStopped) {
            if (questions != nullptr)
                questions->setStop(std::move(isStopped));
        };
        setStop([this] { return isStopProcessor(); });
        const base::ScopeExit restore([&] { setStop({}); });
        question(service, managerEnv());
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
    // The empty text shows the failure, not the result.
    metadata.clear();
    return true;
}
