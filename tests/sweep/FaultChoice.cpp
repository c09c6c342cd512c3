#include "sweep/FaultChoice.h"

#include "FaultLayer.h"
#include "VexaJVM.h"
#include "support/RecordingJni.h"
#include "sweep/EngineFaults.h"
#include "sweep/Road.h"

namespace {

class LayerFault : public FaultChoice
{
public:
    LayerFault(faultlayer::Kind kind, faultlayer::Scope scope, const char* cause)
        : _kind(kind), _scope(scope), _cause(cause)
    {
    }
    void arm(long number) override { faultlayer::arm(_kind, _scope, number); }
    Outcome disarm() override
    {
        const faultlayer::Outcome outcome = faultlayer::disarm();
        return {outcome.calls, outcome.delivered, outcome.site, {}, _cause};
    }

private:
    faultlayer::Kind _kind;
    faultlayer::Scope _scope;
    const char* _cause;
};

class JniFault : public FaultChoice
{
public:
    explicit JniFault(RecordingJni::Fault fault) : _fault(fault) {}
    void arm(long number) override { jni().failAt(static_cast<int>(number), _fault); }
    Outcome disarm() override
    {
        const bool delivered = jni().endFault();
        return {
            jni().faultableCalls(), delivered, nullptr, std::string(jni().failedFunction()), {}};
    }

private:
    static RecordingJni& jni()
    {
        return RecordingJni::install(VexaJVM::GetInstance()->GetJavaVM(), true);
    }
    RecordingJni::Fault _fault;
};

class EngineFault : public FaultChoice
{
public:
    EngineFault(Fault fault, EngineFaults& engine) : _fault(fault), _engine(engine) {}
    void arm(long number) override { _engine.arm(number, _fault); }
    Outcome disarm() override
    {
        Outcome outcome;
        outcome.calls = _engine.disarm(outcome.delivered);
        return outcome;
    }

private:
    Fault _fault;
    EngineFaults& _engine;
};

struct JniKind
{
    const char* name;
    RecordingJni::Fault fault;
};
constexpr JniKind kJniKinds[] = {{"jni-memory", RecordingJni::Fault::OutOfMemory},
                                 {"jni-nothing", RecordingJni::Fault::NothingReturned},
                                 {"jni-exception", RecordingJni::Fault::Exception}};

struct EngineKind
{
    const char* name;
    Fault fault;
};
constexpr EngineKind kEngineKinds[] = {{"engine", Fault::Engine},
                                       {"engine-java", Fault::Java},
                                       {"engine-standard", Fault::Standard},
                                       {"engine-unknown", Fault::Unknown}};

struct LayerKind
{
    const char* name;
    faultlayer::Kind kind;
    faultlayer::Scope scope = faultlayer::Scope::Ours;
    const char* cause = "";
};
constexpr LayerKind kLayerKinds[] = {
    {"new", faultlayer::Kind::New},
    {"malloc", faultlayer::Kind::Malloc},
    {"thread", faultlayer::Kind::Thread, faultlayer::Scope::Ours, "cannot start a thread"},
    // The database writes most of the files.
    {"open", faultlayer::Kind::Open, faultlayer::Scope::OursAndDatabase},
    {"write", faultlayer::Kind::Write, faultlayer::Scope::OursAndDatabase},
    {"sync", faultlayer::Kind::Sync, faultlayer::Scope::OursAndDatabase},
    {"rename", faultlayer::Kind::Rename, faultlayer::Scope::OursAndDatabase},
    {"read", faultlayer::Kind::Read, faultlayer::Scope::OursAndDatabase},
};

} // namespace

std::vector<std::string> faultKinds()
{
    std::vector<std::string> names;
    for (const auto& kind : kLayerKinds)
        names.emplace_back(kind.name);
    for (const auto& kind : kJniKinds)
        names.emplace_back(kind.name);
    for (const auto& kind : kEngineKinds)
        names.emplace_back(kind.name);
    return names;
}

std::unique_ptr<FaultChoice> makeFault(const std::string& name, Road& road)
{
    for (const auto& kind : kLayerKinds)
        if (name == kind.name)
            return std::make_unique<LayerFault>(kind.kind, kind.scope, kind.cause);
    for (const auto& kind : kJniKinds)
        if (name == kind.name)
            return std::make_unique<JniFault>(kind.fault);
    for (const auto& kind : kEngineKinds)
        if (name == kind.name)
            return std::make_unique<EngineFault>(kind.fault, road.engineFaults());
    return nullptr;
}
