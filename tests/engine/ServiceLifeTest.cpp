#include "engine/EngineFixture.h"

#include <functional>
#include <utility>

#include "EngineBackend.h"
#include "EngineException.h"
#include "runtime/Database.h"
#include "support/CountedAllocations.h"

using namespace EmbeddedHV;
using namespace EngineTest;

namespace {

class ServiceLifeTest : public EngineFixture
{
protected:
    ~ServiceLifeTest() override { setBackendFactory({}); }

    EHVAppSetting settings() const { return {path("root"), "", "en_US"}; }
    std::unique_ptr<HVServiceManager> start() const
    {
        return std::make_unique<HVServiceManager>(nullptr, settings());
    }
    /// A job from in.csv to out.csv.
    std::unique_ptr<Execution> jobOf(ExecutionService& executions) const
    {
        write("in.csv", "a\n1\n");
        std::unique_ptr<Execution> execution(executions.createExecution("en_US"));
        execution->prepare(nullptr, expanded(readCsv("in.csv") + " -> " + writeCsv("out.csv")));
        return execution;
    }
    static std::string endingOf(Execution& execution)
    {
        RecordingListener listener;
        execution.execute(nullptr, &listener);
        return listener.ending;
    }
};

TEST_F(ServiceLifeTest, AnExecutionOutlivesItsService)
{
    auto first = start();
    const auto waiting = jobOf(*first->getExecutionService());
    const auto ended = jobOf(*first->getExecutionService());
    EXPECT_EQ(endingOf(*ended), "success");
    RowDataIterator* const rows = ended->getOutputIterator(nullptr, "out.csv");
    ASSERT_EQ(rows->nextRecord(), RowDataIterator::RecordAvailable);
    first.reset();

    const auto second = start();
    EXPECT_EQ(rows->nextRecord(), RowDataIterator::EndOfData);
    EXPECT_EQ(endingOf(*waiting), "success");
    waiting->cancel(nullptr);
    for (Execution* const execution : {ended.get(), waiting.get()})
        execution->dispose(nullptr);
    EXPECT_EQ(endingOf(*jobOf(*second->getExecutionService())), "success");
}

/// A backend that passes everything on, as one does that adds something of its own.
class PassingBackend : public Backend
{
public:
    explicit PassingBackend(std::unique_ptr<Backend> inner) : _inner(std::move(inner)) {}
    ExecutionService* getExecutionService() override { return _inner->getExecutionService(); }
    MetadataService* getMetaDataService() override { return _inner->getMetaDataService(); }

private:
    std::unique_ptr<Backend> _inner;
};

/// The same on a service manager.
class ManagedBackend : public Backend
{
public:
    ManagedBackend(JNIEnv* env, const EHVAppSetting& settings) : _inner(env, settings) {}
    ExecutionService* getExecutionService() override { return _inner.getExecutionService(); }
    MetadataService* getMetaDataService() override { return _inner.getMetaDataService(); }

private:
    HVServiceManager _inner;
};

TEST_F(ServiceLifeTest, AFactoryMayBuildOnTheEmbeddedEngine)
{
    const std::string payload = "what the factory holds, and too long to lie within the object";
    const std::pair<const char*, BackendFactory> rows[] = {
        {"by a backend",
         [](JNIEnv* env, const EHVAppSetting& given) {
             return std::make_unique<PassingBackend>(makeEmbeddedBackend(env, given));
         }},
        {"by a service manager",
         [](JNIEnv* env, const EHVAppSetting& given) {
             return std::make_unique<ManagedBackend>(env, given);
         }},
        {"and take itself away",
         [payload](JNIEnv* env, const EHVAppSetting& given) {
             setBackendFactory({});
             EXPECT_TRUE(payload.starts_with("what"));
             return makeEmbeddedBackend(env, given);
         }},
    };
    for (const auto& [what, factory] : rows) {
        SCOPED_TRACE(what);
        setBackendFactory(factory);
        const auto manager = start();
        const auto execution = jobOf(*manager->getExecutionService());
        EXPECT_EQ(endingOf(*execution), "success");
        execution->dispose(nullptr);
    }
}

TEST_F(ServiceLifeTest, AFactoryWithoutABackendIsAnException)
{
    setBackendFactory([](JNIEnv*, const EHVAppSetting&) { return nullptr; });
    for (int attempt = 0; attempt < 2; ++attempt)
        EXPECT_THROW(start(), Exception);
    setBackendFactory([](JNIEnv*, const EHVAppSetting&) -> std::unique_ptr<Backend> { throw 1; });
    EXPECT_THROW(start(), int);
    setBackendFactory({});
    EXPECT_NE(start()->getMetaDataService(), nullptr);
}

TEST_F(ServiceLifeTest, TheSettingsChooseTheBackendOrSayWhatIsWrong)
{
    const auto start = [this](const std::string& backend, const std::string& url,
                              const std::string& sums) -> std::string {
        EHVAppSetting given = settings();
        given.addProperty(kBackendSetting, backend);
        given.addProperty(kUrlSetting, url);
        given.addProperty(kSumsSetting, sums);
        try {
            const HVServiceManager manager(nullptr, given);
            return "starts";
        } catch (const Exception& exception) {
            return exception.getMessage();
        }
    };
    registerBackend("passing", makeEmbeddedBackend);
    registerBackend("none", [](JNIEnv*, const EHVAppSetting&) { return nullptr; });
    const struct
    {
        const char* backend;
        const char* url;
        const char* outcome;
        const char* sums = "";
    } rows[] = {
        {"", "", "starts"},
        {"embedded", "sc://unused:1", "starts"},
        {"passing", "", "starts"},
        {"none", "", "the factory returned no backend"},
        {"sparc", "", "there is no backend \"sparc\"; did you mean \"spark\"?"},
        {"spark", "", "the setting \"engine.url\" is missing"},
        {"spark", "http://host", "is \"http://host\", not the address of a Spark Connect server"},
        {"spark", "sc://host", "\"engine.sums\" is \"fast\", not exact or double", "fast"},
        {"spark", "sc://host/;token=secret", "the client of Spark clusters is not installed"},
    };
    for (const auto& row : rows) {
        const std::string outcome = start(row.backend, row.url, row.sums);
        EXPECT_THAT(outcome, testing::HasSubstr(row.outcome)) << row.backend << " " << row.url;
        EXPECT_THAT(outcome, testing::Not(testing::HasSubstr("secret")));
    }
}

TEST_F(ServiceLifeTest, TheSettingsGiveTheDatabaseItsFolderAndThreads)
{
    EHVAppSetting given = settings();
    given.addProperty("ae.temp.path", path("spill"));
    given.addProperty("mmr.threads", "1");
    Database database;
    database.configure(given);
    const auto setting = [&](const char* name) {
        return database.connect()
            ->query(std::string("SELECT CAST(current_setting('") + name + "') AS VARCHAR)")
            .bytes(0, 0);
    };
    EXPECT_THAT(setting("temp_directory"), testing::StartsWith(path("spill") + "/hv-spill-"));
    EXPECT_EQ(setting("threads"), "1");
}

TEST_F(ServiceLifeTest, TheEndOfALeaseAllocatesNothing)
{
    Database database;
    std::vector<ConnectionLease> leases;
    for (int i = 0; i < 9; ++i)
        leases.push_back(database.connect());
    const long long before = allocations;
    leases.clear();
    EXPECT_EQ(allocations, before);
}

} // namespace
