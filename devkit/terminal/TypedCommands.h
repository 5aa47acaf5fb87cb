#pragma once

#include "devkit/terminal/MainPage.h"

#include <QString>
#include <QStringList>

class Console;
class Host;

/// The commands that a person types.
class TypedCommands
{
public:
    TypedCommands(Host& host, Console& console) : m_host(host), m_console(console) {}

    void Run(const QString& line);
    void ShowPage();

private:
    // Each takes what was typed after its name.
    void Page(const QString& arguments);
    void Help(const QString& arguments);
    void Quit(const QString& arguments);
    void Get(const QString& arguments);
    void Set(const QString& arguments);
    void Trigger(const QString& arguments);
    void Variables(const QString& prefix);
    void Log(const QString& arguments);
    void Store(const QString& arguments);
    void StoreGet(const QString& scope, const QString& key);
    void StoreSet(const QString& scope, const QString& key, const QString& typed);
    void MoveSwitch(const MainPage::Switch& row, bool on);

    /// The id behind what was typed: an id, the name of a switch, or the last part of an id that only one variable
    /// has. Empty, and told, when there is none.
    QString Resolve(const QString& name);
    void Say(const QString& sentence);
    void Complain(const QString& sentence);

    Host& m_host;
    Console& m_console;
};
