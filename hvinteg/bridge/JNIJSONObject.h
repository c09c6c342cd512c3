#pragma once

#include <set>

#include "bridge/JNIJSONArtifact.h"

class JNIJSONArray;

/// A JSON object in Java: settings for the engine, or a result to read.
///
/// The Java object lives until JNIObjectManager::cleanJRef; copies of the wrapper share it. As a
/// reader the wrapper takes any child object as an argument. `get` makes that child the wrapped
/// object; getTop returns the object that the constructor parsed. One reader at a time.
///
///     JNIJSONObject settings;
///     settings.put("rows", 10);
///     settings.put("name", "weather");
///     std::string text = settings.serialize(); // {"rows":10,"name":"weather"}
///
/// Operations throw JNIException unless they say otherwise.
class HVINTEG_EXPORT JNIJSONObject : public JNIJSONArtifact
{
public:
    /// Creates an empty object. If that fails, the error is recorded and nothing is wrapped.
    JNIJSONObject();
    /// Parses a text (UTF-8). If it is not a JSON object, nothing is wrapped and getParserError
    /// returns the reason. Null creates a reader without an object.
    explicit JNIJSONObject(const char* json);
    JNIJSONObject(const JNIJSONObject&) = default;
    JNIJSONObject& operator=(const JNIJSONObject&) = default;
    ~JNIJSONObject() override;

    /// Sets a key to an integer, and replaces an earlier value.
    void put(const std::string& key, int value);
    /// Sets a key to a real.
    void put(const std::string& key, double value);
    /// Sets a key to an integer of 64 bits.
    void put(const std::string& key, long long value);
    /// Sets a key to a boolean.
    void put(const std::string& key, bool value);
    /// Sets a key to a string (UTF-8) or, for null, to a Java null.
    void put(const std::string& key, const char* value);
    /// Sets a key to an object, which is then shared, or, for null, to a Java null.
    void put(const std::string& key, JNIJSONObject* value);
    /// Sets a key to an array, which is then shared, or, for null, to a Java null.
    void put(const std::string& key, JNIJSONArray* value);
    /// Sets a key to a Java null.
    void putNull(const std::string& key);

    /// Makes `object` the wrapped object and returns the value of a key, or null if the key is
    /// missing. The caller owns the local reference. A failure, for example if `object` is not a
    /// JSON object, is recorded and gives null.
    jobject get(jobject object, const char* key);
    /// Follows a path of keys separated by dots through nested objects; empty keys are skipped.
    /// Returns null if the path leads nowhere. The caller owns the local reference. `object` is the
    /// wrapped object afterwards.
    jobject getByPath(jobject object, const std::string& path);
    /// Returns a value as text: the characters of a string, or Java's toString of another value.
    /// Empty for a missing key.
    std::string getChildAsString(jobject object, const char* key);
    /// The keys of the wrapped object, sorted by their bytes. A failure is recorded; the result
    /// then has the keys read before it.
    std::set<std::string> keySet();
    /// The keys of `object`, sorted by their bytes. A failure is recorded; the result then has the
    /// keys read before it.
    std::set<std::string> keySet(jobject object);
    /// Java's toString of the wrapped object.
    std::string toString();
    /// Java's toString of any object.
    std::string toString(jobject object);

    /// Whether an object is wrapped.
    bool isGood() const { return getObject() != nullptr; }
    /// Why the constructor could not parse its text; empty otherwise.
    const std::string& getParserError() const { return _parserError; }
    /// The object that the constructor parsed; null otherwise. Not owned by the caller.
    jobject getTop() const { return _top; }

private:
    template <class Value>
    void putValue(const std::string& key, Value value);

    jobject _top = nullptr;
    std::string _parserError;
};
