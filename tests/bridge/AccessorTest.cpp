
#include <tuple>

#include "JNIException.h"
#include "bridge/JNIJSONArray.h"
#include "bridge/JNIObjectManager.h"
#include "support/JvmFixture.h"

namespace {
class AccessorTest : public JvmTest
{
protected:
    /// A local reference that counts as ours.
    jobject localObject()
    {
        JNIHvlAccessor maker;
        return maker.newObject(7, false, false);
    }

    /// Makes a value in all four ways; `isListed` states whether its kind is ever tracked.
    template <class Value>
    void expectOwnedAsAsked(Value value, const char* javaClass, bool isListed = true)
    {
        SCOPED_TRACE(javaClass);
        {
            JNIHvlAccessor accessor;
            jobject const callers = accessor.newObject(value, false, false);
            EXPECT_TRUE(env()->IsInstanceOf(callers, accessor.classNamed(javaClass)));
            env()->DeleteLocalRef(callers);

            jobject const global = accessor.newObject(value, true, false);
            EXPECT_EQ(jni().liveGlobals(), 1);
            EXPECT_EQ(jni().liveLocals(), 0);
            env()->DeleteGlobalRef(global);

            jobject const listed = accessor.newObject(value, false, true);
            EXPECT_EQ(jni().liveLocals(), 1);
            if (!isListed)
                env()->DeleteLocalRef(listed);
        }
        EXPECT_EQ(jni().liveLocals(), 0) << "the wrapper deletes what it tracks";

        JNIHvlAccessor accessor;
        jobject const both = accessor.newObject(value, true, true);
        EXPECT_EQ(jni().liveGlobals(), 1);
        EXPECT_EQ(jni().liveLocals(), isListed ? 1 : 0);
        JNIObjectManager::getManager()->cleanJRef();
        EXPECT_EQ(jni().liveGlobals(), isListed ? 0 : 1);
        if (!isListed)
            env()->DeleteGlobalRef(both);
    }
};
} // namespace

TEST_F(AccessorTest, NewObjectsAreOwnedAsAsked)
{
    expectOwnedAsAsked(std::string("x"), "java/lang/String", false);
    expectOwnedAsAsked("x", "java/lang/String");
    expectOwnedAsAsked(1, "java/lang/Integer");
    expectOwnedAsAsked(1.5, "java/lang/Double");
    expectOwnedAsAsked(1LL, "java/lang/Long");
    expectOwnedAsAsked(true, "java/lang/Boolean");
}

TEST_F(AccessorTest, LocalReferencesEndWithTheirWrapperGlobalOnesLater)
{
    jobject kept = nullptr;
    {
        JNIHvlAccessor local;
        local.init(localObject(), false);
        EXPECT_EQ(jni().liveLocals(), 2) << "the object and its class";
        JNIHvlAccessor global;
        global.init("java/util/ArrayList", true);
        kept = global.getObject();
    }
    EXPECT_EQ(jni().liveLocals(), 0);
    EXPECT_EQ(jni().liveGlobals(), 1);
    EXPECT_EQ(env()->GetObjectRefType(kept), JNIGlobalRefType);
    JNIObjectManager::getManager()->cleanJRef();
    EXPECT_EQ(jni().liveGlobals(), 0);
}

TEST_F(AccessorTest, CopiesShareGlobalReferencesButNotLocalOnes)
{
    auto first = std::make_unique<JNIHvlAccessor>();
    first->init(localObject(), false);
    JNIHvlAccessor second(*first);
    JNIHvlAccessor third;
    third.init(localObject(), false);
    third = *first;
    const JNIHvlAccessor& same = third;
    third = same;
    first.reset();
    EXPECT_EQ(jni().liveLocals(), 4);
    EXPECT_EQ(env()->GetObjectRefType(second.getObject()), JNILocalRefType);
    EXPECT_TRUE(env()->IsSameObject(second.getObject(), third.getObject()));
    EXPECT_FALSE(second.getObject() == third.getObject());

    JNIJSONArray array;
    JNIJSONArray copy = array;
    array.add(1);
    EXPECT_EQ(copy.serialize(), "[1]");
    EXPECT_EQ(jni().liveGlobals(), 1);
}

