#include "VexaJVM.h"

#include <atomic>
#include <clocale>
#include <condition_variable>
#include <mutex>
#include <utility>

#include "JNIAccessor.h"
#include "JNIException.h"
#include "JavaThread.h"
#include "JvmLibrary.h"
#include "JvmOptions.h"
#include "JvmOutput.h"
#include "JvmStart.h"
#include "VexaJVMError.h"
#include "base/ScopeExit.h"
#include "datafile/StartedThread.h"

namespace {
constexpr const char* ProbeClass = "com/zor/json/java/JSONObject";

/// The text of a JNI result code.
std::string describeResult(jint result)
{
    struct Row
    {
        jint code;
        const char* text;
    };
    static constexpr Row rows[] = {{JNI_EDETACHED, "the thread is not attached"},
                                   {JNI_EVERSION, "it is too old"},
                                   {JNI_ENOMEM, "there is not enough memory"},
                                   {JNI_EEXIST, "the process has one already"},
                                   {JNI_EINVAL, "an option is wrong"}};
    for (const Row& row : rows)
        if (row.code == result)
            return row.text;
    return "error " + std::to_string(result);
}

/// The table refers to the texts.
std::vector<JavaVMOption> optionTable(std::vector<std::string>& texts)
{
    std::vector<JavaVMOption> table = JvmOutput::hooks();
    for (std::string& text : texts)
        table.push_back({text.data(), nullptr});
    return table;
}

/// A readable jar may lack the classes, or contain them for a later machine.
void requireClasses(JNIEnv* env, const std::string& jar)
{
    try {
        JNIAccessor accessor(env);
        accessor.setClass(ProbeClass);
        accessor.exceptionCheck();
    } catch (const JNIException& exception) {
        throw VexaJVMError("The engine's jar is broken: " + jar + ": " + exception.className() +
                           ": " + exception.message());
    }
}

/// The thread that starts the machine is never detached.
void attachStarter(JavaVM* machine, JNIEnv** env)
{
    const jint result = JavaThread::current().attachForGood(machine, env);
    if (result != JNI_OK)
        throw VexaJVMError("The thread that starts the Java virtual machine cannot be attached: " +
                           describeResult(result));
}
} // namespace

struct VexaJVM::Impl
{
    enum class State
    {
        NotStarted,
        Starting,
        Started,
        Failed ///< final: the process cannot start another one
    };

    std::mutex mutex;
    std::condition_variable changed;
    State state = State::NotStarted;
    std::string failure;
    std::string libraryPath;
    std::vector<std::string> classPath;
    std::vector<std::string> added;
    std::atomic<JavaVM*> machine = nullptr; ///< read without the lock, at every reference
    JvmOutput output;

    Impl() { output.install(); }
    bool claimStart();
    /// Ends the start and wakes the waiting threads.
    void finishStart(State next);
    /// Starts the machine on the calling thread. A start that fails before the machine is created
    /// may be repeated; later the process cannot create another one.
    void start(JNIEnv** env);
    [[noreturn]] void fail(const std::string& reason, bool isForGood);
    void create(const JvmLibrary& library, JvmOptions options, JNIEnv** env);
};

/// Returns true if the caller must start the machine, false if it has started.
bool VexaJVM::Impl::claimStart()
{
    std::unique_lock<std::mutex> lock(mutex);
    changed.wait(lock, [this] { return state != State::Starting; });
    if (state == State::Failed)
        throw VexaJVMError(failure);
    if (state == State::Started)
        return false;
    state = State::Starting;
    return true;
}

void VexaJVM::Impl::finishStart(State next)
{
    const std::lock_guard<std::mutex> lock(mutex);
    state = next;
    changed.notify_all();
}

void VexaJVM::Impl::fail(const std::string& reason, bool isForGood)
{
    machine = nullptr;
    failure = reason;
    finishStart(isForGood ? State::Failed : State::NotStarted);
    throw VexaJVMError(reason);
}

