#pragma once

#include <sstream>
#include <string>

#include "language/Parser.h"
#include "language/TypeParser.h"

namespace EmbeddedHV::language {

/// Writes a tree as fully bracketed text, so that a test shows at a glance how a text was read.
class ExpressionText
{
public:
    static std::string of(const Expression& expression)
    {
        ExpressionText writer;
        std::visit(writer, expression.value);
        return writer._out.str();
    }

    void operator()(const Null&) { _out << "null"; }
    void operator()(bool value) { _out << (value ? "true" : "false"); }
    void operator()(std::int64_t value) { _out << value; }
    void operator()(double value) { _out << "real:" << value; }
    void operator()(const std::string& text) { _out << '"' << text << '"'; }
    void operator()(const List& list) { elements("[", list.elements, "]"); }
    void operator()(const Tuple& tuple) { elements("tuple(", tuple.elements, ")"); }
    void operator()(const Name& name) { _out << name.name; }
    void operator()(const Member& member) { _out << of(*member.target) << "." << member.field; }
    void operator()(const Call& call) { elements(call.function + "(", call.arguments, ")"); }
    void operator()(const Object& object)
    {
        _out << "{";
        for (const auto& [key, value] : object.members)
            _out << key << ":" << of(*value) << ";";
        _out << "}";
    }
    void operator()(const Unary& unary)
    {
        _out << "(" << (unary.op == UnaryOperator::Minus ? "-" : "!") << of(*unary.operand) << ")";
    }
    void operator()(const Binary& binary)
    {
        static constexpr const char* kSymbols[] = {"||", "&&", "==", "!=", "<", "<=", ">",
                                                   ">=", "+",  "-",  "*",  "/", "%",  "**"};
        _out << "(" << of(*binary.left) << kSymbols[static_cast<int>(binary.op)]
             << of(*binary.right) << ")";
    }
    void operator()(const Conditional& conditional)
    {
        _out << "if(" << of(*conditional.condition) << "," << of(*conditional.then);
        if (conditional.otherwise)
            _out << "," << of(*conditional.otherwise);
        _out << ")";
    }
    void operator()(const Lambda& lambda)
    {
        _out << "\\";
        for (const Parameter& parameter : lambda.parameters)
            _out << parameter.name << (parameter.type ? ":" + textOf(*parameter.type) : "") << " ";
        _out << "=> " << of(*lambda.body);
    }

private:
    void elements(const std::string& opening, const std::vector<ExpressionPtr>& expressions,
                  const char* closing)
    {
        _out << opening;
        for (std::size_t i = 0; i < expressions.size(); ++i)
            _out << (i > 0 ? "," : "") << of(*expressions[i]);
        _out << closing;
    }

    std::ostringstream _out;
};

/// The same for a whole program: one item a line.
inline std::string textOfPipeline(const Pipeline& pipeline)
{
    std::string text = pipeline.input;
    for (const Step& step : pipeline.steps) {
        text += (text.empty() ? "" : "->") + step.fullName() + "(";
        for (const Argument& argument : step.arguments) {
            text += &argument == &step.arguments.front() ? "" : ",";
            if (argument.kind == Argument::Kind::Value)
                text += ExpressionText::of(*argument.value);
            else
                text += argument.kind == Argument::Kind::Open
                            ? "_"
                            : argument.tag + "<-" + argument.input;
        }
        text += ")";
    }
    return text;
}

inline std::string textOfProgram(const Program& program)
{
    std::string text;
    for (const auto& item : program.items) {
        if (const auto* statement = std::get_if<Pipeline>(&item)) {
            text += textOfPipeline(*statement) + "\n";
            continue;
        }
        const auto& definition = std::get<Definition>(item);
        const auto* chain = std::get_if<Pipeline>(&definition.value);
        text += definition.name +
                (chain != nullptr
                     ? " := " + textOfPipeline(*chain)
                     : " = " + ExpressionText::of(*std::get<ExpressionPtr>(definition.value))) +
                "\n";
    }
    return text;
}

} // namespace EmbeddedHV::language
