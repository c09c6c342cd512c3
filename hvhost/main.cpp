#include "hvhost/cli/CommandLine.h"

int main(int count, char** words)
{
    return runCommandLine(count, words);
}
