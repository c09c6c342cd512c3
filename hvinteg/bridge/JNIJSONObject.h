#pragma once

#include <set>

#include "bridge/JNIJSONArtifact.h"

class JNIJSONArray;

/// A JSON object on the Java side: settings on their way to the engine, or a result to be read.
///
/// The wrapped object lives until JNIObjectManager::cleanJRef, and copies share it. As a reader the
/// wrapper takes any child object as an argument; `get` makes that child the wrapped object, and
/// getTop gives back what the text constructor parsed. One reader at a time.
///
///     JNIJSONObject settings;
///     settings.put("rows", 10);
///     settings.put("name", "weather");
///     std::string text = settings.serialize(); // {"rows":10,"name":"weather"}
///
/// What it does not say otherwise throws JNIException.
class HVINTEG_EXPORT JNIJSONObject : public JNIJSONArtifact
{
public:
    /// A new empty object. A failure is recorded, and nothing is wrapped.
    JNIJSONObject();
    /// Parses a text. For a text that is not a JSON object nothing is wrapped, and getParserError
    /// tells why; a null makes a reader without an object.
    explicit JNIJSONObject(const char* json);
    JNIJSONObject(const JNIJSONObject&) = default;
    JNIJSONObject& operator=(const JNIJSONObject&) = default;
    ~JNIJSONObject() override;

    /// Sets a key; a null pointer sets a Java null.
    void put(const std::string& key, int value);
    void put(const std::string& key, double value);
    void put(const std::string& key, long long value);
    void put(const std::string& key, bool value);
    void put(const std::string& key, const char* value);
    void put(const std::string& key, JNIJSONObject* value);
    void put(const std::string& key, JNIJSONArray* value);
    void putNull(const std::string& key);

    /// The value of a key: a local reference, which the caller deletes; null for a key that is
    /// absent. A failure, such as an object that is no JSON object, is recorded and gives null.
    jobject get(jobject object, const char* key);
    /// Follows a path of keys with dots between them through objects within objects; empty pieces
    /// count for nothing. Null where the path leads nowhere; else as get. `object` is the wrapped
    /// object afterwards.
    jobject getByPath(jobject object, const std::string& path);
    /// A value as text: the characters of a string, the Java text of any other value, empty for an
    /// absent key.
    std::string getChildAsString(jobject object, const char* key);
    /// The keys in the order of their bytes. After a failure, which is recorded, those read so far.
    std::set<std::string> keySet();
    std::set<std::string> keySet(jobject object);
    /// The Java text of the wrapped object, or of any Java object.
    std::string toString();
    std::string toString(jobject object);

    /// Whether there is an object.
    bool isGood() const { return getObject() != nullptr; }
    const std::string& getParserError() const { return _parserError; }
    jobject getTop() const { return _top; }

private:
    template <class Value>
    void putValue(const std::string& key, Value value);

    jobject _top = nullptr;
    std::string _parserError;
};
