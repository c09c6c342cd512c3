#include "ParserMessage.h"

#include "Journal.h"
#include "TnOutput.h"
#include "Translation.h"
#include "text/CodePage.h"

namespace {

void warn(const char* key, const char* line)
{
    HostJournal::instance().add({HostJournal::Kind::Note, key});
    TnError(TnUTF8String(line, true), kShowInOutput, kLevelWarning);
}

} // namespace

void ParserMessage::DisableWeight()
{
    warn("DisableWeight", "This procedure ignores the weight variable.");
}

void ParserMessage::DisableSplit()
{
    warn("DisableSplit", "This procedure ignores the split of the file.");
}

std::string ParserMessage::GetTranslatedText(const std::string& key) const
{
    return utf8ToHost(translate(hostToUtf8(key)));
}
