#pragma once

#include "bridge/JNIHvlAccessor.h"

class JNIHvlType;

/// An expression of the job language, as a tree on the Java side. Made by JNIHvlProgram, passed
/// back into it, on the thread that made it.
class HVINTEG_EXPORT JNIHvlExpression : public JNIHvlAccessor
{
public:
    /// The simple types of the job language. Any other value stands for Any.
    enum SimpleTypes : int
    {
        Any,
        Number,
        String,
        Int,
        Real,
        Char,
        Bool,
        Time,
        Date,
        Timestamp
    };
    class LambdaSignature;

    JNIHvlExpression(const JNIHvlExpression&) = default;
    JNIHvlExpression& operator=(const JNIHvlExpression&) = default;
    ~JNIHvlExpression() override;

    /// The expression as text of the job language. Throws JNIException.
    std::string generate();

    using JNIHvlAccessor::newObject;
    /// The Java constant of a type: a local reference of the caller's; null with an exception
    /// pending on failure.
    static jobject newObject(JNIEnv* env, SimpleTypes type);

protected:
    explicit JNIHvlExpression(jobject object);

private:
    friend class WrapperFactory;
};

/// A parameter of a lambda: its name and its type. Whoever makes one keeps it until the lambda has
/// been created. A failure of the constructor is recorded, and nothing is wrapped.
class HVINTEG_EXPORT JNIHvlExpression::LambdaSignature : public JNIHvlAccessor
{
public:
    /// The type is borrowed and must outlive this; null for none.
    LambdaSignature(const std::string& name, JNIHvlType* type);
    LambdaSignature(const LambdaSignature&) = default;
    LambdaSignature& operator=(const LambdaSignature&) = default;
    ~LambdaSignature() override;

    const std::string& getParameterName() const { return _name; }
    JNIHvlType* getParameterType() const { return _type; }

private:
    std::string _name;
    JNIHvlType* _type;
};
