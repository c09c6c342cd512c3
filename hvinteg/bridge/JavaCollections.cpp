#include "bridge/JavaCollections.h"

#include <algorithm>

namespace JavaCollections {
namespace {
/// Creates a collection with room for `size` elements.
LocalRef<> withCapacity(JNIHvlAccessor& caller, const char* className, std::size_t size)
{
    return JavaCall(caller, caller.classNamed(className), "<init>", "(I)V")
        .number(static_cast<jint>(size))
        .construct();
}

/// Looks `add` up once for all elements.
void addAll(JNIHvlAccessor& caller, const char* className, jobject collection,
            const Wrappers& elements, bool skipsNull)
{
    JavaCall add(caller, caller.classNamed(className), "add", "(Ljava/lang/Object;)Z");
    for (const JNIHvlAccessor* element : elements)
        if (element != nullptr || !skipsNull)
            add.value(element).callBoolean(collection);
}

/// The `put` of java.util.HashMap. It returns the previous value.
JavaCall putInto(JNIHvlAccessor& caller)
{
    return JavaCall(caller, caller.classNamed("java/util/HashMap"), "put",
                    "(Ljava/lang/Object;Ljava/lang/Object;)Ljava/lang/Object;");
}

/// Creates an array of nulls.
LocalRef<jobjectArray> newArray(JNIHvlAccessor& caller, const char* elementClass, std::size_t size,
                                OnFailure onFailure)
{
    jclass const type = caller.classNamed(elementClass);
    jobjectArray array = nullptr;
    if (type != nullptr)
        array = caller.getEnv()->NewObjectArray(static_cast<jsize>(size), type, nullptr);
    LocalRef<jobjectArray> result(caller.getEnv(), array);
    caller.handleException(onFailure == OnFailure::Throw);
    return result;
}

/// Moves the reference, so that it is deleted once.
LocalRef<> asObject(JNIHvlAccessor& caller, LocalRef<jobjectArray>& array)
{
    return {caller.getEnv(), array.release()};
}

/// Does nothing for a null array, whose failure is already recorded.
void store(JNIHvlAccessor& caller, const LocalRef<jobjectArray>& array, std::size_t index,
           jobject element, OnFailure onFailure)
{
    if (!array)
        return;
    caller.getEnv()->SetObjectArrayElement(array.get(), static_cast<jsize>(index), element);
    caller.handleException(onFailure == OnFailure::Throw);
}
} // namespace

LocalRef<> list(JNIHvlAccessor& caller, const Wrappers& elements, bool skipsNull)
{
    constexpr const char* ClassName = "java/util/ArrayList";
    LocalRef<> result = withCapacity(caller, ClassName, elements.size());
    addAll(caller, ClassName, result.get(), elements, skipsNull);
    return result;
}

LocalRef<> set(JNIHvlAccessor& caller, const Wrappers& elements)
{
    constexpr const char* ClassName = "java/util/HashSet";
    LocalRef<> result = withCapacity(caller, ClassName, elements.size());
    addAll(caller, ClassName, result.get(), elements, true);
    return result;
}

LocalRef<> array(JNIHvlAccessor& caller, const char* elementClass, const Wrappers& elements,
                 OnFailure onFailure)
{
    LocalRef<jobjectArray> result = newArray(caller, elementClass, elements.size(), onFailure);
    for (std::size_t index = 0; index < elements.size(); ++index)
        if (elements[index] != nullptr)
            store(caller, result, index, elements[index]->getObject(), onFailure);
    return asObject(caller, result);
}

LocalRef<> map(JNIHvlAccessor& caller, const std::map<std::string, const JNIHvlAccessor*>& entries)
{
    LocalRef<> result = withCapacity(caller, "java/util/HashMap", entries.size());
    JavaCall put = putInto(caller);
    for (const auto& [key, wrapper] : entries)
        if (wrapper != nullptr)
            put.text(key).value(wrapper).callObject(result.get());
    return result;
}

LocalRef<> typeMap(JNIHvlAccessor& caller,
                   const std::map<std::string, JNIHvlExpression::SimpleTypes>* types)
{
    if (types == nullptr || types->empty())
        return {};
    LocalRef<> result = withCapacity(caller, "java/util/HashMap", types->size());
    JavaCall put = putInto(caller);
    for (const auto& [key, type] : *types) {
        LocalRef<> constant(caller.getEnv(), JNIHvlExpression::newObject(caller.getEnv(), type));
        caller.exceptionCheck();
        put.text(key).take(std::move(constant)).callObject(result.get());
    }
    return result;
}

LocalRef<> stringArray(JNIHvlAccessor& caller, const std::vector<std::string>* texts)
{
    if (texts == nullptr)
        return {};
    LocalRef<jobjectArray> result =
        newArray(caller, "java/lang/String", texts->size(), OnFailure::Throw);
    for (std::size_t index = 0; index < texts->size(); ++index) {
        const LocalRef<> text(caller.getEnv(), caller.newObject((*texts)[index], false, false));
        store(caller, result, index, text.get(), OnFailure::Throw);
    }
    return asObject(caller, result);
}

LocalRef<> booleanArray(JNIHvlAccessor& caller, const std::vector<bool>& flags)
{
    JNIEnv* env = caller.getEnv();
    LocalRef<> result(env, env->NewBooleanArray(static_cast<jsize>(flags.size())));
    caller.exceptionCheck();
    const auto array = static_cast<jbooleanArray>(result.get());
    jboolean* elements = array == nullptr ? nullptr : env->GetBooleanArrayElements(array, nullptr);
    caller.exceptionCheck();
    if (elements != nullptr) {
        std::copy(flags.begin(), flags.end(), elements);
        // 0 copies the flags back if the machine has returned a copy.
        env->ReleaseBooleanArrayElements(array, elements, 0);
    }
    return result;
}

void forEachOfList(JNIHvlAccessor& caller, jobject list, const Taker& take)
{
    if (list == nullptr)
        return;
    const LocalRef<jclass> type(caller.getEnv(), caller.getEnv()->GetObjectClass(list));
    const jint size = JavaCall(caller, type.get(), "size", "()I").callInt(list);
    JavaCall get(caller, type.get(), "get", "(I)Ljava/lang/Object;");
    for (jint index = 0; index < size; ++index)
        take(get.number(index).callObject(list));
}

bool forEachOf(JNIHvlAccessor& caller, jobject collection, OnFailure onFailure, const Taker& take)
{
    if (collection == nullptr)
        return true;
    JNIEnv* env = caller.getEnv();
    const LocalRef<jclass> collectionClass(env, env->GetObjectClass(collection));
    const LocalRef<> iterator =
        JavaCall(caller, collectionClass.get(), "iterator", "()Ljava/util/Iterator;", onFailure)
            .callObject(collection);
    if (!iterator)
        return false;
    const LocalRef<jclass> type(env, env->GetObjectClass(iterator.get()));
    JavaCall hasNext(caller, type.get(), "hasNext", "()Z", onFailure);
    JavaCall next(caller, type.get(), "next", "()Ljava/lang/Object;", onFailure);
    while (!next.failed() && hasNext.callBoolean(iterator.get()))
        if (LocalRef<> element = next.callObject(iterator.get()); !next.failed())
            take(std::move(element));
    return !hasNext.failed() && !next.failed();
}
} // namespace JavaCollections
