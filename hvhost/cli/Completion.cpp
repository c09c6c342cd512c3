#include "hvhost/cli/Completion.h"

#include <algorithm>
#include <sstream>
#include <vector>

#include <CLI/CLI.hpp>

#include "hvhost/base/Text.h"

namespace {

std::vector<const CLI::App*> commandsOf(const CLI::App& app)
{
    return app.get_subcommands(
        [](const CLI::App* command) { return !command->get_name().empty(); });
}

std::string commandWords(const CLI::App& app)
{
    std::string words;
    for (const CLI::App* command : commandsOf(app))
        words += (words.empty() ? "" : " ") + command->get_name();
    return words;
}

/// The words that an option accepts, from its type NAME:{a,b}; empty if it accepts any word.
std::string valuesOf(const CLI::Option& option)
{
    const std::string type = option.get_type_name();
    const std::size_t begin = type.find('{');
    if (begin == std::string::npos)
        return {};
    std::string words = type.substr(begin + 1, type.find('}') - begin - 1);
    std::replace(words.begin(), words.end(), ',', ' ');
    return words;
}

/// The options of a command and its subcommands, without duplicates.
std::vector<const CLI::Option*> allOptions(const CLI::App& command)
{
    std::vector<const CLI::Option*> all;
    const auto add = [&all](const CLI::Option* option) {
        if (std::none_of(all.begin(), all.end(), [&](const CLI::Option* known) {
                return known->get_lnames() == option->get_lnames() &&
                       known->get_positional() == option->get_positional();
            }))
            all.push_back(option);
    };
    for (const CLI::Option* option : command.get_options())
        add(option);
    for (const CLI::App* inner : commandsOf(command))
        for (const CLI::Option* option : inner->get_options())
            add(option);
    return all;
}

std::string optionsOf(const CLI::App& command)
{
    std::string words;
    for (const CLI::Option* option : allOptions(command))
        for (const std::string& name : option->get_lnames())
            words += (words.empty() ? "--" : " --") + name;
    return words;
}

/// The possible arguments of a command; empty for a command that takes files.
std::string argumentsOf(const CLI::App& app, const CLI::App& command)
{
    if (command.get_name() == "help")
        return commandWords(app);
    if (!commandsOf(command).empty())
        return commandWords(command);
    for (const CLI::Option* option : command.get_options())
        if (option->get_positional() && !valuesOf(*option).empty())
            return valuesOf(*option);
    return {};
}

/// Writes the completions for a word (a pattern) after a command and the previous word. Writes
/// nothing if there are no words.
void addCase(std::ostream& script, const std::string& command, const std::string& before,
             const char* word, const std::string& words)
{
    if (!words.empty())
        script << "    " << command << ':' << before << ':' << word << ") COMPREPLY=($(compgen -W '"
               << words << "' -- \"$word\")) ;;\n";
}

/// If no word fits, bash completes file names as usual. zsh runs the same function through its bash
/// emulation.
std::string bashScript(const CLI::App& app)
{
    std::ostringstream script;
    script << "_hvhost() {\n"
              "  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]}\n"
              "  COMPREPLY=()\n"
              "  if [ \"$COMP_CWORD\" -eq 1 ]; then before=; fi\n"
              "  case ${COMP_WORDS[1]}:$before:$word in\n";
    for (const CLI::App* command : commandsOf(app)) {
        const std::string& name = command->get_name();
        for (const CLI::Option* option : allOptions(*command))
            for (const std::string& word : option->get_lnames())
                addCase(script, name, "--" + word, "*", valuesOf(*option));
        addCase(script, name, "?*", "-*", optionsOf(*command));
        addCase(script, name, commandsOf(*command).empty() ? "?*" : name, "*",
                argumentsOf(app, *command));
    }
    addCase(script, "*", "", "*", commandWords(app));
    script << "  esac\n}\n"
              "complete -o default -o bashdefault -F _hvhost hvhost\n";
    return script.str();
}

std::string fishQuoted(const std::string& text)
{
    std::string quoted = "'";
    for (const char character : text) {
        if (character == '\'')
            quoted += '\\';
        quoted += character == '\n' ? ' ' : character;
    }
    return quoted + "'";
}

std::string fishScript(const CLI::App& app)
{
    std::ostringstream script;
    for (const CLI::App* command : commandsOf(app)) {
        const std::string condition =
            "complete -c hvhost -n '__fish_seen_subcommand_from " + command->get_name() + "'";
        script << "complete -c hvhost -f -n __fish_use_subcommand -a " << command->get_name()
               << " -d " << fishQuoted(command->get_description()) << '\n';
        if (!argumentsOf(app, *command).empty())
            script << condition << " -f -a '" << argumentsOf(app, *command) << "'\n";
        for (const CLI::Option* option : allOptions(*command))
            for (const std::string& name : option->get_lnames()) {
                const std::string values = valuesOf(*option);
                const bool isFlag = option->get_type_size_max() == 0;
                script << condition << " -l " << name << (isFlag ? "" : " -r")
                       << (values.empty() ? "" : " -f -a '" + values + "'") << " -d "
                       << fishQuoted(option->get_description()) << '\n';
            }
    }
    return script.str();
}

} // namespace

std::string completionScript(const CLI::App& app, const std::string& shell)
{
    if (shell == "fish")
        return fishScript(app);
    const std::string script = bashScript(app);
    return shell == "zsh" ? "autoload -U +X bashcompinit && bashcompinit\n" + script : script;
}

std::vector<std::string> commandNames(const CLI::App& app)
{
    std::vector<std::string> names;
    for (const CLI::App* command : commandsOf(app))
        names.push_back(command->get_name());
    return names;
}
