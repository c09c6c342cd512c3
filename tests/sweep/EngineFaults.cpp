#include "sweep/EngineFaults.h"

#include <memory>
#include <utility>

#include "EHVAppSetting.h"
#include "EngineBackend.h"
#include "Execution.h"
#include "HVServiceManager.h"
#include "MetadataService.h"
#include "runner/StatHVServiceManager.h"

using namespace EmbeddedHV;

void EngineFaults::arm(long number, Fault fault)
{
    _calls = 0;
    _delivered = false;
    _fault = fault;
    _failing = number;
}

long EngineFaults::disarm(bool& delivered)
{
    _failing = 0;
    delivered = _delivered;
    return _calls;
}

void EngineFaults::onCall()
{
    if (++_calls != _failing)
        return;
    _delivered = true;
    raiseFault(_fault);
}

namespace {

EngineFaults* faults = nullptr;

class FaultyExecution : public Execution
{
public:
    explicit FaultyExecution(std::unique_ptr<Execution> execution)
        : _execution(std::move(execution))
    {
    }
    void prepare(JNIEnv* env, const std::string& jobText) override
    {
        faults->onCall();
        _execution->prepare(env, jobText);
    }
    void addInputContainer(JNIEnv* env, Container* container) override
    {
        faults->onCall();
        _execution->addInputContainer(env, container);
    }
    void addOutputContainer(JNIEnv* env, Container* container) override
    {
        faults->onCall();
        _execution->addOutputContainer(env, container);
    }
    void addInputIterator(JNIEnv* env, RowDataIterator* iterator, void* reserved) override
    {
        faults->onCall();
        _execution->addInputIterator(env, iterator, reserved);
    }
    void execute(JNIEnv* env, ExecutionListener* listener) override
    {
        faults->onCall();
        _execution->execute(env, listener);
    }
    RowDataIterator* getOutputIterator(JNIEnv* env, const std::string& fileName) override
    {
        faults->onCall();
        return _execution->getOutputIterator(env, fileName);
    }
    void cancel(JNIEnv* env) override
    {
        faults->onCall();
        _execution->cancel(env);
    }
    void dispose(JNIEnv* env) override
    {
        _execution->dispose(env);
        faults->onCall();
    }

private:
    std::unique_ptr<Execution> _execution;
};

/// The backend is both of its services.
class FaultyBackend : public Backend, public ExecutionService, public MetadataService
{
public:
    FaultyBackend(JNIEnv* env, const EHVAppSetting& settings) : _embedded(env, settings) {}
    ExecutionService* getExecutionService() override { return this; }
    MetadataService* getMetaDataService() override { return this; }
    Execution* createExecution(const std::string& locale) override
    {
        faults->onCall();
        std::unique_ptr<Execution> made(_embedded.getExecutionService()->createExecution(locale));
        // The contract hands the object to the caller.
        return std::make_unique<FaultyExecution>(std::move(made)).release();
    }

    using Names = std::vector<std::string>;
    std::string getMetadata(JNIEnv* env, const std::string& jobText, void*& reserved, int flags,
                            const Container& container) override
    {
        return checked().getMetadata(env, jobText, reserved, flags, container);
    }
    void reservedOperation() override {}
    std::string getMapServiceLayers(JNIEnv* env, const std::string& url) override
    {
        return checked().getMapServiceLayers(env, url);
    }
    void getGeographics(JNIEnv* env, Names& names) override
    {
        checked().getGeographics(env, names);
    }
    void getProjections(JNIEnv* env, Names& names) override
    {
        checked().getProjections(env, names);
    }
    void getRecommendPCSs(JNIEnv* env, const std::string& input, int count, Names& names) override
    {
        checked().getRecommendPCSs(env, input, count, names);
    }
    void getRecommendPCSs(JNIEnv* env, const std::string& input, Names& names) override
    {
        checked().getRecommendPCSs(env, input, names);
    }
    std::string getCoordinatesSystemInfo(JNIEnv* env, const std::string& name) override
    {
        return checked().getCoordinatesSystemInfo(env, name);
    }
    std::string getCoordinatesSystemInfo(JNIEnv* env, int wkid) override
    {
        return checked().getCoordinatesSystemInfo(env, wkid);
    }

private:
    MetadataService& checked()
    {
        faults->onCall();
        return *_embedded.getMetaDataService();
    }

    HVServiceManager _embedded;
};

/// A service manager that is made here must use the embedded engine.
std::unique_ptr<Backend> makeFaultyBackend(JNIEnv* env, const EHVAppSetting& settings)
{
    faults->onCall();
    setBackendFactory({});
    struct Restore
    {
        ~Restore() { setBackendFactory(&makeFaultyBackend); }
    } const restore;
    return std::make_unique<FaultyBackend>(env, settings);
}

} // namespace

FaultyEngine::FaultyEngine(EngineFaults& chosen)
{
    faults = &chosen;
    StatHVServiceManager::shutdown();
    setBackendFactory(&makeFaultyBackend);
}

FaultyEngine::~FaultyEngine()
{
    StatHVServiceManager::shutdown();
    setBackendFactory({});
}
