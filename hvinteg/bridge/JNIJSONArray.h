#pragma once

#include "bridge/JNIJSONArtifact.h"

class JNIJSONObject;

/// A JSON array on the Java side. The wrapped array lives until JNIObjectManager::cleanJRef, and
/// copies share it. As a reader the wrapper takes any child array as an argument.
///
/// Throws JNIException, for an index out of range as well, but for the constructors: there a
/// failure is recorded, and nothing is wrapped.
class HVINTEG_EXPORT JNIJSONArray : public JNIJSONArtifact
{
public:
    /// A new empty array.
    JNIJSONArray();
    explicit JNIJSONArray(int capacity);
    /// Parses a text; a null makes a reader without an array.
    explicit JNIJSONArray(const char* json);
    JNIJSONArray(const JNIJSONArray&) = default;
    JNIJSONArray& operator=(const JNIJSONArray&) = default;
    ~JNIJSONArray() override;

    /// Appends a value; a null pointer appends a Java null.
    void add(int value);
    void add(double value);
    void add(long long value);
    void add(bool value);
    void add(const char* value);
    void add(JNIJSONArray* value);
    void add(JNIJSONObject* value);
    void addNull();
    /// Inserts a value before the one at the index.
    void add(int index, int value);
    void add(int index, double value);
    void add(int index, long long value);
    void add(int index, bool value);
    void add(int index, const char* value);
    void add(int index, JNIJSONArray* value);
    void add(int index, JNIJSONObject* value);
    void addNull(int index);
    /// Replaces the value at the index.
    void set(int index, int value);
    void set(int index, double value);
    void set(int index, long long value);
    void set(int index, bool value);
    void set(int index, const char* value);
    void set(int index, JNIJSONArray* value);
    void set(int index, JNIJSONObject* value);
    void setNull(int index);

    /// A local reference, which the caller deletes; null for a JSON null.
    jobject get(jobject array, int index);
    int size();
    int size(jobject array);
    /// Whether there is an array.
    bool isGood() const { return getObject() != nullptr; }
    std::string serialize() override;

private:
    template <class Value>
    void append(Value value);
    template <class Value>
    void insert(int index, Value value);
    template <class Value>
    void replace(int index, Value value);
};
