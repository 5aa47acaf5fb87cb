#pragma once

#include "devkit/core/Result.h"
#include "devkit/core/Words.h"
#include "devkit/terminal/MainPage.h"

#include <QString>
#include <QVariantMap>

#include <functional>

class Console;
class Host;
class Session;

/// The lines that a person types: the commands of the table as words, and what only a person needs.
class TypedCommands
{
public:
    /// Submits a request and hands over its answer.
    using Ask = std::function<void(QVariantMap request, std::function<void(const Answer& answer)> onAnswer)>;

    /// `values` are the variables' values by id; `page` is the address of the page for browsers, or empty.
    TypedCommands(Host& host, Console& console, const QVariantMap& values, QString page, Ask ask);

    /// `commands` are those of the session.
    void Run(const CommandTable& commands, const QString& typed);
    void ShowPage();

    /// A value as a person reads it: a string as it is, anything else as JSON; cut where it is long.
    static QString ShortString(const QVariant& value);

private:
    void Help(const CommandTable& commands);
    void RunCommand(const Command& command, const Words::Line& line, int first);
    void MoveSwitch(const MainPage::Switch& row, bool on);
    void ShowAnswer(const QVariantMap& request, const Answer& answer);
    void ShowEntry(const QVariantMap& request, const QVariantMap& entry);
    void ShowVariables(const QVariantMap& request, const QVariantMap& variables);

    /// The id behind what was typed: an id, the name of a switch, or the last part of an id that only one variable
    /// has. Empty, and told, when there is none.
    QString Resolve(const QString& name);
    void Say(const QString& sentence);
    void Complain(const QString& sentence);

    Host& m_host;
    Console& m_console;
    const QVariantMap& m_values;
    const QString m_page;
    const Ask m_ask;
};
