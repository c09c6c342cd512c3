#include "spark/SparkClient.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <mutex>
#include <utility>

namespace EmbeddedHV {

/// The classes and methods of the Java client. Valid on every thread, as long as the process.
struct SparkClasses
{
    SparkClasses(JavaVM* machine, const std::string& folder);

    jclass classNamed(JavaVM* machine, const JavaScope& scope, const char* name);

    std::vector<JavaObject> kept; ///< the references to the classes
    jclass session = nullptr;
    jclass stream = nullptr;
    jclass batch = nullptr;
    jclass upload = nullptr;
    jclass fault = nullptr;
    jmethodID newSession = nullptr;
    jmethodID connect = nullptr;
    jmethodID abandon = nullptr;
    jmethodID configure = nullptr;
    jmethodID schema = nullptr;
    jmethodID query = nullptr;
    jmethodID command = nullptr;
    jmethodID registerView = nullptr;
    jmethodID newUpload = nullptr;
    jmethodID addCounted = nullptr;
    jmethodID interrupt = nullptr;
    jmethodID close = nullptr;
    jmethodID next = nullptr;
    jmethodID takeBatch = nullptr;
    jmethodID streamSchema = nullptr;
    jmethodID progress = nullptr;
    jmethodID counts = nullptr;
    jmethodID endStream = nullptr;
    jmethodID newBatch = nullptr;
    jmethodID records = nullptr;
    jmethodID block = nullptr;
    jmethodID layout = nullptr;
    jmethodID registerRows = nullptr;
    jmethodID append = nullptr;
    jmethodID faultData = nullptr;
};

namespace {

#define HV_CLUSTER "com/vexa/ae/cluster/"
constexpr const char* kLoader = "com/vexa/ae/loading/ClusterLibrary";
constexpr const char* kStreamType = "L" HV_CLUSTER "ResultStream;";
constexpr const char* kBatchType = "L" HV_CLUSTER "ColumnBatch;";

/// A class by its name with dots, from the loader of the client.
jclass loadedClass(const JavaScope& scope, jobject loader, const char* name)
{
    JNIEnv* const env = scope.env();
    const jclass type = env->FindClass("java/lang/ClassLoader");
    throwJavaException(scope);
    const jmethodID load =
        env->GetMethodID(type, "loadClass", "(Ljava/lang/String;)Ljava/lang/Class;");
    throwJavaException(scope);
    jvalue argument{};
    argument.l = scope.text(name);
    const jobject loaded = env->CallObjectMethodA(loader, load, &argument);
    throwJavaException(scope);
    return static_cast<jclass>(loaded);
}

/// The class of the sessions, in a class loader of its own.
jclass openedLibrary(const JavaScope& scope, const std::string& folder)
{
    JNIEnv* const env = scope.env();
    const jclass library = env->FindClass(kLoader);
    throwJavaException(scope);
    const jmethodID open =
        env->GetStaticMethodID(library, "open", "(Ljava/lang/String;)Ljava/lang/Class;");
    throwJavaException(scope);
    jvalue argument{};
    argument.l = scope.text(folder);
    const jobject session = env->CallStaticObjectMethodA(library, open, &argument);
    throwJavaException(scope);
    return static_cast<jclass>(session);
}

jobject loaderOf(const JavaScope& scope, jclass type)
{
    JNIEnv* const env = scope.env();
    const jclass classes = env->FindClass("java/lang/Class");
    throwJavaException(scope);
    const jmethodID loader =
        env->GetMethodID(classes, "getClassLoader", "()Ljava/lang/ClassLoader;");
    throwJavaException(scope);
    const jobject result = env->CallObjectMethodA(type, loader, nullptr);
    throwJavaException(scope);
    return result;
}

jmethodID methodOf(const JavaScope& scope, jclass type, const char* name,
                   const std::string& signature)
{
    const jmethodID method = scope.env()->GetMethodID(type, name, signature.c_str());
    throwJavaException(scope);
    return method;
}

jvalue valueOf(jobject object)
{
    jvalue value{};
    value.l = object;
    return value;
}

jvalue valueOf(std::int64_t number)
{
    jvalue value{};
    value.j = number;
    return value;
}

/// Throws the pending exception, if there is one, as a ClusterFault.
void throwFault(const SparkClasses& classes, const JavaScope& scope)
{
    JNIEnv* const env = scope.env();
    if (env->ExceptionCheck() == JNI_FALSE)
        return;
    const jthrowable thrown = env->ExceptionOccurred();
    env->ExceptionClear(); // few functions may be called with a pending exception
    if (env->IsInstanceOf(thrown, classes.fault) == JNI_FALSE) {
        env->Throw(thrown);
        throw ClusterFault(ClusterFaultKind::Use, takeJavaException(scope));
    }
    const jobject data = env->CallObjectMethodA(thrown, classes.faultData, nullptr);
    if (env->ExceptionCheck() == JNI_TRUE)
        throw ClusterFault(ClusterFaultKind::Use, takeJavaException(scope));
    throw ClusterFault::of(scope.utf8(data));
}

jobject called(const SparkClasses& classes, const JavaScope& scope, jobject object,
               jmethodID method, const jvalue* arguments = nullptr)
{
    const jobject result = scope.env()->CallObjectMethodA(object, method, arguments);
    throwFault(classes, scope);
    return result;
}

void call(const SparkClasses& classes, const JavaScope& scope, jobject object, jmethodID method,
          const jvalue* arguments = nullptr)
{
    scope.env()->CallVoidMethodA(object, method, arguments);
    throwFault(classes, scope);
}

std::vector<std::int64_t> numbersOf(const JavaScope& scope, jobject list)
{
    JNIEnv* const env = scope.env();
    const auto numbers = static_cast<jlongArray>(list);
    std::vector<std::int64_t> result(static_cast<std::size_t>(env->GetArrayLength(numbers)));
    static_assert(sizeof(jlong) == sizeof(std::int64_t));
    env->GetLongArrayRegion(numbers, 0, static_cast<jsize>(result.size()),
                            reinterpret_cast<jlong*>(result.data()));
    return result;
}

/// Calls close and ignores its exceptions: whoever closes needs nothing more.
void closeQuietly(JavaVM* machine, const JavaObject& object, jmethodID close) noexcept
{
    if (!object)
        return;
    try {
        const JavaScope scope(machine);
        scope.env()->CallVoidMethodA(object.get(), close, nullptr);
        if (scope.env()->ExceptionCheck() == JNI_TRUE)
            scope.env()->ExceptionClear();
    } catch (const std::exception&) {
        return;
    }
}

jobject batchOf(const SparkClasses& classes, const JavaScope& scope, const ArrowBlock& block)
{
    JNIEnv* const env = scope.env();
    const jobject bytes = env->NewDirectByteBuffer(block.bytes, static_cast<jlong>(block.size));
    throwFault(classes, scope);
    const jlongArray layout = env->NewLongArray(static_cast<jsize>(block.layout.size()));
    throwFault(classes, scope);
    static_assert(sizeof(jlong) == sizeof(std::int64_t));
    env->SetLongArrayRegion(layout, 0, static_cast<jsize>(block.layout.size()),
                            reinterpret_cast<const jlong*>(block.layout.data()));
    const jvalue arguments[] = {valueOf(static_cast<std::int64_t>(block.records)), valueOf(bytes),
                                valueOf(layout)};
    const jobject batch = env->NewObjectA(classes.batch, classes.newBatch, arguments);
    throwFault(classes, scope);
    return batch;
}

} // namespace

jclass SparkClasses::classNamed(JavaVM* machine, const JavaScope& scope, const char* name)
{
    const jobject loader = loaderOf(scope, session);
    kept.emplace_back(machine, scope, loadedClass(scope, loader, name));
    return static_cast<jclass>(kept.back().get());
}

SparkClasses::SparkClasses(JavaVM* machine, const std::string& folder)
{
    const JavaScope scope(machine);
    kept.emplace_back(machine, scope, openedLibrary(scope, folder));
    session = static_cast<jclass>(kept.back().get());
    stream = classNamed(machine, scope, "com.vexa.ae.cluster.ResultStream");
    batch = classNamed(machine, scope, "com.vexa.ae.cluster.ColumnBatch");
    upload = classNamed(machine, scope, "com.vexa.ae.cluster.RowUpload");
    fault = classNamed(machine, scope, "com.vexa.ae.cluster.ClusterFault");
    const std::string text = "Ljava/lang/String;";
    newSession = methodOf(scope, session, "<init>", "(" + text + "JJ)V");
    connect = methodOf(scope, session, "connect", "()" + text);
    abandon = methodOf(scope, session, "abandon", "()V");
    configure = methodOf(scope, session, "configure", "([" + text + ")V");
    schema = methodOf(scope, session, "schema", "(" + text + ")" + text);
    query = methodOf(scope, session, "query", "(" + text + text + ")" + kStreamType);
    command = methodOf(scope, session, "command", "(" + text + text + ")" + kStreamType);
    registerView = methodOf(scope, session, "register", "(" + text + text + ")V");
    newUpload =
        methodOf(scope, session, "upload", "([" + text + "[" + text + ")L" HV_CLUSTER "RowUpload;");
    addCounted = methodOf(scope, session, "addCounted", "(" + text + text + "[" + text + ")V");
    interrupt = methodOf(scope, session, "interrupt", "(" + text + ")I");
    close = methodOf(scope, session, "close", "()V");
    next = methodOf(scope, stream, "next", "()I");
    takeBatch = methodOf(scope, stream, "batch", std::string("()") + kBatchType);
    streamSchema = methodOf(scope, stream, "schema", "()" + text);
    progress = methodOf(scope, stream, "progress", "()[J");
    counts = methodOf(scope, stream, "counts", "()[J");
    endStream = methodOf(scope, stream, "close", "()V");
    newBatch = methodOf(scope, batch, "<init>", "(JLjava/nio/ByteBuffer;[J)V");
    records = methodOf(scope, batch, "records", "()J");
    block = methodOf(scope, batch, "block", "()Ljava/nio/ByteBuffer;");
    layout = methodOf(scope, batch, "layout", "()[J");
    registerRows = methodOf(scope, upload, "register", "(" + text + kBatchType + ")V");
    append = methodOf(scope, upload, "append", "(" + text + kBatchType + text + ")V");
    faultData = methodOf(scope, fault, "data", "()" + text);
}

SparkLibrary::SparkLibrary(JavaVM* machine, std::string folder)
    : _machine(machine), _folder(std::move(folder))
{
}

bool SparkLibrary::isInstalled() const
{
    std::error_code error;
    const std::filesystem::directory_iterator files(_folder, error);
    return !error && std::any_of(begin(files), end(files), [](const auto& file) {
        return file.path().extension() == ".jar";
    });
}

const SparkClasses& SparkLibrary::classes() const
{
    static std::mutex mutex;
    // Never freed: Java keeps the classes until the process ends.
    static auto& loaded = *std::make_unique<std::map<std::string, SparkClasses>>().release();
    const std::lock_guard lock(mutex);
    if (const auto known = loaded.find(_folder); known != loaded.end())
        return known->second;
    try {
        return loaded.try_emplace(_folder, _machine, _folder).first->second;
    } catch (const JavaFailure& error) {
        throw ClusterFault(ClusterFaultKind::Use, error.what());
    }
}

SparkStream::SparkStream(const SparkLibrary& library, JavaObject stream)
    : _library(&library), _stream(std::move(stream))
{
}

SparkStream::~SparkStream()
{
    if (_stream)
        closeQuietly(_library->machine(), _stream, _library->classes().endStream);
}

SparkStream::Event SparkStream::next()
{
    const SparkClasses& classes = _library->classes();
    const JavaScope scope(_library->machine());
    const jint event = scope.env()->CallIntMethodA(_stream.get(), classes.next, nullptr);
    throwFault(classes, scope);
    switch (event) {
    case 0:
        return Event::End;
    case 1:
        return Event::Batch;
    default:
        return Event::Report;
    }
}

ArrowBlock SparkStream::batch()
{
    const SparkClasses& classes = _library->classes();
    const JavaScope scope(_library->machine());
    JNIEnv* const env = scope.env();
    const jobject batch = called(classes, scope, _stream.get(), classes.takeBatch);
    _batch = JavaObject(_library->machine(), scope, batch);
    ArrowBlock result;
    result.records =
        static_cast<std::size_t>(env->CallLongMethodA(batch, classes.records, nullptr));
    throwFault(classes, scope);
    const jobject block = called(classes, scope, batch, classes.block);
    result.bytes = static_cast<std::uint8_t*>(env->GetDirectBufferAddress(block));
    result.size = static_cast<std::size_t>(env->GetDirectBufferCapacity(block));
    const jobject layout = called(classes, scope, batch, classes.layout);
    result.layout = numbersOf(scope, layout);
    return result;
}

std::string SparkStream::schema()
{
    const SparkClasses& classes = _library->classes();
    const JavaScope scope(_library->machine());
    return scope.utf8(called(classes, scope, _stream.get(), classes.streamSchema));
}

double SparkStream::progress()
{
    const SparkClasses& classes = _library->classes();
    const JavaScope scope(_library->machine());
    const auto numbers =
        static_cast<jlongArray>(called(classes, scope, _stream.get(), classes.progress));
    jlong tasks[2] = {}; // all that are known, and those that are done
    scope.env()->GetLongArrayRegion(numbers, 0, 2, tasks);
    throwFault(classes, scope);
    return tasks[0] > 0 ? static_cast<double>(tasks[1]) / static_cast<double>(tasks[0]) : 0;
}

std::vector<std::int64_t> SparkStream::counts() const
{
    const SparkClasses& classes = _library->classes();
    const JavaScope scope(_library->machine());
    return numbersOf(scope, called(classes, scope, _stream.get(), classes.counts));
}

SparkClient::SparkClient(const SparkLibrary& library, const std::string& url,
                         std::int64_t callMillis, std::int64_t retryMillis)
    : _library(library), _classes(library.classes())
{
    const JavaScope scope(_library.machine());
    const jvalue arguments[] = {valueOf(scope.text(url)), valueOf(callMillis),
                                valueOf(retryMillis)};
    const jobject session =
        scope.env()->NewObjectA(_classes.session, _classes.newSession, arguments);
    throwFault(_classes, scope);
    _session = JavaObject(_library.machine(), scope, session);
}

SparkClient::~SparkClient()
{
    closeQuietly(_library.machine(), _session, _classes.close);
}

std::string SparkClient::connect()
{
    const JavaScope scope(_library.machine());
    return scope.utf8(called(_classes, scope, _session.get(), _classes.connect));
}

void SparkClient::abandon()
{
    const JavaScope scope(_library.machine());
    call(_classes, scope, _session.get(), _classes.abandon);
}

void SparkClient::configure(const std::vector<std::string>& settings)
{
    const JavaScope scope(_library.machine());
    const jvalue argument = valueOf(scope.texts(settings));
    call(_classes, scope, _session.get(), _classes.configure, &argument);
}

std::string SparkClient::schema(const std::string& query)
{
    const JavaScope scope(_library.machine());
    const jvalue argument = valueOf(scope.text(query));
    return scope.utf8(called(_classes, scope, _session.get(), _classes.schema, &argument));
}

SparkStream SparkClient::start(jmethodID method, const std::string& sql, const std::string& tag)
{
    const JavaScope scope(_library.machine());
    const jvalue arguments[] = {valueOf(scope.text(sql)), valueOf(scope.text(tag))};
    const jobject stream = called(_classes, scope, _session.get(), method, arguments);
    return {_library, JavaObject(_library.machine(), scope, stream)};
}

SparkStream SparkClient::query(const std::string& sql, const std::string& tag)
{
    return start(_classes.query, sql, tag);
}

SparkStream SparkClient::command(const std::string& sql, const std::string& tag)
{
    return start(_classes.command, sql, tag);
}

void SparkClient::registerView(const std::string& view, const std::string& query)
{
    const JavaScope scope(_library.machine());
    const jvalue arguments[] = {valueOf(scope.text(view)), valueOf(scope.text(query))};
    call(_classes, scope, _session.get(), _classes.registerView, arguments);
}

void SparkClient::addCounted(const std::string& name, const std::string& query,
                             const std::vector<std::string>& metrics)
{
    const JavaScope scope(_library.machine());
    const jvalue arguments[] = {valueOf(scope.text(name)), valueOf(scope.text(query)),
                                valueOf(scope.texts(metrics))};
    call(_classes, scope, _session.get(), _classes.addCounted, arguments);
}

void SparkClient::interrupt(const std::string& tag)
{
    const JavaScope scope(_library.machine());
    const jvalue argument = valueOf(scope.text(tag));
    scope.env()->CallIntMethodA(_session.get(), _classes.interrupt, &argument);
    throwFault(_classes, scope);
}

JavaObject SparkClient::upload(const std::vector<std::string>& names,
                               const std::vector<std::string>& types)
{
    const JavaScope scope(_library.machine());
    const jvalue arguments[] = {valueOf(scope.texts(names)), valueOf(scope.texts(types))};
    const jobject upload = called(_classes, scope, _session.get(), _classes.newUpload, arguments);
    return {_library.machine(), scope, upload};
}

void SparkClient::registerRows(const JavaObject& upload, const std::string& view,
                               const ArrowBlock& block)
{
    const JavaScope scope(_library.machine());
    const jvalue arguments[] = {valueOf(scope.text(view)),
                                valueOf(batchOf(_classes, scope, block))};
    call(_classes, scope, upload.get(), _classes.registerRows, arguments);
}

void SparkClient::appendRows(const JavaObject& upload, const std::string& path,
                             const ArrowBlock& block, const std::string& tag)
{
    const JavaScope scope(_library.machine());
    const jvalue arguments[] = {valueOf(scope.text(path)), valueOf(batchOf(_classes, scope, block)),
                                valueOf(scope.text(tag))};
    call(_classes, scope, upload.get(), _classes.append, arguments);
}

} // namespace EmbeddedHV
