#include "devkit/core/CommandTable.h"

QString Command::Check(const QVariantMap& request) const
{
    const Arguments arguments(request);
    for (const Parameter& parameter : parameters)
    {
        QString error = arguments.Check(parameter);
        if (!error.isEmpty())
            return error;
    }
    return {};
}

QString Command::Usage() const
{
    QString usage = QString(QLatin1String(op)).replace(QLatin1Char('.'), QLatin1Char(' '));
    QString options;
    for (const Parameter& parameter : parameters)
    {
        const QString name = QLatin1String(parameter.name);
        const QString word = parameter.choices ? QLatin1String(parameter.choices) : name.toUpper();
        if (parameter.option)
            options += QStringLiteral(" [--%1 %2]").arg(name, word);
        else
            usage += (parameter.need == Parameter::Need::Required ? QStringLiteral(" %1") : QStringLiteral(" [%1]"))
                         .arg(word);
    }
    return usage + options;
}

void CommandTable::Add(const std::vector<Command>& commands)
{
    for (const Command& command : commands)
        m_commands.emplace(QLatin1String(command.op), command);
}

Result<const Command*> CommandTable::Find(const QVariantMap& request) const
{
    using Found = Result<const Command*>;
    const QVariant op = request.value(QStringLiteral("op"));
    if (op.userType() != QMetaType::QString)
        return Found::Failure(QStringLiteral("The request names no command: \"op\" must be a string."));
    const Command* const command = Find(op.toString());
    if (!command)
        return Found::Failure(QStringLiteral("There is no command \"%1\".").arg(op.toString()), FailureKind::Misused);
    return {command, command->Check(request), FailureKind::Misused};
}

const Command* CommandTable::Find(const QString& op) const
{
    const auto found = m_commands.find(op);
    return found == m_commands.end() ? nullptr : &found->second;
}

QVariantList CommandTable::Schema() const
{
    QVariantList rows;
    for (const auto& [op, command] : m_commands)
    {
        QVariantList parameters;
        for (const Parameter& parameter : command.parameters)
            parameters.append(parameter.Describe());
        rows.append(QVariantMap{{QStringLiteral("op"), op},
                                {QStringLiteral("help"), QLatin1String(command.help)},
                                {QStringLiteral("parameters"), parameters}});
    }
    return rows;
}
