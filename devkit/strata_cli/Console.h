#pragma once

#include <string>
#include <vector>

namespace StrataCli
{

/// The command line as UTF-8, without the program's name.
std::vector<std::string> CommandLine(int argc, char** argv);

/// The UTF-8 path of the folder that this program lies in; empty if the system does not tell.
std::string ProgramFolder();

/// Makes standard input and output carry bytes as they are.
void UseBinaryStreams();

/// Keeps Ctrl-C and requests to end from ending the process: WaitForInterrupt returns then. To be called before any
/// thread is started.
void CatchInterrupts();
void WaitForInterrupt();

} // namespace StrataCli
