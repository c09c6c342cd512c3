#include "Journal.h"
#include "OutputTree.h"
#include "TnOutput.h"
#include "output/LiveHeadings.h"

void TnError(const TnCellText& text, TnErrorShow show, TnErrorLevel level)
{
    HostJournal::Entry entry;
    entry.kind = HostJournal::Kind::Error;
    entry.text = text.text();
    entry.show = show;
    entry.level = level;
    OutputTree::instance().add(currentHeading().get(), OutputMessage{entry.text, show, level});
    HostJournal::instance().add(std::move(entry));
}
