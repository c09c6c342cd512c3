#include "hvhost/input/JobFile.h"

#include <fstream>

#include "hvhost/base/CommandFault.h"
#include "hvhost/base/ReadableFile.h"
#include "support/Paths.h"

std::string engineUrl(const std::string& path)
{
    return NormalizeHvlPathU(FormalizeFilePath(path, false), "file");
}

std::string readPassword(const std::string& given, const std::string& file,
                         const InterruptWatch& watch)
{
    if (file.empty())
        return given;
    const ReadableFile source(file, watch);
    std::ifstream stream(source.path());
    std::string password;
    std::getline(stream, password);
    if (password.ends_with('\r'))
        password.pop_back();
    if (password.empty())
        throw CommandFault(ExitStatus::Input,
                           file + ": the first line of this file, the password, is empty");
    return password;
}

void refusePassword(const std::string& path, DataKind kind, const std::string& password,
                    const char* option)
{
    if (kind != DataKind::Sav && !password.empty())
        throw CommandFault(ExitStatus::Usage, path + ": only a sav file takes a password",
                           std::string("leave ") + option + " out, or choose the kind sav");
}
