#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "JobError.h"
#include "ScratchFolder.h"
#include "duckdb/DuckDialect.h"
#include "expression/ExpressionCompiler.h"
#include "language/JsonLiteral.h"
#include "language/Parser.h"
#include "language/Secrets.h"

namespace {

using namespace EmbeddedHV;
using language::Expression;

const Schema kFields = {{"i", ValueType::Integer}, {"r", ValueType::Real},
                        {"s", ValueType::String},  {"d", ValueType::Date},
                        {"t", ValueType::Time},    {"ts", ValueType::Timestamp},
                        {"l", ValueType::List}};

/// Uses an expression in each way that a step may: all of them answer or throw JobError.
void useExpression(const Expression& expression, const Definitions& definitions)
{
    const auto attempt = [](const auto& use) {
        try {
            use();
        } catch (const JobError&) { // what most texts come to
        }
    };
    const std::string step = "fuzz";
    const LambdaContext context{duckDialect(), kFields, definitions, step};
    std::string field;
    attempt([&] { compileRecordLambda(expression, context); });
    attempt([&] { compileFieldLambda(expression, context, field); });
    attempt([&] { (void)language::jsonLiteral(expression, definitions, "fuzz").dump(); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    try {
        const language::Program program = language::parseProgram(text);
        const Definitions definitions = language::boundValues(program);
        for (const auto& [name, expression] : definitions)
            useExpression(*expression, definitions);
        // What is shown of a job is a job of which nothing more is to be hidden.
        const std::string shown = language::withoutSecrets(text);
        require(language::withoutSecrets(shown) == shown);
    } catch (const JobError&) { // a text that breaks the grammar
    }
    return 0;
}
