#include "language/Secrets.h"

#include <map>
#include <set>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "JobError.h"
#include "ShownAddress.h"
#include "language/Lexer.h"
#include "language/Parser.h"
#include "language/QuotedText.h"
#include "language/TextCursor.h"

namespace EmbeddedHV::language {
namespace {

constexpr std::string_view kSecretSetting = "dataPassword";
constexpr const char* kHidden = "\"***\"";

/// The replacements of literals, by line and column.
using Replacements = std::map<std::pair<int, int>, std::string>;

std::pair<int, int> placeOf(const Position& position)
{
    return {position.line, position.column};
}

/// Finds the literals of a program that must not be shown.
class SecretSearch
{
public:
    explicit SecretSearch(const Program& program)
    {
        for (const auto& item : program.items)
            if (const auto* definition = std::get_if<Definition>(&item))
                visit(*definition);
            else
                visit(std::get<Pipeline>(item));
        followNames();
    }
    Replacements take() && { return std::move(_found); }

private:
    void visit(const Definition& definition)
    {
        if (const auto* chain = std::get_if<Pipeline>(&definition.value)) {
            visit(*chain);
            return;
        }
        const Expression& value = *std::get<ExpressionPtr>(definition.value);
        _values.emplace(definition.name, &value);
        visit(value, false);
    }
    void visit(const Pipeline& chain)
    {
        for (const Step& step : chain.steps)
            for (const Argument& argument : step.arguments)
                visit(argument.value, false);
    }
    void visit(const ExpressionPtr& expression, bool isSecret)
    {
        if (expression)
            visit(*expression, isSecret);
    }
    void visit(const Expression& expression, bool isSecret)
    {
        std::visit([&](const auto& value) { look(value, expression.position, isSecret); },
                   expression.value);
    }

    void look(const Null&, const Position&, bool) {}
    void look(bool, const Position&, bool) {}
    void look(std::int64_t, const Position& position, bool isSecret) { hide(position, isSecret); }
    void look(double, const Position& position, bool isSecret) { hide(position, isSecret); }
    void look(const std::string& text, const Position& position, bool isSecret)
    {
        hide(position, isSecret);
        const std::string shown = withoutCredentials(text);
        if (!isSecret && shown != text)
            _found.try_emplace(placeOf(position), nlohmann::json(shown).dump());
    }
    void look(const List& list, const Position&, bool isSecret) { each(list.elements, isSecret); }
    void look(const Tuple& tuple, const Position&, bool isSecret)
    {
        each(tuple.elements, isSecret);
    }
    void look(const Object& object, const Position&, bool isSecret)
    {
        for (const auto& [key, value] : object.members)
            visit(value, isSecret || key == kSecretSetting);
    }
    void look(const Name& name, const Position&, bool isSecret)
    {
        if (isSecret && _secretNames.insert(name.name).second)
            _namesToFollow.push_back(name.name);
    }
    void look(const Member& member, const Position&, bool isSecret)
    {
        visit(member.target, isSecret);
    }
    void look(const Call& call, const Position&, bool isSecret)
    {
        each(call.arguments, isSecret);
        look(Name{call.function}, {}, isSecret);
    }
    void look(const Unary& unary, const Position&, bool isSecret)
    {
        visit(unary.operand, isSecret);
    }
    void look(const Binary& binary, const Position&, bool isSecret)
    {
        visit(binary.left, isSecret);
        visit(binary.right, isSecret);
    }
    void look(const Conditional& conditional, const Position&, bool isSecret)
    {
        visit(conditional.condition, isSecret);
        visit(conditional.then, isSecret);
        visit(conditional.otherwise, isSecret);
    }
    void look(const Lambda& lambda, const Position&, bool isSecret)
    {
        visit(lambda.body, isSecret);
    }

    void each(const std::vector<ExpressionPtr>& expressions, bool isSecret)
    {
        for (const ExpressionPtr& expression : expressions)
            visit(expression, isSecret);
    }
    void hide(const Position& position, bool isSecret)
    {
        if (isSecret)
            _found.insert_or_assign(placeOf(position), kHidden);
    }

    /// Hides the values of all names that secret settings use. A loop, because names may refer to
    /// names in a long chain. A job that binds a name twice is invalid, but both values are secret.
    void followNames()
    {
        while (!_namesToFollow.empty()) {
            const std::string name = std::move(_namesToFollow.back());
            _namesToFollow.pop_back();
            const auto [begin, end] = _values.equal_range(name);
            for (auto value = begin; value != end; ++value)
                visit(*value->second, true);
        }
    }

    std::multimap<std::string, const Expression*> _values; ///< of the definitions
    std::set<std::string> _secretNames;
    std::vector<std::string> _namesToFollow;
    Replacements _found;
};

/// Consumes the text between two tokens and returns it without comments.
std::string gapBefore(const Position& token, TextCursor& cursor)
{
    std::string gap;
    bool isComment = false;
    while (placeOf(cursor.position()) < placeOf(token)) {
        isComment = cursor.peek() != '\n' && (isComment || cursor.peek() == '/');
        const std::string_view character = cursor.advance();
        if (!isComment)
            gap += character;
    }
    return gap;
}

/// Consumes a token and returns its text.
std::string_view takeToken(const Token& token, TextCursor& cursor)
{
    const std::string_view before = cursor.rest();
    if (token.kind == Token::Kind::String || token.kind == Token::Kind::Quoted)
        readQuotedText(cursor);
    else
        while (before.size() - cursor.rest().size() < token.text.size())
            cursor.advance();
    return before.substr(0, before.size() - cursor.rest().size());
}

std::string replaced(std::string_view text, const Replacements& replacements)
{
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrderMark))
        text.remove_prefix(kByteOrderMark.size());
    TextCursor cursor(text);
    std::string result;
    for (const Token& token : tokenize(text)) {
        result += gapBefore(token.position, cursor);
        const std::string_view written = takeToken(token, cursor);
        const auto found = replacements.find(placeOf(token.position));
        result += found == replacements.end() ? written : found->second;
    }
    return result;
}

} // namespace

std::string withoutSecrets(std::string_view text)
{
    try {
        const Program program = parseProgram(text);
        return replaced(text, SecretSearch(program).take());
    } catch (const JobError&) {
        return "a text of " + std::to_string(text.size()) +
               " bytes that breaks the grammar and is not shown";
    }
}

} // namespace EmbeddedHV::language
