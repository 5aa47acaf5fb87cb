#pragma once

#include "devkit/core/Arguments.h"
#include "devkit/core/Result.h"

#include <map>
#include <vector>

class Host;

/// A command of the protocol: one row with its name, its arguments and what carries it out.
struct Command
{
    const char* op;
    std::vector<Parameter> parameters;
    Answer (*run)(Host& host, const Arguments& arguments);
};

/// Every command that the host understands. Arguments are checked before a command runs.
class CommandTable
{
public:
    CommandTable();

    /// Carries out one request, an object with "op" and the arguments beside it.
    Answer Run(Host& host, const QVariantMap& request) const;

private:
    void Add(const std::vector<Command>& commands);

    std::map<QString, Command> m_commands; // by op
};

// The rows, by subject.
std::vector<Command> SessionCommands();
std::vector<Command> VariableCommands();
std::vector<Command> StoreCommands();
std::vector<Command> SuiteCommands();
std::vector<Command> SystemCommands();