void VexaJVM::Impl::start(JNIEnv** env)
{
    bool created = false;
    try {
        JvmOptions options = jvmOptions(added);
        const JvmLibrary library = JvmLibrary::load();
        libraryPath = library.path();
        classPath = {options.jar};
        // From here on the process has used its only attempt.
        created = true;
        create(library, std::move(options), env);
        finishStart(State::Started);
    } catch (const VexaJVMError& error) {
        fail(error.what(), created);
    } catch (const datafile::ThreadFault& fault) {
        // The machine has not been created yet.
        fail(std::string("The Java virtual machine does not start: ") + fault.what(), false);
    } catch (const std::exception& exception) {
        fail(std::string("The Java virtual machine does not start: ") + exception.what(), created);
    }
}

void VexaJVM::Impl::create(const JvmLibrary& library, JvmOptions options, JNIEnv** env)
{
    // The machine sets the locale of the process from the environment during the start, which could
    // give the host decimal commas in its numbers.
    const std::string locale = std::setlocale(LC_ALL, nullptr);
    const base::ScopeExit restore([&] { std::setlocale(LC_ALL, locale.c_str()); });
    const std::vector<JavaVMOption> table = optionTable(options.texts);
    JvmOutput::watchExit();
    output.beginStart();
    // Moving the vector does not move its strings.
    const JvmStart::Outcome outcome = JvmStart::create(library, table, std::move(options.texts));
    const std::string printed = output.endStart();
    if (outcome.result != JNI_OK)
        throw VexaJVMError("The Java virtual machine of " + library.path() + " does not start: " +
                           (outcome.result ? describeResult(*outcome.result) : "it gave up") +
                           (printed.empty() ? "" : "\n" + printed));
    attachStarter(outcome.machine, env);
    machine = outcome.machine;
    requireClasses(*env, options.jar);
}

VexaJVM::VexaJVM() : _impl(std::make_unique<Impl>()) {}
VexaJVM::~VexaJVM() = default;

VexaJVM* VexaJVM::GetInstance()
{
    // Never destroyed: the machine's threads print, and static objects of the host may release
    // references, until the process ends.
    static VexaJVM* const instance = new VexaJVM;
    return instance;
}

bool VexaJVM::IsStarted() const
{
    const std::lock_guard<std::mutex> lock(_impl->mutex);
    return _impl->state == Impl::State::Started;
}

bool VexaJVM::WaitForStartedJVM()
{
    std::unique_lock<std::mutex> lock(_impl->mutex);
    _impl->changed.wait(lock, [this] { return _impl->state != Impl::State::Starting; });
    return _impl->state == Impl::State::Started;
}

void VexaJVM::StartJVMAndAttachThread(JNIEnv** env)
{
    *env = nullptr;
    if (_impl->claimStart())
        _impl->start(env);
    else
        AttachCurrentThread(env);
}

void VexaJVM::AttachCurrentThread(JNIEnv** env)
{
    *env = nullptr;
    JavaVM* machine = GetJavaVM();
    if (machine == nullptr)
        throw VexaJVMError("The Java virtual machine has not started");
    const jint result = JavaThread::current().attach(machine, env);
    if (result != JNI_OK)
        throw VexaJVMError("A thread cannot be attached to the Java virtual machine: " +
                           describeResult(result));
}

void VexaJVM::DetachCurrentThread()
{
    JavaThread::current().detach();
}

JavaVM* VexaJVM::GetJavaVM() const
{
    return _impl->machine;
}

const std::string& VexaJVM::LibraryPath() const
{
    return _impl->libraryPath;
}

const std::vector<std::string>& VexaJVM::ClassPath() const
{
    return _impl->classPath;
}

void VexaJVM::AddOption(const std::string& option)
{
    const std::lock_guard<std::mutex> lock(_impl->mutex);
    _impl->added.push_back(option);
}

void VexaJVM::SetOutput(std::function<void(const std::string&)> output)
{
    _impl->output.setReceiver(std::move(output));
}

void VexaJVM::SetEndHandler(std::function<void(const std::string&)> handler)
{
    _impl->output.setEndHandler(std::move(handler));
}
