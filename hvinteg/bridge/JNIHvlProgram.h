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

/// A job that is being composed: the functions are created one after the other, and getHvlText
/// generates the text.
///
///     JNIHvlProgram program;
///     JNIHvlFunction* read = program.createHvlFunction("read", &source);
///     program.createHvlFunction("write", &target, read);
///     program.getHvlText(text);
///
/// JNIObjectManager::cleanJRef deletes the results of factory operations; the caller must not
/// delete them, nor use them afterwards. Pointer arguments are borrowed for the call; null is
/// passed as a Java null. The program and its results belong to one thread. Operations throw
/// JNIException. If a constructor fails, the error is recorded and nothing is wrapped.
class HVINTEG_EXPORT JNIHvlProgram : public JNIHvlAccessor
{
public:
    /// The types of values in expressions.
    using SimpleTypes = JNIHvlExpression::SimpleTypes;
    /// Types of the fields that the body of a lambda over records uses. An empty map leaves them
    /// unspecified.
    using TypeMap = std::map<std::string, SimpleTypes>;

    /// An empty program.
    JNIHvlProgram();
    /// A program that starts with job text, which is used unchanged.
    explicit JNIHvlProgram(const std::string& text);
    JNIHvlProgram(const JNIHvlProgram&) = default;
    JNIHvlProgram& operator=(const JNIHvlProgram&) = default;
    ~JNIHvlProgram() override;

    /// Creates an independent copy of the Java object.
    JNIHvlProgram* clone();
    /// Makes `later` run after `earlier`, without records between them.
    void addDependency(JNIHvlFunction* earlier, JNIHvlFunction* later);

    /// An expression from text. `%s` is replaced by the next argument and `%%` by a percent sign.
    /// Null means no arguments.
    JNIHvlExpression* createHvlExpression(const std::string& pattern,
                                          std::vector<JNIHvlExpression*>* arguments);
    /// An expression with the value of the first clause whose condition is true, otherwise
    /// `otherwise`.
    JNIHvlExpression*
    createHvlExpressionConditional(std::vector<HvlExpressionConditional::Clause*>* clauses,
                                   JNIHvlExpression* otherwise);
    /// A field of a named record.
    JNIHvlExpression* createHvlExpressionFieldReference(const std::string& record,
                                                        const std::string& field);
    /// A field of the record that a lambda over records receives.
    JNIHvlExpression* createHvlExpressionFieldReference(const std::string& field);
    /// A lambda with these parameters. An empty vector is passed as a Java null.
    JNIHvlExpression*
    createHvlExpressionLambdaFunction(std::vector<JNIHvlExpression::LambdaSignature*>* parameters,
                                      JNIHvlExpression* body);
    /// A list. Null items are left out; an empty vector is passed as a Java null.
    JNIHvlExpression* createHvlExpressionList(std::vector<JNIHvlExpression*>* items);
    /// An integer literal of 32 bits.
    JNIHvlExpression* createHvlExpressionLiteral(int value);
    /// A real literal.
    JNIHvlExpression* createHvlExpressionLiteral(double value);
    /// A string literal (UTF-8).
    JNIHvlExpression* createHvlExpressionLiteral(const char* value);
    /// An integer literal of 64 bits.
    JNIHvlExpression* createHvlExpressionLiteral(long long value);
    /// A boolean literal.
    JNIHvlExpression* createHvlExpressionLiteral(bool value);
    /// The null of the job language.
    JNIHvlExpression* createHvlExpressionNullValue();
    /// A reference to a parameter of a lambda.
    JNIHvlExpression* createHvlExpressionParameterName(const std::string& name);
    /// A tuple. Null components are left out.
    JNIHvlExpression* createHvlExpressionTuple(std::vector<JNIHvlExpression*>* components);
    /// A field to derive and the expression of its value.
    JNIHvlFieldDerive* createHvlFieldDerive(const std::string& field, JNIHvlExpression* value);

