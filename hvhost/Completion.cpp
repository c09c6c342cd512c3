#include "Completion.h"

#include <algorithm>
#include <numeric>
#include <sstream>
#include <vector>

#include <CLI/CLI.hpp>

namespace {

std::vector<const CLI::App*> commandsOf(const CLI::App& app)
{
    return app.get_subcommands(
        [](const CLI::App* command) { return !command->get_name().empty(); });
}

std::string optionsOf(const CLI::App& command)
{
    std::string words;
    for (const CLI::Option* option : command.get_options())
        for (const std::string& name : option->get_lnames())
            words += (words.empty() ? "--" : " --") + name;
    return words;
}

std::string commandWords(const CLI::App& app)
{
    std::string words;
    for (const CLI::App* command : commandsOf(app))
        words += (words.empty() ? "" : " ") + command->get_name();
    return words;
}

/// zsh runs the same function through its emulation of bash.
std::string bashScript(const CLI::App& app)
{
    std::ostringstream script;
    script << "_hvhost() {\n"
              "  local word=${COMP_WORDS[COMP_CWORD]}\n"
              "  COMPREPLY=()\n"
              "  if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
              "    COMPREPLY=($(compgen -W '"
           << commandWords(app) << "' -- \"$word\")); return\n  fi\n"
           << "  case ${COMP_WORDS[1]}:$word in\n";
    for (const CLI::App* command : commandsOf(app))
        script << "    " << command->get_name() << ":-*) COMPREPLY=($(compgen -W '"
               << optionsOf(*command) << "' -- \"$word\")) ;;\n";
    script << "    *) COMPREPLY=($(compgen -f -- \"$word\")) ;;\n"
              "  esac\n}\n"
              "complete -o filenames -F _hvhost hvhost\n";
    return script.str();
}

std::string fishScript(const CLI::App& app)
{
    std::ostringstream script;
    for (const CLI::App* command : commandsOf(app)) {
        script << "complete -c hvhost -n __fish_use_subcommand -a " << command->get_name() << '\n';
        for (const CLI::Option* option : command->get_options())
            for (const std::string& name : option->get_lnames())
                script << "complete -c hvhost -n '__fish_seen_subcommand_from "
                       << command->get_name() << "' -l " << name << '\n';
    }
    return script.str();
}

std::size_t editDistance(const std::string& left, const std::string& right)
{
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= left.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i);
        for (std::size_t j = 1; j <= right.size(); ++j) {
            const std::size_t replaced = diagonal + (left[i - 1] == right[j - 1] ? 0 : 1);
            diagonal = std::exchange(row[j], std::min({row[j] + 1, row[j - 1] + 1, replaced}));
        }
    }
    return row.back();
}

} // namespace

std::string completionScript(const CLI::App& app, const std::string& shell)
{
    if (shell == "fish")
        return fishScript(app);
    const std::string script = bashScript(app);
    return shell == "zsh" ? "autoload -U +X bashcompinit && bashcompinit\n" + script : script;
}

std::string nearestCommand(const CLI::App& app, const std::string& word)
{
    std::string nearest;
    std::size_t best = word.size() / 2 + 1;
    for (const CLI::App* command : commandsOf(app)) {
        const std::size_t distance = editDistance(word, command->get_name());
        if (distance < best) {
            best = distance;
            nearest = command->get_name();
        }
    }
    return nearest;
}
