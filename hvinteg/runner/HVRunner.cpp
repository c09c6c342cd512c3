#include "runner/HVRunner.h"

#include <algorithm>

#include "ParserMessage.h"
#include "VexaDataSource.h"
#include "bridge/JNIObjectManager.h"
#include "runner/HVProgressListener.h"
#include "runner/HVRunnerImpl.h"
#include "runner/HostBlocks.h"

namespace {

/// Has the adapter hold a handler for a scope. The handler before it comes back on every way out.
class InterruptScope
{
public:
    explicit InterruptScope(VexaAdapter::InterruptHandler& handler)
        : _earlier(GetAdapter()->getInterruptHandler())
    {
        GetAdapter()->setInterruptHandler(&handler);
    }
    ~InterruptScope() { GetAdapter()->setInterruptHandler(_earlier); }
    InterruptScope(const InterruptScope&) = delete;
    InterruptScope& operator=(const InterruptScope&) = delete;

private:
    VexaAdapter::InterruptHandler* _earlier;
};

} // namespace

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
    // First, since a cancel under way on another thread still uses the members.
    _impl->endCancels();
    // 0 stands for none, and then nothing was taken away.
    if (_savedWeight > 0)
        writeHostWeight(_savedWeight);
    if (_savedSplit > 0)
        writeHostSplit(_savedSplit);
    // Before the listener, which a remaining execution may still know.
    _impl.reset();
}

bool HVRunner::prepareActiveDS(ProcedureDataSource& dataSource, bool supportsWeight,
                               bool supportsSplit)
{
    if (dataSource.ColumnCount() == 0)
        return true;
    const HostSettings found = readHostSettings();
    // A second call finds both turned off by the first one, and keeps what that one found.
    _savedWeight = found.weight > 0 ? found.weight : std::max(_savedWeight, found.weight);
    _savedSplit = found.split > 0 ? found.split : std::max(_savedSplit, found.split);
    // From here on the data come unweighted and in one piece; the job weighs and splits itself.
    writeHostWeight(0);
    writeHostSplit(0);
    if (_savedWeight > 0 && !supportsWeight)
        _parserMessage->DisableWeight();
    if (_savedSplit > 0 && !supportsSplit)
        _parserMessage->DisableSplit();
    AdjustMeasurementLevels(dataSource);
    // The engine reads all cases in one run, so the end of a split group must not end them.
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
    // Before the handler goes in: a stopped runner leaves no trace in the host.
    if (_impl->isStopProcessor())
        return false;
    if (_procedure == nullptr)
        return _impl->execute();
    InterruptHandler handler(this);
    const InterruptScope scope(handler);
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
    _impl->resetStopRrocessor();
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
