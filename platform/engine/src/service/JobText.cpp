#include "JobText.h"

#include "ShownAddress.h"
#include "language/Secrets.h"

namespace EmbeddedHV {

std::string withoutSecrets(const std::string& jobText)
{
    return language::withoutSecrets(jobText);
}

std::string shownAddress(const std::string& address)
{
    return withoutCredentials(address);
}

} // namespace EmbeddedHV
