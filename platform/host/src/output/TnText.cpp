#include <utility>

#include "Journal.h"
#include "TnOutput.h"
#include "output/StringTable.h"
#include "text/CodePage.h"

TnUTF8String::TnUTF8String(std::string text, bool translate)
    : _text(std::move(text)), _translate(translate)
{
}

std::string TnUTF8String::text() const
{
    return _translate ? ::translate(_text) : _text;
}

std::unique_ptr<TnText> TnUTF8String::clone() const
{
    return std::make_unique<TnUTF8String>(*this);
}

TnString::TnString(std::string text, bool translate) : _text(std::move(text)), _translate(translate)
{
}

std::string TnString::text() const
{
    const std::string utf8 = hostToUtf8(_text);
    return _translate ? ::translate(utf8) : utf8;
}

std::unique_ptr<TnText> TnString::clone() const
{
    return std::make_unique<TnString>(*this);
}

void TnError(const TnText& text, int show, int level)
{
    HostJournal::Entry entry;
    entry.kind = HostJournal::Kind::Error;
    entry.text = text.text();
    entry.show = show;
    entry.level = level;
    HostJournal::instance().add(std::move(entry));
}
