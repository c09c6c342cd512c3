#include "hvhost/show/OutputShown.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "ErrorText.h"
#include "base/AsciiText.h"
#include "hvhost/base/CommandFault.h"
#include "report/page/OutputPage.h"
#include "report/text/OutputText.h"

namespace {

bool wantsColours(bool toFile)
{
    const char* const refused = std::getenv("NO_COLOR");
    return !toFile && isatty(STDOUT_FILENO) != 0 && (refused == nullptr || *refused == '\0');
}

OutputTextOptions textOptions(const OutputLook& look)
{
    OutputTextOptions text;
    text.width = look.text.width;
    text.groupsDigits = look.text.groupsDigits;
    text.colours = wantsColours(look.toFile);
    return text;
}

void writePage(const OutputHeading& output, const OutputLook& look, std::ostream& out)
{
    OutputPage page(output);
    page.setSubtitle(look.subtitle);
    try {
        page.write(out);
    } catch (const ErrorText& error) {
        throw CommandFault(ExitStatus::JobFailed, error.what());
    }
}

} // namespace

std::string formOf(const std::string& asked, const std::string& path,
                   const std::vector<std::string>& forms)
{
    if (!asked.empty())
        return asked;
    std::string extension = base::lowerCase(std::filesystem::path(path).extension().string());
    if (extension == ".htm")
        extension = ".html";
    const auto named = std::find_if(forms.begin(), forms.end(), [&](const std::string& form) {
        return extension == "." + form;
    });
    return named == forms.end() ? "text" : *named;
}

void writeOutput(const OutputHeading& output, const OutputLook& look, std::ostream& out)
{
    if (look.form == "html") {
        writePage(output, look, out);
        return;
    }
    writeOutputText(output, textOptions(look), out);
}

void writeFurtherText(const std::vector<OutputItem>& items, const OutputLook& look,
                      std::ostream& out)
{
    writeFurtherOutputText(items, textOptions(look), out);
}
