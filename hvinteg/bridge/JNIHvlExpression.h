#pragma once

#include "bridge/JNIHvlAccessor.h"

class JNIHvlType;

/// An expression of the job language, stored as a tree in Java. JNIHvlProgram creates it. Pass it
/// to the functions of the program, on the same thread.
class HVINTEG_EXPORT JNIHvlExpression : public JNIHvlAccessor
{
public:
    /// The simple types of the job language. Any other value means Any.
    enum SimpleTypes : int
    {
        Any,      ///< a value of any type
        Number,   ///< an Int or a Real
        String,   ///< a text
        Int,      ///< a 64-bit integer
        Real,     ///< a double
        Char,     ///< the same as String
        Bool,     ///< true or false
        Time,     ///< a time of day
        Date,     ///< a day
        Timestamp ///< a point in time
    };
    class LambdaSignature;

    JNIHvlExpression(const JNIHvlExpression&) = default;
    JNIHvlExpression& operator=(const JNIHvlExpression&) = default;
    ~JNIHvlExpression() override;

    /// Converts the expression to text of the job language. Throws JNIException.
    std::string generate();

    using JNIHvlAccessor::newObject;
    /// Returns the Java constant of a type. The caller owns the local reference. On failure returns
    /// null with a Java exception pending.
    static jobject newObject(JNIEnv* env, SimpleTypes type);

protected:
    /// Wraps an object of Java. The wrapper takes over the local reference.
    explicit JNIHvlExpression(jobject object);

private:
    friend class WrapperFactory;
};

/// A parameter of a lambda: name and type. The caller owns it until the lambda is created. If the
/// Java constructor fails, the error is recorded and nothing is wrapped.
class HVINTEG_EXPORT JNIHvlExpression::LambdaSignature : public JNIHvlAccessor
{
public:
    /// The type is borrowed and must outlive this object; null means none.
    LambdaSignature(const std::string& name, JNIHvlType* type);
    LambdaSignature(const LambdaSignature&) = default;
    LambdaSignature& operator=(const LambdaSignature&) = default;
    ~LambdaSignature() override;

    /// The name given to the constructor.
    const std::string& getParameterName() const { return _name; }
    /// The borrowed type, or null.
    JNIHvlType* getParameterType() const { return _type; }

private:
    std::string _name;
    JNIHvlType* _type;
};
