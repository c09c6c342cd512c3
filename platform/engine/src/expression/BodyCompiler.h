#pragma once

#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

#include "expression/Operand.h"

namespace EmbeddedHV {

/// The value of a parameter that is bound to the record.
struct RecordValue
{
};
/// The value of a parameter that is bound to the job's context, which some steps pass to a lambda
/// with the record.
struct ContextValue
{
};

/// The value that a parameter is bound to.
using Binding = std::variant<SqlExpression, RecordValue, ContextValue>;
using Scope = std::map<std::string, Binding>;

/// Compiles the body of a lambda to SQL over the fields of its record. One object compiles one
/// lambda and borrows its arguments. Each operation throws JobError.
class BodyCompiler
{
public:
    explicit BodyCompiler(const LambdaContext& context);

    SqlExpression compile(const language::Expression& expression, const Scope& scope);
    /// Compares the declared types of a record parameter with the record's fields.
    void checkDeclared(const language::Type& declared, const language::Position& position) const;
    /// The string that an expression contains or names by a definition; null if it is not a string.
    const std::string* constantText(const language::Expression& expression,
                                    const Scope& scope) const;

private:
    struct ValueVisitor;

    SqlExpression dispatch(const language::Expression& expression, const Scope& scope);
    Operand operand(const language::Expression& expression, const Scope& scope);
    SqlExpression compileName(const language::Name& name, const Scope& scope, const Place& place);
    SqlExpression compileField(const language::Member& member, const Scope& scope,
                               const Place& place) const;
    SqlExpression compileList(const language::List& list, const Scope& scope, const Place& place);
    SqlExpression compileConditional(const language::Conditional& conditional, const Scope& scope);
    SqlExpression compileCall(const language::Call& call, const Scope& scope, const Place& place);
    SqlExpression compileUserCall(const language::Call& call, const language::Lambda& lambda,
                                  const Scope& scope, const Place& place);
    Binding argumentOf(const language::Parameter& parameter, const language::Expression& argument,
                       const Scope& scope);
    SqlExpression compileDefined(const std::string& name, const language::Expression& body,
                                 const Scope& scope, const Place& place);
    const Column& column(const std::string& name, const Place& place) const;
    const Column* findColumn(const std::string& name) const;
    [[noreturn]] void failName(const std::string& name, const Scope& scope,
                               const Place& place) const;
    const language::Expression* definition(const std::string& name) const;
    Place at(const language::Position& position) const { return {_step, position}; }

    const Dialect& _dialect;
    const Schema& _input;
    const Definitions& _definitions;
    const std::string& _step;
    std::set<std::string>* _fieldsRead; ///< may be null
    /// An index of the columns, made after several lookups.
    mutable std::unordered_map<std::string, const Column*> _columns;
    mutable int _lookups = 0;
    std::vector<std::string> _definitionsOnTheWay;
    int _depth = 0;
};

} // namespace EmbeddedHV