    /// A step with several configurations by position; a null element leaves its position empty.
    JNIHvlFunction* createHvlFunction(const std::string& name,
                                      std::vector<JNIJSONObject*>* configurations,
                                      JNIHvlFunction* input);
    /// A step with one configuration and no input.
    JNIHvlFunction* createHvlFunction(const std::string& name, JNIJSONObject* configuration);
    /// A step with one configuration and one input.
    JNIHvlFunction* createHvlFunction(const std::string& name, JNIJSONObject* configuration,
                                      JNIHvlFunction* input);
    /// A step with inputs by tag; null inputs are left out.
    JNIHvlFunction* createHvlFunction(const std::string& name, JNIJSONObject* configuration,
                                      std::map<std::string, JNIHvlFunction*>* inputs);
    /// A component with input and output containers. Null containers are left out; an empty vector
    /// leaves the argument empty.
    JNIHvlFunction* createHvlFunction(const std::string& name, JNIJSONObject* configuration,
                                      std::vector<JNIHvlContainer*>* inputs,
                                      std::vector<JNIHvlContainer*>* outputs,
                                      JNIHvlFunction* input);
    /// A step with an expression as an argument.
    JNIHvlFunction* createHvlFunction(const std::string& name, JNIJSONObject* configuration,
                                      JNIHvlExpression* expression, JNIHvlFunction* input);
    /// A step that derives a field.
    JNIHvlFunction* createHvlFunction(const std::string& name, JNIJSONObject* configuration,
                                      JNIHvlFieldDerive* derive, JNIHvlFunction* input);
    /// A step that derives a field from fields of the given types.
    JNIHvlFunction* createHvlFunction(const std::string& name, JNIJSONObject* configuration,
                                      JNIHvlFieldDerive* derive, JNIHvlFunction* input,
                                      TypeMap* types);
    /// The step that adds a derived field to the records.
    JNIHvlFunction* createHvlFunctionDeriveFields(JNIHvlFieldDerive* derive, JNIHvlFunction* input);
    /// The step that adds a derived field to the records. `types` are the types of the fields that
    /// its expression uses.
    JNIHvlFunction* createHvlFunctionDeriveFields(JNIHvlFieldDerive* derive, JNIHvlFunction* input,
                                                  TypeMap* types);
    /// The step that keeps records for which the condition is true.
    JNIHvlFunction* createHvlFunctionFilterRecords(JNIHvlExpression* condition,
                                                   JNIHvlFunction* input);
    /// The step that keeps records for which the condition is true. `types` are the types of the
    /// fields that the condition uses.
    JNIHvlFunction* createHvlFunctionFilterRecords(JNIHvlExpression* condition,
                                                   JNIHvlFunction* input, TypeMap* types);
    /// A step with any arguments, made by JNIHvlFunctionParameterFactory.
    JNIHvlFunction* createHvlFunctionGeneral(const std::string& name,
                                             std::vector<JNIHvlFunctionParameter*>* parameters);
    /// A step with arguments as texts of the job language, used unchanged.
    JNIHvlFunction* createHvlFunctionGeneral(const std::string& name, JNIJSONObject* configuration,
                                             const std::vector<std::string>* arguments,
                                             JNIHvlFunction* input);
    /// A step that takes another function as an argument.
    JNIHvlFunction* createHvlMetaFunction(const std::string& name, JNIJSONObject* configuration,
                                          JNIHvlFunction* operand, JNIHvlFunction* input);

    /// A container of a component. With `output` the component writes it.
    JNIHvlContainer* createContainer(const std::string& name, const std::string& uri, bool output);
    /// Returns the containers as JSON text. `uris` and `outputs` need an entry for each name,
    /// otherwise std::out_of_range is thrown. A null vector means no containers.
    std::string formatContainerListJSON(const std::vector<std::string>* names,
                                        const std::vector<std::string>* uris,
                                        const std::vector<bool>* outputs);

    /// The inputs of a function, in its order.
    std::vector<JNITaggedFunctionInput*> getPredecessors(JNIHvlFunction* function);
    /// All fragments of the program.
    std::set<JNIHvlFragment*> getFragments();
    /// Sorts fragments so that each follows those that it needs. A null or empty set is passed as a
    /// Java null.
    std::vector<JNIHvlFragment*>
    sortFragmentsIntoExecutionOrder(std::set<JNIHvlFragment*>* fragments);
    /// Replaces `text` by the text of the job. References that it creates remain until cleanJRef.
    void getHvlText(std::string& text);

private:
    friend class WrapperFactory;

    HVINTEG_HIDDEN explicit JNIHvlProgram(jobject object);
};
