#include "runner/HVRunner.h"

#include <algorithm>

#include "ParserMessage.h"
#include "VexaDataSource.h"
#include "base/ScopeExit.h"
#include "bridge/JNIObjectManager.h"
#include "runner/HVProgressListener.h"
#include "runner/HVRunnerImpl.h"
#include "runner/HostBlocks.h"

HVRunner::InterruptHandler::~InterruptHandler() = default;

void HVRunner::InterruptHandler::interrupt()
{
    _runner->cancelExecution();
}

HVRunner::HVRunner(TnProcedure* procedure)
    : _parserMessage(std::make_unique<ParserMessage>()), _procedure(procedure),
      _listener(std::make_unique<HVProgressListener>(procedure))
{
    _impl = std::make_unique<HVRunnerImpl>(_listener.get(), procedure != nullptr);
}

HVRunner::~HVRunner()
{
    // First: a cancel on another thread still uses the members.
    _impl->endCancels();
    // A value that is not above 0 was not in force.
    if (_savedWeight > 0)
        writeHostWeight(_savedWeight);
    if (_savedSplit > 0)
        writeHostSplit(_savedSplit);
    // Before the listener: a remaining execution may refer to it.
    _impl.reset();
}

bool HVRunner::prepareActiveDS(ProcedureDataSource& dataSource, bool supportsWeight,
                               bool supportsSplit)
{
    if (dataSource.ColumnCount() == 0)
        return true;
    const HostSettings found = readHostSettings();
    // A second call finds both turned off and keeps the values of the first.
    _savedWeight = found.weight > 0 ? found.weight : std::max(_savedWeight, found.weight);
    _savedSplit = found.split > 0 ? found.split : std::max(_savedSplit, found.split);
    // From now on the data are unweighted and not split; the job weights and splits itself.
    writeHostWeight(0);
    writeHostSplit(0);
    if (_savedWeight > 0 && !supportsWeight)
        _parserMessage->DisableWeight();
    if (_savedSplit > 0 && !supportsSplit)
        _parserMessage->DisableSplit();
    AdjustMeasurementLevels(dataSource);
    // The engine reads all cases in one run, so reading must not stop at the end of a split group.
    dataSource.SetSplitEndCheck(false);
    return true;
}

bool HVRunner::prepareHVLJob(const std::string& jobText)
{
    _impl->prepareHVLJob(jobText);
    return true;
}

bool HVRunner::addInputContainer(HVStatContainer* container)
{
    _impl->addInputContainer(container);
    return true;
}

bool HVRunner::addOutputContainer(HVStatContainer* container)
{
    _impl->addOutputContainer(container);
    return true;
}

bool HVRunner::addInputIterator(HVStatDataIterator* iterator)
{
    _impl->addInputIterator(iterator);
    return true;
}

bool HVRunner::execute()
{
    // Test first: a stopped runner must not change anything in the host.
    if (_impl->isStopProcessor())
        return false;
    if (_procedure == nullptr)
        return _impl->execute();
    InterruptHandler handler(this);
    VexaAdapter& adapter = *GetAdapter();
    VexaAdapter::InterruptHandler* const earlier = adapter.getInterruptHandler();
    adapter.setInterruptHandler(&handler);
    const base::ScopeExit restore([&] { adapter.setInterruptHandler(earlier); });
    return _impl->execute();
}

void HVRunner::cancelExecution()
{
    _impl->cancelExecution();
}

bool HVRunner::isStopProcessor()
{
    return _impl->isStopProcessor();
}

void HVRunner::resetStopRrocessor()
{
    _impl->clearStop();
}

void HVRunner::cleanExecution()
{
    _impl->cleanExecution();
}

void HVRunner::cleanJRef()
{
    JNIObjectManager::getManager()->cleanJRef();
}

void HVRunner::resetJNI()
{
    JNIObjectManager::getManager()->reAttachJVM();
}

void HVRunner::displayAllMessages(bool showError, bool splitLabel)
{
    _listener->displayAllMessages(showError, splitLabel);
}

std::string HVRunner::getMessageDetail(const std::string& text) const
{
    return _impl->messageDetail(text);
}

void HVRunner::displayMessage() {}

bool HVRunner::displayOutputs()
{
    return true;
}

EmbeddedHV::RowDataIterator* HVRunner::getOutputIterator(const std::string& fileName)
{
    return _impl->getOutputIterator(fileName);
}

bool HVRunner::getMetadata(const std::string& jobText, const HVStatContainer& container,
                           std::string& metadata)
{
    return _impl->getMetadata(jobText, container, metadata);
}

const ParserMessage* HVRunner::getParserMessage() const
{
    return _parserMessage.get();
}

HVProgressListener* HVRunner::getProgressListener()
{
    return _listener.get();
}

void HVRunner::UpdataHVAppSetting()
{
    _impl->updateAppSetting();
}
