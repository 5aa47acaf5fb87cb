#include "devkit/strata_cli/Arguments.h"
#include "devkit/strata_cli/Commands.h"
#include "devkit/strata_cli/Console.h"

#include "devkit/strata/OrbStrataControl.h"

int main(int argc, char** argv)
{
    StrataCli::UseBinaryStreams();
    const auto code = StrataCli::Run(StrataCli::ParseArguments(StrataCli::CommandLine(argc, argv)));
    OrbStrataControl_Shutdown();
    return code;
}
