#include "hvhost/cli/HintCheck.h"

#include <algorithm>
#include <string_view>

#include <CLI/CLI.hpp>

#include "hvhost/cli/UsageFault.h"

namespace {

constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz-";
constexpr std::string_view kProgram = "hvhost ";

/// The command that a text names after "hvhost", or `otherwise`.
const CLI::App& commandIn(std::string_view text, const CLI::App& app, const CLI::App& otherwise)
{
    const std::size_t program = text.rfind(kProgram);
    if (program == std::string_view::npos)
        return otherwise;
    const CLI::App* command = &app;
    std::string_view rest = text.substr(program + kProgram.size());
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find_first_not_of(kLetters), rest.size());
        const CLI::App* const next = findCommand(*command, std::string(rest.substr(0, end)));
        if (end == 0 || next == nullptr)
            break;
        command = next;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return *command;
}

bool hasOptions(std::string_view part, const CLI::App& app)
{
    const CLI::App& named = *namedCommand(app).app;
    for (std::size_t at = part.find("--"); at != std::string_view::npos;) {
        const std::size_t end = std::min(part.find_first_not_of(kLetters, at), part.size());
        const std::string option(part.substr(at, end - at));
        if (option.size() > 2 &&
            commandIn(part.substr(0, at), app, named).get_option_no_throw(option) == nullptr)
            return false;
        at = part.find("--", end);
    }
    return true;
}

} // namespace

std::string fittingHint(const std::string& hint, const CLI::App& app)
{
    constexpr std::string_view separator = "; ";
    std::string fitting;
    std::string_view rest = hint;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(separator), rest.size());
        const std::string_view part = rest.substr(0, end);
        if (hasOptions(part, app))
            fitting.append(fitting.empty() ? "" : separator).append(part);
        rest.remove_prefix(std::min(end + separator.size(), rest.size()));
    }
    return fitting;
}
