
#include <climits>
#include <limits>
#include <memory>
#include <utility>

#include "JNIException.h"
#include "bridge/JNIJSONArray.h"
#include "bridge/JNIJSONBoolean.h"
#include "bridge/JNIJSONDouble.h"
#include "bridge/JNIJSONInteger.h"
#include "bridge/JNIJSONObject.h"
#include "support/JvmFixture.h"

namespace {
using JsonTest = JvmTest;

/// A value of an object, as a reference that the scope lets go.
class Value
{
public:
    Value(JNIJSONObject& object, const char* path)
        : _env(object.getEnv()), _reference(object.getByPath(object.getTop(), path))
    {
    }
    ~Value() { _env->DeleteLocalRef(_reference); }
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;
    jobject get() const { return _reference; }

private:
    JNIEnv* _env;
    jobject _reference;
};

constexpr const char* Nested = R"({"zoo": {"b": {"c": 3, "s": "text"}, "n": 4}, "Z": [1, 2],
                                   "a": null, "t": true, "big": 9007199254740993, "r": 2.5})";
} // namespace

TEST_F(JsonTest, AnObjectTakesEveryKindOfValue)
{
    JNIJSONObject child;
    child.put("x", 1);
    JNIJSONArray list;
    JNIJSONObject object;
    object.put("int", INT_MIN);
    object.put("double", 0.1);
    object.put("long", LLONG_MAX);
    object.put("bool", false);
    object.put("text", "a \"quoted\" / text");
    object.put("no text", static_cast<const char*>(nullptr));
    object.put("object", &child);
    object.put("array", &list);
    object.put("no object", static_cast<JNIJSONObject*>(nullptr));
    object.put("no array", static_cast<JNIJSONArray*>(nullptr));
    object.putNull("null");
    EXPECT_EQ(object.serialize(),
              R"({"int":-2147483648,"double":0.1,"long":9223372036854775807,"bool":false,)"
              R"("text":"a \"quoted\" / text","no text":null,"object":{"x":1},"array":[],)"
              R"("no object":null,"no array":null,"null":null})");
    EXPECT_EQ(object.toString(), object.serialize());
    const std::string indented = object.prettyPrint();
    EXPECT_NE(indented.find('\n'), std::string::npos);
    EXPECT_EQ(JNIJSONObject(indented.c_str()).serialize(), object.serialize());
    EXPECT_TRUE(object.keySet().contains("no object"));
}

TEST_F(JsonTest, AnArrayAppendsInsertsAndReplaces)
{
    JNIJSONObject object;
    JNIJSONArray inner(4);
    const auto forEachKind = [&](auto take) {
        take(1);
        take(2.5);
        take(3LL);
        take(true);
        take("x");
        take(&inner);
        take(&object);
    };
    JNIJSONArray array;
    forEachKind([&](auto value) { array.add(value); });
    array.addNull();
    EXPECT_EQ(array.serialize(), R"([1,2.5,3,true,"x",[],{},null])");
    EXPECT_EQ(array.size(), 8);

    JNIJSONArray inserted;
    forEachKind([&](auto value) { inserted.add(0, value); });
    inserted.addNull(0);
    EXPECT_EQ(inserted.serialize(), R"([null,{},[],"x",true,3,2.5,1])");
    forEachKind([&, index = 0](auto value) mutable { inserted.set(index++, value); });
    inserted.setNull(7);
    EXPECT_EQ(inserted.serialize(), array.serialize());
}

TEST_F(JsonTest, AnIndexOutOfRangeThrows)
{
    JNIJSONArray array;
    EXPECT_THROW(array.get(array.getObject(), 0), JNIException);
    EXPECT_THROW(array.set(-1, 1), JNIException);
    EXPECT_THROW(array.setNull(0), JNIException);
    EXPECT_THROW(array.add(1, "x"), JNIException);
    EXPECT_EQ(array.serialize(), "[]");
    EXPECT_FALSE(JNIJSONArray(-1).isGood());
}

TEST_F(JsonTest, BadTextIsToldAndDoesNotThrow)
{
    for (const char* text : {"", "{", "[1]", "{\"a\":}", "{} x", "null"}) {
        const JNIJSONObject object(text);
        EXPECT_FALSE(object.isGood()) << text;
        EXPECT_NE(object.getParserError(), "") << text;
        EXPECT_EQ(object.getTop(), nullptr) << text;
    }
    EXPECT_FALSE(JNIJSONArray("[1,").isGood());
    EXPECT_FALSE(JNIJSONArray("{}").isGood());
    const JNIJSONObject good("{}");
    EXPECT_TRUE(good.isGood());
    EXPECT_EQ(good.getParserError(), "");
}

TEST_F(JsonTest, AReaderWithoutAnObjectReadsOthers)
{
    JNIJSONObject reader(static_cast<const char*>(nullptr));
    EXPECT_FALSE(reader.isGood());
    EXPECT_EQ(reader.getParserError(), "");
    EXPECT_THROW(reader.serialize(), JNIException);
    EXPECT_THROW(reader.put("a", 1), JNIException);
    EXPECT_EQ(reader.keySet(), std::set<std::string>());

    JNIJSONObject parsed(Nested);
    const Value zoo(parsed, "zoo");
    EXPECT_EQ(reader.keySet(zoo.get()), (std::set<std::string>{"b", "n"}));
    EXPECT_EQ(parsed.keySet(), (std::set<std::string>{"Z", "a", "big", "r", "t", "zoo"}));

    JNIJSONArray arrays(static_cast<const char*>(nullptr));
    const Value list(parsed, "Z");
    EXPECT_EQ(arrays.size(list.get()), 2);
    EXPECT_THROW(arrays.size(), JNIException);
}

