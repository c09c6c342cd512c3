#pragma once

#include <map>
#include <set>

#include "bridge/HvlExpressionConditional.h"
#include "bridge/JNIHvlExpression.h"

class JNIHvlContainer;
class JNIHvlFieldDerive;
class JNIHvlFragment;
class JNIHvlFunction;
class JNIHvlFunctionParameter;
class JNIJSONObject;
class JNITaggedFunctionInput;

/// A job under composition: functions are created one upon another, and getHvlText renders them.
///
///     JNIHvlProgram program;
///     JNIHvlFunction* read = program.createHvlFunction("read", &source);
///     program.createHvlFunction("write", &target, read);
///     program.getHvlText(text);
///
/// What a factory operation returns is deleted by JNIObjectManager::cleanJRef, never by the caller,
/// and may not be used afterwards. Pointer arguments are borrowed for the call; null passes a Java
/// null. The program and all that it made belong to one thread. Operations throw JNIException; a
/// failure of a constructor is recorded, and nothing is wrapped.
class HVINTEG_EXPORT JNIHvlProgram : public JNIHvlAccessor
{
public:
    using SimpleTypes = JNIHvlExpression::SimpleTypes;
    /// The types of the fields that the body of a record's lambda uses; an empty map leaves them
    /// open.
    using TypeMap = std::map<std::string, SimpleTypes>;

    /// An empty program.
    JNIHvlProgram();
    /// A program that begins with job text as it is given.
    explicit JNIHvlProgram(const std::string& text);
    JNIHvlProgram(const JNIHvlProgram&) = default;
    JNIHvlProgram& operator=(const JNIHvlProgram&) = default;
    ~JNIHvlProgram() override;

    /// An independent copy on the Java side.
    JNIHvlProgram* clone();
    /// Makes the second function run after the first, without records passing between them.
    void addDependency(JNIHvlFunction* earlier, JNIHvlFunction* later);

    /// An expression from its text, in which `%s` stands for the next argument and `%%` for a
    /// percent sign; null for no arguments.
    JNIHvlExpression* createHvlExpression(const std::string& pattern,
                                          std::vector<JNIHvlExpression*>* arguments);
    /// The value of the first clause whose condition holds, else `otherwise`.
    JNIHvlExpression*
    createHvlExpressionConditional(std::vector<HvlExpressionConditional::Clause*>* clauses,
                                   JNIHvlExpression* otherwise);
    JNIHvlExpression* createHvlExpressionFieldReference(const std::string& record,
                                                        const std::string& field);
    /// A field of the record that a lambda over records is given.
    JNIHvlExpression* createHvlExpressionFieldReference(const std::string& field);
    JNIHvlExpression*
    createHvlExpressionLambdaFunction(std::vector<JNIHvlExpression::LambdaSignature*>* parameters,
                                      JNIHvlExpression* body);
    /// Null items are left out; an empty vector passes a Java null.
    JNIHvlExpression* createHvlExpressionList(std::vector<JNIHvlExpression*>* items);
    JNIHvlExpression* createHvlExpressionLiteral(int value);
    JNIHvlExpression* createHvlExpressionLiteral(double value);
    JNIHvlExpression* createHvlExpressionLiteral(const char* value);
    JNIHvlExpression* createHvlExpressionLiteral(long long value);
    JNIHvlExpression* createHvlExpressionLiteral(bool value);
    JNIHvlExpression* createHvlExpressionNullValue();
    JNIHvlExpression* createHvlExpressionParameterName(const std::string& name);
    /// Null components are left out.
    JNIHvlExpression* createHvlExpressionTuple(std::vector<JNIHvlExpression*>* components);
    JNIHvlFieldDerive* createHvlFieldDerive(const std::string& field, JNIHvlExpression* value);

    /// Configurations by position; a null keeps its place open.
    JNIHvlFunction* createHvlFunction(const std::string& name,
                                      std::vector<JNIJSONObject*>* configurations,
                                      JNIHvlFunction* input);
    JNIHvlFunction* createHvlFunction(const std::string& name, JNIJSONObject* configuration);
    JNIHvlFunction* createHvlFunction(const std::string& name, JNIJSONObject* configuration,
                                      JNIHvlFunction* input);
    /// Inputs by tag; one that is null is left out.
    JNIHvlFunction* createHvlFunction(const std::string& name, JNIJSONObject* configuration,
                                      std::map<std::string, JNIHvlFunction*>* inputs);
    /// A component; null containers are left out, an empty vector leaves the place open.
    JNIHvlFunction* createHvlFunction(const std::string& name, JNIJSONObject* configuration,
                                      std::vector<JNIHvlContainer*>* inputs,
                                      std::vector<JNIHvlContainer*>* outputs,
                                      JNIHvlFunction* input);
    JNIHvlFunction* createHvlFunction(const std::string& name, JNIJSONObject* configuration,
                                      JNIHvlExpression* expression, JNIHvlFunction* input);
    JNIHvlFunction* createHvlFunction(const std::string& name, JNIJSONObject* configuration,
                                      JNIHvlFieldDerive* derive, JNIHvlFunction* input);
    JNIHvlFunction* createHvlFunction(const std::string& name, JNIJSONObject* configuration,
                                      JNIHvlFieldDerive* derive, JNIHvlFunction* input,
                                      TypeMap* types);
    JNIHvlFunction* createHvlFunctionDeriveFields(JNIHvlFieldDerive* derive, JNIHvlFunction* input);
    JNIHvlFunction* createHvlFunctionDeriveFields(JNIHvlFieldDerive* derive, JNIHvlFunction* input,
                                                  TypeMap* types);
    JNIHvlFunction* createHvlFunctionFilterRecords(JNIHvlExpression* condition,
                                                   JNIHvlFunction* input);
    JNIHvlFunction* createHvlFunctionFilterRecords(JNIHvlExpression* condition,
                                                   JNIHvlFunction* input, TypeMap* types);
    JNIHvlFunction* createHvlFunctionGeneral(const std::string& name,
                                             std::vector<JNIHvlFunctionParameter*>* parameters);
    /// `arguments` are texts of the job language, taken as they are.
    JNIHvlFunction* createHvlFunctionGeneral(const std::string& name, JNIJSONObject* configuration,
                                             const std::vector<std::string>* arguments,
                                             JNIHvlFunction* input);
    /// A function that takes another one as an argument.
    JNIHvlFunction* createHvlMetaFunction(const std::string& name, JNIJSONObject* configuration,
                                          JNIHvlFunction* operand, JNIHvlFunction* input);

    /// A file of a component; `output` for one that the component writes.
    JNIHvlContainer* createContainer(const std::string& name, const std::string& uri, bool output);
    /// Containers as JSON text. The vectors have one size, else std::out_of_range is thrown; with a
    /// null among them there are no containers.
    std::string formatContainerListJSON(const std::vector<std::string>* names,
                                        const std::vector<std::string>* uris,
                                        const std::vector<bool>* outputs);

    /// The inputs of a function, in its order.
    std::vector<JNITaggedFunctionInput*> getPredecessors(JNIHvlFunction* function);
    std::set<JNIHvlFragment*> getFragments();
    /// The fragments in an order in which each stands behind those that it needs.
    std::vector<JNIHvlFragment*>
    sortFragmentsIntoExecutionOrder(std::set<JNIHvlFragment*>* fragments);
    /// Renders the job. The references it takes meanwhile stay until cleanJRef.
    void getHvlText(std::string& text);

private:
    friend class WrapperFactory;

    explicit JNIHvlProgram(jobject object);
};
