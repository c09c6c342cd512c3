#include "bridge/JNIJSONArray.h"

#include "bridge/JNIJSONObject.h"
#include "bridge/JavaCall.h"
#include "bridge/JavaClassNames.h"

JNIJSONArray::JNIJSONArray()
{
    init(JavaClassNames::JSONArray, true);
}

JNIJSONArray::JNIJSONArray(int capacity)
{
    setClass(JavaClassNames::JSONArray);
    JavaCall(*this, "<init>", "(I)V", OnFailure::Record).number(capacity).constructWrapped();
}

JNIJSONArray::JNIJSONArray(const char* json)
{
    parse(JavaClassNames::JSONArray, "(Ljava/lang/String;)Lcom/zor/json/java/JSONArray;", json);
}

JNIJSONArray::~JNIJSONArray() = default;

/// The three functions of java.util.List that all overloads use. The overloads differ only in the
/// conversion of the value.
template <class Value>
void JNIJSONArray::append(Value value)
{
    JavaCall(*this, "add", "(Ljava/lang/Object;)Z").value(value).callBoolean(getObject());
}

template <class Value>
void JNIJSONArray::insert(int index, Value value)
{
    JavaCall(*this, "add", "(ILjava/lang/Object;)V")
        .number(index)
        .value(value)
        .callVoid(getObject());
}

template <class Value>
void JNIJSONArray::replace(int index, Value value)
{
    JavaCall(*this, "set", "(ILjava/lang/Object;)Ljava/lang/Object;")
        .number(index)
        .value(value)
        .callObject(getObject());
}

void JNIJSONArray::add(int value)
{
    append(value);
}

void JNIJSONArray::add(double value)
{
    append(value);
}

void JNIJSONArray::add(long long value)
{
    append(value);
}

void JNIJSONArray::add(bool value)
{
    append(value);
}

void JNIJSONArray::add(const char* value)
{
    append(value);
}

void JNIJSONArray::add(JNIJSONArray* value)
{
    append<const JNIHvlAccessor*>(value);
}

void JNIJSONArray::add(JNIJSONObject* value)
{
    append<const JNIHvlAccessor*>(value);
}

void JNIJSONArray::addNull()
{
    append<const JNIHvlAccessor*>(nullptr);
}

void JNIJSONArray::add(int index, int value)
{
    insert(index, value);
}

void JNIJSONArray::add(int index, double value)
{
    insert(index, value);
}

void JNIJSONArray::add(int index, long long value)
{
    insert(index, value);
}

void JNIJSONArray::add(int index, bool value)
{
    insert(index, value);
}

void JNIJSONArray::add(int index, const char* value)
{
    insert(index, value);
}

void JNIJSONArray::add(int index, JNIJSONArray* value)
{
    insert<const JNIHvlAccessor*>(index, value);
}

void JNIJSONArray::add(int index, JNIJSONObject* value)
{
    insert<const JNIHvlAccessor*>(index, value);
}

void JNIJSONArray::addNull(int index)
{
    insert<const JNIHvlAccessor*>(index, nullptr);
}

void JNIJSONArray::set(int index, int value)
{
    replace(index, value);
}

void JNIJSONArray::set(int index, double value)
{
    replace(index, value);
}

void JNIJSONArray::set(int index, long long value)
{
    replace(index, value);
}

void JNIJSONArray::set(int index, bool value)
{
    replace(index, value);
}

void JNIJSONArray::set(int index, const char* value)
{
    replace(index, value);
}

void JNIJSONArray::set(int index, JNIJSONArray* value)
{
    replace<const JNIHvlAccessor*>(index, value);
}

void JNIJSONArray::set(int index, JNIJSONObject* value)
{
    replace<const JNIHvlAccessor*>(index, value);
}

void JNIJSONArray::setNull(int index)
{
    replace<const JNIHvlAccessor*>(index, nullptr);
}

jobject JNIJSONArray::get(jobject array, int index)
{
    return JavaCall(*this, "get", "(I)Ljava/lang/Object;")
        .number(index)
        .callObject(array)
        .release();
}

int JNIJSONArray::size()
{
    return size(getObject());
}

int JNIJSONArray::size(jobject array)
{
    return JavaCall(*this, "size", "()I").callInt(array);
}

std::string JNIJSONArray::serialize()
{
    return JNIJSONArtifact::serialize();
}
