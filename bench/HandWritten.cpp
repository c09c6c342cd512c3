#include "HandWritten.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

namespace bench {

namespace {

/// Java calls as a person writes them who has the environment at hand and wants no wrapper.
class Hand
{
public:
    explicit Hand(JNIEnv* env)
        : _env(env), _programClass(env->FindClass("com/vexa/ae/hvlhelpers/HvlProgram")),
          _objectClass(env->FindClass("com/zor/json/java/JSONObject")),
          _arrayClass(env->FindClass("com/zor/json/java/JSONArray"))
    {
    }

    Hand(const Hand&) = delete;
    Hand& operator=(const Hand&) = delete;

    ~Hand()
    {
        for (const jobject reference : _globals)
            _env->DeleteGlobalRef(reference);
        for (const jclass type : {_programClass, _objectClass, _arrayClass})
            _env->DeleteLocalRef(type);
    }

    jobject newProgram() { return create(_programClass); }
    jobject newObject() { return create(_objectClass); }
    jobject newArray() { return create(_arrayClass); }

    void put(jobject object, const char* key, jobject value)
    {
        const jmethodID method = _env->GetMethodID(
            _objectClass, "put", "(Ljava/lang/Object;Ljava/lang/Object;)Ljava/lang/Object;");
        const jstring name = _env->NewStringUTF(key);
        drop(_env->CallObjectMethod(object, method, name, value));
        drop(name);
        check();
    }

    void put(jobject object, const char* key, const char* value)
    {
        const jstring text = _env->NewStringUTF(value);
        put(object, key, static_cast<jobject>(text));
        drop(text);
    }

    void add(jobject array, const char* value)
    {
        const jmethodID method = _env->GetMethodID(_arrayClass, "add", "(Ljava/lang/Object;)Z");
        const jstring text = _env->NewStringUTF(value);
        _env->CallBooleanMethod(array, method, text);
        drop(text);
        check();
    }

    jobject addFunction(jobject program, const char* name, jobject configuration, jobject input)
    {
        const jmethodID method =
            input == nullptr
                ? _env->GetMethodID(_programClass, "createHvlFunction",
                                    "(Ljava/lang/String;Lcom/zor/json/java/JSONObject;)"
                                    "Lcom/vexa/ae/hvlhelpers/HvlFunction;")
                : _env->GetMethodID(_programClass, "createHvlFunction",
                                    "(Ljava/lang/String;Lcom/zor/json/java/JSONObject;"
                                    "Lcom/vexa/ae/hvlhelpers/HvlFunction;)"
                                    "Lcom/vexa/ae/hvlhelpers/HvlFunction;");
        const jstring text = _env->NewStringUTF(name);
        const jobject function =
            input == nullptr ? _env->CallObjectMethod(program, method, text, configuration)
                             : _env->CallObjectMethod(program, method, text, configuration, input);
        drop(text);
        check();
        return keep(function);
    }

    std::string render(jobject program)
    {
        const jobject fragments = _env->CallObjectMethod(
            program, _env->GetMethodID(_programClass, "getFragments", "()Ljava/util/Set;"));
        check();
        const jobject order = _env->CallStaticObjectMethod(
            _programClass,
            _env->GetStaticMethodID(_programClass, "sortFragmentsIntoExecutionOrder",
                                    "(Ljava/util/Set;)Ljava/util/List;"),
            fragments);
        check();
        drop(fragments);
        const jclass listClass = _env->GetObjectClass(order);
        const jmethodID get = _env->GetMethodID(listClass, "get", "(I)Ljava/lang/Object;");
        const jint size = _env->CallIntMethod(order, _env->GetMethodID(listClass, "size", "()I"));
        std::string text;
        for (jint i = 0; i < size; ++i) {
            const jobject fragment = _env->CallObjectMethod(order, get, i);
            text += renderFragment(keep(fragment));
            if (i + 1 < size)
                text += '\n';
        }
        drop(listClass);
        drop(order);
        return text;
    }

private:
    jobject create(jclass type)
    {
        const jobject object = _env->NewObject(type, _env->GetMethodID(type, "<init>", "()V"));
        check();
        return keep(object);
    }

    std::string renderFragment(jobject fragment)
    {
        const jclass type = _env->GetObjectClass(fragment);
        const auto java = static_cast<jstring>(_env->CallObjectMethod(
            fragment, _env->GetMethodID(type, "toHVLText", "()Ljava/lang/String;")));
        check();
        const char* characters = _env->GetStringUTFChars(java, nullptr);
        std::string text = characters;
        _env->ReleaseStringUTFChars(java, characters);
        drop(java);
        drop(type);
        return text;
    }

    jobject keep(jobject local)
    {
        const jobject global = _env->NewGlobalRef(local);
        _globals.push_back(global);
        drop(local);
        return global;
    }

    void drop(jobject local) { _env->DeleteLocalRef(local); }

    void check()
    {
        if (_env->ExceptionCheck() == JNI_FALSE)
            return;
        std::fprintf(stderr, "bench: a Java exception\n");
        std::exit(1);
    }

    JNIEnv* _env;
    jclass _programClass;
    jclass _objectClass;
    jclass _arrayClass;
    std::vector<jobject> _globals;
};

} // namespace

std::string composeByHand(JNIEnv* env, int functions)
{
    Hand hand(env);
    const jobject program = hand.newProgram();
    const jobject source = hand.newObject();
    hand.put(source, "dataSource", "rows");
    jobject last = hand.addFunction(program, "read", source, nullptr);
    for (int i = 1; i < functions; ++i) {
        const jobject fields = hand.newArray();
        hand.add(fields, "weather");
        hand.add(fields, "wind");
        const jobject configuration = hand.newObject();
        hand.put(configuration, "fields", fields);
        last = hand.addFunction(program, "filterFields", configuration, last);
    }
    return hand.render(program);
}

} // namespace bench
