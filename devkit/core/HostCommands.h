#pragma once

#include "devkit/core/CommandTable.h"

class Host;
class VariableHub;

// The rows of what only a host has, by subject.
std::vector<Command> PlugInCommands(Host& host);
std::vector<Command> VariableCommands(VariableHub& hub);
std::vector<Command> StoreTestCommands(Host& host);
std::vector<Command> SuiteCommands();
std::vector<Command> SystemCommands(Host& host);

/// What "store.fault" and its like have in common: without "function" all faults are taken back, with it "code" is
/// needed. `set` answers whether there is such a function.
Answer SetFault(const Arguments& arguments, const std::function<void()>& clear,
                const std::function<bool(const QByteArray& function, qint64 code, quint32 count)>& set);
/// What is said where there is no such function.
QString UnknownFunction(const QString& name);