TEST_F(JsonTest, AnEarlierExceptionIsRecordedBeforeAValueIsRead)
{
    JNIJSONObject object(R"({"a": "x"})");
    JNIEnv* const env = object.getEnv();
    const jclass kind = env->FindClass("java/lang/IllegalStateException");
    env->ThrowNew(kind, "earlier");
    jobject value = nullptr;
    EXPECT_NO_THROW(value = object.get(object.getTop(), "a"));
    EXPECT_NE(value, nullptr);
    EXPECT_EQ(object.getErrorMessage(), "earlier");
    env->DeleteLocalRef(value);
    env->DeleteLocalRef(kind);
}

TEST_F(JsonTest, PathsStepThroughObjectsOnly)
{
    JNIJSONObject object(Nested);
    // A path without a text leads nowhere.
    using Row = std::pair<const char*, const char*>;
    for (const auto& [path, text] :
         {Row{"zoo.b.c", "3"}, Row{"zoo..b.c", "3"}, Row{".zoo.n.", "4"}, Row{"t", "true"},
          Row{"zoo.n.c", nullptr}, Row{"none.b.c", nullptr}, Row{"zoo.none.c", nullptr},
          Row{"Z.0", nullptr}, Row{"a", nullptr}, Row{"a.b", nullptr}, Row{"", nullptr},
          Row{"..", nullptr}}) {
        const Value value(object, path);
        ASSERT_EQ(value.get() == nullptr, text == nullptr) << path;
        if (text != nullptr) {
            EXPECT_EQ(object.toString(value.get()), text) << path;
        }
    }
    EXPECT_EQ(object.getByPath(nullptr, "zoo"), nullptr);
}

TEST_F(JsonTest, ReadingAChildMovesTheWrapperButNotTheTop)
{
    JNIJSONObject object(Nested);
    const Value zoo(object, "zoo");
    EXPECT_EQ(object.getObject(), object.getTop()) << "a path leaves its start wrapped";
    env()->DeleteLocalRef(object.get(zoo.get(), "b"));
    EXPECT_EQ(object.getObject(), zoo.get());
    EXPECT_EQ(object.getChildAsString(object.getTop(), "none"), "");
    EXPECT_EQ(object.getChildAsString(object.getTop(), "a"), "");
    EXPECT_EQ(object.getChildAsString(object.getTop(), "r"), "2.5");
    const Value b(object, "zoo.b");
    EXPECT_EQ(object.getChildAsString(b.get(), "s"), "text");
}

TEST_F(JsonTest, AnObjectOfAnotherKindIsRefused)
{
    JNIJSONObject object(Nested);
    const Value list(object, "Z");
    const Value number(object, "zoo.n");
    EXPECT_EQ(object.get(list.get(), "b"), nullptr);
    EXPECT_NE(object.getErrorMessage(), "");
    EXPECT_EQ(object.get(nullptr, "b"), nullptr);
    EXPECT_EQ(object.keySet(number.get()), std::set<std::string>());
    EXPECT_THROW(object.serialize(), JNIException) << "no object is wrapped now";
    EXPECT_THROW(JNIJSONArray().get(number.get(), 0), JNIException);
    EXPECT_EQ(object.get(object.getTop(), nullptr), nullptr);

    EXPECT_TRUE(object.isJSONArray(list.get()));
    EXPECT_FALSE(object.isJSONArray(number.get()));
    EXPECT_TRUE(object.isJSONObject(object.getTop()));
    EXPECT_FALSE(object.isJSONObject(list.get()));
    EXPECT_FALSE(object.isString(list.get()));
    EXPECT_FALSE(object.isJSONObject(nullptr) || object.isJSONArray(nullptr) ||
                 object.isString(nullptr));
}

TEST_F(JsonTest, NumbersReadWhateverTheirKind)
{
    JNIJSONObject object(Nested);
    JNIJSONInteger integers;
    JNIJSONDouble doubles;
    JNIJSONBoolean booleans;
    const Value small(object, "zoo.n");
    const Value big(object, "big");
    const Value real(object, "r");
    const Value truth(object, "t");
    EXPECT_EQ(integers.intValue(small.get()), 4);
    EXPECT_EQ(integers.intValue(real.get()), 2);
    EXPECT_EQ(integers.intValue(big.get()), 1) << "the low 32 bits";
    EXPECT_EQ(doubles.doubleValue(small.get()), 4.0);
    EXPECT_EQ(doubles.doubleValue(real.get()), 2.5);
    EXPECT_EQ(doubles.doubleValue(big.get()), 9007199254740992.0);
    EXPECT_TRUE(booleans.booleanValue(truth.get()));

    EXPECT_THROW(integers.intValue(truth.get()), JNIException);
    EXPECT_THROW(doubles.doubleValue(nullptr), JNIException);
    EXPECT_THROW(booleans.booleanValue(small.get()), JNIException);
    object.put("n", std::numeric_limits<double>::quiet_NaN());
    EXPECT_THROW(object.serialize(), JNIException) << "JSON has no such number";
}
