#include "hvhost/cli/UsageFault.h"

#include <algorithm>
#include <vector>

#include <CLI/CLI.hpp>

#include "hvhost/base/HelpText.h"
#include "hvhost/base/Text.h"
#include "hvhost/base/TextScan.h"
#include "hvhost/cli/Completion.h"

namespace {

/// Rewrites "NAME: At Most 1 required but received N". Empty for other texts.
std::string repeatedOption(std::string_view text)
{
    TextScan scan(text);
    const auto name = scan.until(": At Most 1 required but received ");
    return name ? std::string(*name) + ": it is given " + std::string(scan.rest()) + " times"
                : std::string();
}

/// Rewrites "NAME: 1 required TYPE missing". Empty for other texts.
std::string valuelessOption(std::string_view text)
{
    TextScan scan(text);
    const auto name = scan.until(": 1 required ");
    const auto type = scan.untilLast(" missing");
    return name && type && scan.rest().empty()
               ? std::string(*name) + ": its value, " + std::string(*type) + ", is missing"
               : std::string();
}

/// Rewrites "NAME: VALUE not in {A,B}". Empty for other texts.
std::string foreignValue(std::string_view text)
{
    TextScan scan(text);
    const auto named = scan.untilLast(" not in {");
    if (!named || !scan.rest().ends_with('}'))
        return {};
    std::string fault = std::string(*named) + " is not one of ";
    for (const char letter : scan.rest().substr(0, scan.rest().size() - 1))
        fault += letter == ',' ? std::string(", ") : std::string(1, letter);
    return fault;
}

/// Rewrites "Could not convert: NAME = VALUE". Empty for other texts.
std::string unreadValue(std::string_view text)
{
    TextScan scan(text);
    if (!scan.skip("Could not convert: "))
        return {};
    const auto name = scan.until(" = ");
    return name ? std::string(*name) + ": " + std::string(scan.rest()) +
                      " is not a number, or is out of range"
                : std::string();
}

/// The message of the parser, in this program's words.
std::string reworded(const std::string& text)
{
    for (const auto& reword : {&repeatedOption, &valuelessOption, &foreignValue, &unreadValue})
        if (std::string fault = reword(text); !fault.empty())
            return fault;
    return text;
}

/// The long options of a command. One-letter options are left out, because all of them are similar.
std::vector<std::string> optionNames(const CLI::App& command)
{
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options())
        for (const std::string& name : option->get_lnames())
            names.push_back("--" + name);
    return names;
}

bool isOption(const std::string& word)
{
    return word.starts_with('-');
}

bool hasOption(const std::vector<std::string>& words)
{
    return std::any_of(words.begin(), words.end(), isOption);
}

/// How to write the list that the surplus words may belong to. Empty if no option with a list is
/// given.
std::string listHint(const CLI::App& command)
{
    for (const CLI::Option* option : command.get_options())
        if (option->count() != 0 && option->get_delimiter() == ',')
            return "commas separate the values of " + option->get_name() + ", without blanks";
    return {};
}

/// Words that no command accepts. An unknown option among them explains the words after it.
CommandFault lostWords(const std::vector<std::string>& words, const CLI::App& command,
                       const std::string& usageHint)
{
    const auto option = std::find_if(words.begin(), words.end(), isOption);
    if (option == words.end()) {
        const std::string hint = listHint(command);
        return {ExitStatus::Usage, words.front() + ": there is one argument too many",
                hint.empty() ? usageHint : hint};
    }
    const std::string name = option->substr(0, option->find('='));
    return {ExitStatus::Usage, name + ": no such option",
            name.starts_with("--") ? nearestHint(optionNames(command), name, usageHint)
                                   : usageHint};
}

/// Whether the next word should name a subcommand.
bool expectsCommand(const CLI::App& app)
{
    return app.get_subcommands().empty() &&
           !app.get_subcommands([](const CLI::App*) { return true; }).empty();
}

} // namespace

NamedCommand namedCommand(const CLI::App& app)
{
    NamedCommand named{&app, {}};
    while (!named.app->get_subcommands().empty()) {
        named.app = named.app->get_subcommands().front();
        named.words += (named.words.empty() ? "" : " ") + named.app->get_name();
    }
    return named;
}

const CLI::App* findCommand(const CLI::App& app, const std::string& name)
{
    try {
        return app.get_subcommand(name);
    } catch (const CLI::OptionNotFound&) {
        return nullptr;
    }
}

CommandFault unknownCommand(const CLI::App& app, const std::string& word, const std::string& hint)
{
    return {ExitStatus::Usage, word + ": no such command",
            nearestHint(commandNames(app), word, hint)};
}

CommandFault usageFault(const CLI::App& app, const CLI::ParseError& error)
{
    const NamedCommand named = namedCommand(app);
    const std::vector<std::string> lost = app.remaining(true);
    const std::string hint = named.words.empty()
                                 ? kCommandsHint
                                 : "hvhost help " + named.words + " shows how it is used";
    const bool needsCommand = expectsCommand(*named.app);
    if (needsCommand && lost.empty())
        return {ExitStatus::Usage, "no command is given", hint};
    if (needsCommand && !isOption(lost.front()))
        return unknownCommand(*named.app, lost.front(), hint);
    // A required word may be missing only because of a misspelled option before it.
    const bool isExtra = dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr;
    if (!lost.empty() && (isExtra || hasOption(lost)))
        return lostWords(lost, *named.app, hint);
    // The help calls the output OUT, also if -o names it.
    const std::string text = reworded(error.what());
    return {ExitStatus::Usage, text.starts_with("-o") ? "OUT" + text.substr(sizeof "-o" - 1) : text,
            hint};
}
