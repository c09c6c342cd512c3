#include "hvhost/base/HelpText.h"

namespace {

/// One empty line between groups, and the same words as in the rest of the help.
class HelpFormatter : public CLI::Formatter
{
public:
    HelpFormatter()
    {
        label("SUBCOMMAND", "COMMAND");
        label("Positionals", "Arguments");
        label("REQUIRED", "(required)");
    }
    std::string make_help(const CLI::App* app, std::string name,
                          CLI::AppFormatMode mode) const override
    {
        std::string text = CLI::Formatter::make_help(app, std::move(name), mode);
        for (std::size_t gap = text.find("\n\n\n"); gap != std::string::npos;
             gap = text.find("\n\n\n", gap))
            text.erase(gap, 1);
        return text;
    }
    /// An option takes one word. Commas separate the values of a list; a repeatable option says so
    /// in its purpose. Words that follow each other are for arguments only.
    std::string make_option_opts(const CLI::Option* option) const override
    {
        std::string text = CLI::Formatter::make_option_opts(option);
        const std::string several = " ...";
        const std::size_t place = text.find(several);
        if (place != std::string::npos && !option->get_positional())
            text.replace(place, several.size(), option->get_delimiter() == ',' ? ",..." : "");
        return text;
    }
};

} // namespace

std::shared_ptr<CLI::Formatter> helpFormatter()
{
    return std::make_shared<HelpFormatter>();
}

CLI::App* newCommand(CLI::App& app, const char* name, const char* purpose,
                     const std::string& examples)
{
    CLI::App* const added = app.add_subcommand(name, purpose)->group(kCommandGroup);
    added->footer("Examples, in the folder examples/data:\n" + examples + "\n" + kExitStatuses);
    return added;
}

CLI::App* newCommandGroup(CLI::App& app, const std::string& name, const char* purpose)
{
    CLI::App* const added = app.add_subcommand(name, purpose)->group(kCommandGroup);
    added->require_subcommand(1);
    added->footer("hvhost " + name + " COMMAND --help shows the help of a command.\n" +
                  kExitStatuses);
    return added;
}
