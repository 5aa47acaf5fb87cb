#include "devkit/core/CommandTable.h"

CommandTable::CommandTable()
{
    Add(SessionCommands());
    Add(VariableCommands());
    Add(StoreCommands());
    Add(SuiteCommands());
    Add(SystemCommands());
}

Answer CommandTable::Run(Host& host, const QVariantMap& request) const
{
    const QVariant op = request.value(QStringLiteral("op"));
    if (op.userType() != QMetaType::QString)
        return Answer::Failure(QStringLiteral("The request names no command: \"op\" must be a text."));
    const auto found = m_commands.find(op.toString());
    if (found == m_commands.end())
        return Answer::Failure(QStringLiteral("There is no command \"%1\".").arg(op.toString()));
    const Command& command = found->second;
    const Arguments arguments(request);
    for (const Parameter& parameter : command.parameters)
    {
        const QString error = arguments.Check(parameter);
        if (!error.isEmpty())
            return Answer::Failure(error);
    }
    return command.run(host, arguments);
}

void CommandTable::Add(const std::vector<Command>& commands)
{
    for (const Command& command : commands)
        m_commands.emplace(QLatin1String(command.op), command);
}
