#pragma once

#include <string>
#include <vector>

/// The origin of a job's text, in the user's terms.
struct JobOrigin
{
    /// A file of the job: its path for the engine, and the user's name for it.
    struct File
    {
        std::string path;
        std::string name;
        std::string iterator{}; ///< the row iterator that serves the file; empty if there is one
    };
    /// A command line option, and its expression in the text.
    struct Expression
    {
        std::string option;
        std::string text;
    };

    /// A setting of a component, by its path, and the option that sets it.
    struct Setting
    {
        std::string path;
        std::string option;
    };

    std::vector<File> inputs;
    std::vector<File> outputs;
    std::vector<Expression> expressions; ///< in the order of the text
    std::vector<Expression> composed;    ///< options, with a text that occurs only in their lines
    std::vector<std::string> aggregates; ///< the options for the outputs of the aggregate step
    std::vector<Setting> settings;       ///< those that options set
    std::vector<std::string> groups;     ///< the names of the groups that the job describes
    std::string jobName; ///< the name of the user's own job text; empty for a generated text
    bool hasInputOptions = true; ///< hints may mention input options
};
