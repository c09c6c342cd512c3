#include "UsageFault.h"

#include <algorithm>
#include <regex>
#include <vector>

#include <CLI/CLI.hpp>

#include "Completion.h"
#include "HelpText.h"
#include "Text.h"

namespace {

/// What the parser says, as it is put here.
std::string reworded(const std::string& text)
{
    static const std::regex repeated("^(\\S+): At Most 1 required but received (\\d+)$");
    static const std::regex valueless("^(\\S+): 1 required (\\S+) missing$");
    static const std::regex foreign("^(\\S+: [^]*) not in \\{(.*)\\}$");
    std::smatch found;
    if (std::regex_match(text, found, repeated))
        return found[1].str() + ": it is given " + found[2].str() + " times";
    if (std::regex_match(text, found, valueless))
        return found[1].str() + ": its value, " + found[2].str() + ", is missing";
    if (std::regex_match(text, found, foreign))
        return found[1].str() + " is none of " +
               std::regex_replace(found[2].str(), std::regex(","), ", ");
    return text;
}

/// The options of a command as they are typed. One letter is like any other: those are left out.
std::vector<std::string> optionNames(const CLI::App& command)
{
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options())
        for (const std::string& name : option->get_lnames())
            names.push_back("--" + name);
    return names;
}

/// Words that belong to nothing: an option among them is to blame for those behind it.
CommandFault lostWords(const CLI::App& command, const std::string& usageHint)
{
    const std::vector<std::string> words = command.remaining();
    const auto option = std::find_if(words.begin(), words.end(),
                                     [](const auto& word) { return word.starts_with('-'); });
    if (option == words.end())
        return {ExitStatus::Usage, words.front() + ": there is one argument too many", usageHint};
    const std::string name = option->substr(0, option->find('='));
    const std::string nearest =
        name.starts_with("--") ? nearestWord(optionNames(command), name) : "";
    return {ExitStatus::Usage, name + ": no such option",
            nearest.empty() ? usageHint : "did you mean " + nearest + "?"};
}

} // namespace

const CLI::App* findCommand(const CLI::App& app, const std::string& name)
{
    try {
        return app.get_subcommand(name);
    } catch (const CLI::OptionNotFound&) {
        return nullptr;
    }
}

CommandFault unknownCommand(const CLI::App& app, const std::string& word)
{
    const std::string nearest = nearestCommand(app, word);
    return {ExitStatus::Usage, word + ": no such command",
            nearest.empty() ? kCommandsHint : "did you mean " + nearest + "?"};
}

CommandFault usageFault(const CLI::App& app, const CLI::ParseError& error, const char* word)
{
    const bool isExtra = dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr;
    if (word == nullptr || *word == '-')
        return isExtra ? lostWords(app, kCommandsHint)
                       : CommandFault(ExitStatus::Usage, reworded(error.what()), kCommandsHint);
    const CLI::App* const command = findCommand(app, word);
    if (command == nullptr)
        return unknownCommand(app, word);
    const std::string hint = "hvhost help " + std::string(word) + " shows how it is used";
    if (isExtra)
        return lostWords(*command, hint);
    // The help calls the output OUT also where it is named by -o.
    const std::string text = reworded(error.what());
    return {ExitStatus::Usage, text.starts_with("-o") ? "OUT" + text.substr(sizeof "-o" - 1) : text,
            hint};
}