TEST_F(AccessorTest, SetObjectTracksAsAsked)
{
    jobject const local = localObject();
    JNIHvlAccessor accessor;
    accessor.setObjectG(local, false, false);
    EXPECT_EQ(accessor.getObject(), local);
    accessor.setObjectG(local, true, false);
    jobject const callers = accessor.getObject();
    accessor.setObjectG(local, true, true);
    JNIObjectManager::getManager()->cleanJRef();
    EXPECT_EQ(jni().liveGlobals(), 1);
    env()->DeleteGlobalRef(callers);
    accessor.setObjectG(local, false, true);
}

TEST_F(AccessorTest, AnUnknownClassWrapsNothingAndIsTold)
{
    JNIHvlAccessor accessor;
    accessor.init("no/such/Thing", true);
    EXPECT_EQ(accessor.getObject(), nullptr);
    EXPECT_NE(accessor.getErrorMessage().find("no/such/Thing"), std::string::npos);
    accessor.init(static_cast<jobject>(nullptr), false);
    EXPECT_EQ(accessor.getClass(), nullptr);
}

TEST_F(AccessorTest, AJavaExceptionBecomesACppOne)
{
    JNIJSONArray array;
    try {
        array.get(array.getObject(), 3);
        FAIL() << "nothing thrown";
    } catch (const JNIException& exception) {
        EXPECT_EQ(exception.className(), "java.lang.IndexOutOfBoundsException");
        EXPECT_EQ(exception.message(), "Index 3 out of bounds for length 0");
        EXPECT_STREQ(exception.what(), exception.message().c_str());
        EXPECT_NE(exception.trace().find("JSONArray.get"), std::string::npos);
    }
    EXPECT_EQ(array.getErrorMessage(), "Index 3 out of bounds for length 0");
    EXPECT_NO_THROW(array.exceptionCheck());
}

TEST_F(AccessorTest, AReceiverOfNoUseIsToldAndNotCalled)
{
    JNIHvlAccessor other;
    other.init("java/lang/Object", true);
    const std::tuple<jobject, const char*, const char*> cases[] = {
        {nullptr, "java.lang.NullPointerException", "There is no Java object to ask: get"},
        {other.getObject(), "java.lang.ClassCastException",
         "The Java object is of another class: get"},
    };
    for (const auto& [receiver, className, message] : cases)
        try {
            JNIJSONArray().get(receiver, 0);
            ADD_FAILURE() << "nothing thrown";
        } catch (const JNIException& exception) {
            EXPECT_EQ(exception.className(), className);
            EXPECT_EQ(exception.message(), message);
        }
}

TEST_F(AccessorTest, ATextThatCannotBeConvertedIsEmptyAndRecorded)
{
    JNIHvlAccessor accessor;
    const auto text = static_cast<jstring>(accessor.newObject("x", false, true));
    jni().failAt(1, RecordingJni::Fault::OutOfMemory);
    EXPECT_EQ(accessor.getString(text), "");
    EXPECT_TRUE(jni().endFault());
    EXPECT_NE(accessor.getErrorMessage(), "");
}

TEST_F(AccessorTest, AGivenExceptionIsRecordedWithoutAMessageByItsName)
{
    JNIHvlAccessor thrown;
    thrown.init("java/lang/IllegalStateException", false);
    thrown.handleException(false, static_cast<jthrowable>(thrown.getObject()));
    EXPECT_EQ(thrown.getErrorMessage(), "java.lang.IllegalStateException");
    EXPECT_THROW(thrown.handleException(true, static_cast<jthrowable>(thrown.getObject())),
                 JNIException);
}
