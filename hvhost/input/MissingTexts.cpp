#include "hvhost/input/MissingTexts.h"

#include "VexaVariable.h"
#include "support/Transcoding.h"

std::vector<std::string> missingTexts(const VEXA_Variable& variable)
{
    const OBS* texts[3] = {};
    variable.GetMissingValues(texts[0], texts[1], texts[2]);
    std::vector<std::string> all;
    for (const OBS* text : texts)
        if (text != nullptr) {
            const std::string padded(text->text, variable.MissingTextWidth());
            const std::string whole = transcodeToUTF8(padded.c_str(), nullptr);
            all.push_back(whole.substr(0, whole.find_last_not_of(' ') + 1));
        }
    return all;
}
