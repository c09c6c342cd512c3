#pragma once

#include <string>
#include <vector>

/// What of a job's text the user knows, and by which words.
struct JobOrigin
{
    /// A file of the job: where the engine finds it, and what the user calls it.
    struct File
    {
        std::string path;
        std::string name;
    };
    /// An option of the command line with the expression that went from it into the text.
    struct Expression
    {
        std::string option;
        std::string text;
    };

    std::vector<File> inputs;
    std::vector<File> outputs;
    std::vector<Expression> expressions; ///< in their order in the text
    std::vector<Expression> composed;    ///< options, with what only the lines made for them have
    std::vector<std::string> aggregates; ///< the options behind the outputs of the aggregate step
    std::string jobName;         ///< where the user's own job text is; empty for a generated one
    bool hasInputOptions = true; ///< hints may speak of the options of an input
};
