#pragma once

#include "bridge/JNIJSONArtifact.h"

class JNIJSONObject;

/// A JSON array in Java. The Java object lives until JNIObjectManager::cleanJRef; copies of the
/// wrapper share it. As a reader the wrapper takes any child array as an argument.
///
/// Operations throw JNIException, also for an index out of range. If a constructor fails, the error
/// is recorded and nothing is wrapped.
class HVINTEG_EXPORT JNIJSONArray : public JNIJSONArtifact
{
public:
    /// A new empty array.
    JNIJSONArray();
    /// A new empty array with room for `capacity` values.
    explicit JNIJSONArray(int capacity);
    /// Parses a text (UTF-8). Null creates a reader without an array.
    explicit JNIJSONArray(const char* json);
    JNIJSONArray(const JNIJSONArray&) = default;
    JNIJSONArray& operator=(const JNIJSONArray&) = default;
    ~JNIJSONArray() override;

    /// Appends an integer.
    void add(int value);
    /// Appends a real.
    void add(double value);
    /// Appends an integer of 64 bits.
    void add(long long value);
    /// Appends a boolean.
    void add(bool value);
    /// Appends a string (UTF-8); null appends a Java null.
    void add(const char* value);
    /// Appends an array, which is then shared; null appends a Java null.
    void add(JNIJSONArray* value);
    /// Appends an object, which is then shared; null appends a Java null.
    void add(JNIJSONObject* value);
    /// Appends a Java null.
    void addNull();
    /// Inserts a value before the one at `index`, as add(value) appends it.
    void add(int index, int value);
    /// Inserts a real.
    void add(int index, double value);
    /// Inserts an integer of 64 bits.
    void add(int index, long long value);
    /// Inserts a boolean.
    void add(int index, bool value);
    /// Inserts a string or, for null, a Java null.
    void add(int index, const char* value);
    /// Inserts an array or, for null, a Java null.
    void add(int index, JNIJSONArray* value);
    /// Inserts an object or, for null, a Java null.
    void add(int index, JNIJSONObject* value);
    /// Inserts a Java null.
    void addNull(int index);
    /// Replaces the value at `index`.
    void set(int index, int value);
    /// Replaces the value by a real.
    void set(int index, double value);
    /// Replaces the value by an integer of 64 bits.
    void set(int index, long long value);
    /// Replaces the value by a boolean.
    void set(int index, bool value);
    /// Replaces the value by a string or, for null, a Java null.
    void set(int index, const char* value);
    /// Replaces the value by an array or, for null, a Java null.
    void set(int index, JNIJSONArray* value);
    /// Replaces the value by an object or, for null, a Java null.
    void set(int index, JNIJSONObject* value);
    /// Replaces the value by a Java null.
    void setNull(int index);

    /// Returns an element of `array`; null for a JSON null. The caller owns the local reference.
    jobject get(jobject array, int index);
    /// Number of elements of the wrapped array.
    int size();
    /// Number of elements of `array`.
    int size(jobject array);
    /// Whether an array is wrapped.
    bool isGood() const { return getObject() != nullptr; }
    /// The JSON text of the wrapped array, without white space.
    std::string serialize() override;

private:
    template <class Value>
    void append(Value value);
    template <class Value>
    void insert(int index, Value value);
    template <class Value>
    void replace(int index, Value value);
};
